// The page "3D" of the preferences: with whose ears smooth sources are heard.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <functional>
#include <string>

#include "app/own_ears.h"
#include "app/preferences/option_page.h"

namespace sonavel {

class COption3D : public OptionPage {
    Q_OBJECT

  public:
    // What is said of a file's responses, read under the eyes of a progress window.
    using EarsDescriber =
        std::function<Result<std::string>(const std::string& path, ProgressWindow& window)>;
    explicit COption3D(QWidget* parent = nullptr, EarsDescriber describe = DescribeEars);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;

  protected:
    // A file is read when its page comes into sight.
    void showEvent(QShowEvent* event) override;

  private:
    struct Choice {
        bool own = false;
        QString path;
    };

    QLayout* MakeFileRow();
    void Browse();
    Choice Chosen() const { return {file_->isChecked(), path_->text()}; }
    void Choose(const Choice& choice);
    // Reads what is chosen now; cancelled, goes back to what was chosen before.
    void TakeChoice();
    bool ReadChosen();

    EarsDescriber describe_;
    QRadioButton* table_;
    QRadioButton* file_;
    QLineEdit* path_;
    QLabel* state_;
    Choice before_;
    bool isRead_ = false;
};

}  // namespace sonavel
