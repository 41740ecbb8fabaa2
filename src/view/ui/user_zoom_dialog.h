// The dialog "User Defined Zoom": percentages, a range of frames, or a range of seconds.
#pragma once

#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <vector>

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class UserZoomDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit UserZoomDialog(const UserZoom& initial, QWidget* parent = nullptr);
    UserZoom Choice() const;

  private:
    // One radio button with the two fields and the hint that belong to it.
    struct Section {
        QString title;
        QString labels[2];
        QWidget* fields[2];
        QString hint;
    };

    void AddSection(QGridLayout& grid, UserZoom::Type type, const Section& section);
    QComboBox* MakePercentBox(double percent);
    QSpinBox* MakeSampleBox(std::int64_t sample);
    QDoubleSpinBox* MakeTimeBox(double seconds);
    UserZoom::Type Type() const;
    bool IsValid(UserZoom::Type type) const;
    void ShowState();

    QButtonGroup types_;
    std::vector<QWidget*> fieldsOf_[3];
    FieldHint* hints_[3] = {};
    QComboBox* levelPercent_;
    QComboBox* timePercent_;
    QSpinBox* startSample_;
    QSpinBox* endSample_;
    QDoubleSpinBox* startSeconds_;
    QDoubleSpinBox* endSeconds_;
};

}  // namespace sonavel
