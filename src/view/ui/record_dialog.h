// The dialog "Record": where the recording goes and in which format.
#pragma once

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class CRecordDlg : public FormDialog {
    Q_OBJECT

  public:
    explicit CRecordDlg(const RecordRequest& request, QWidget* parent = nullptr);
    RecordChoice Choice() const;

  private:
    void AddFormat();
    void AddTarget();
    // As the eye goes: from the rate down.
    void PutInTabOrder();
    void ShowFormat(const NewSoundChoice& format);
    void LockFormat(bool locked);
    void OnNewWindowToggled(bool on);

    RecordRequest request_;
    QComboBox* rate_;
    QButtonGroup channels_;  // ids are the channel counts
    QButtonGroup bits_;      // ids are the bits of a sample
    QCheckBox* newWindow_;
    QCheckBox* waiting_;
    QLabel* waitingLabel_;
    QSpinBox* waitingTenths_;
};

}  // namespace sonavel
