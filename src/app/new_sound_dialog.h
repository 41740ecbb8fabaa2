// The dialog "New": the format of a new, empty sound.
#pragma once

#include <QButtonGroup>
#include <QComboBox>
#include <QRadioButton>

#include "document/document_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class NewSoundDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit NewSoundDialog(const NewSoundChoice& initial, QWidget* parent = nullptr);
    NewSoundChoice Choice() const;

  private:
    QComboBox* rate_;
    QRadioButton* stereo_;
    QButtonGroup* bits_;  // by their number
};

}  // namespace sonavel
