// The About box: picture, names, the machine's memory and disk, the legal notice.
#pragma once

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <functional>

namespace sonavel {

class AboutDialog : public QDialog {
    Q_OBJECT

  public:
    // `runLogo` shows the logo until it is clicked away.
    // `showLicences` the notices of the libraries.
    AboutDialog(const std::function<void()>& runLogo, const std::function<void()>& showLicences,
                QWidget* parent = nullptr);

  private:
    QLabel* TextLabel(const QString& text);
    void AddNames(QGridLayout& grid);
    void AddMachine(QGridLayout& grid);
    void AddNotice(QGridLayout& grid);
    void AddButtons(QGridLayout& grid, const std::function<void()>& runLogo,
                    const std::function<void()>& showLicences);
};

}  // namespace sonavel
