// The dialog "Go to Cursor": the place to go to, as a frame or as a time.
#pragma once

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class GoToDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit GoToDialog(const GoToRequest& request, QWidget* parent = nullptr);
    GoToChoice Choice() const;

  private:
    QLabel* timeText_;
    FrameTimeField* place_;
};

}  // namespace sonavel
