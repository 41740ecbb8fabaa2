// The field in which the name of a marker is typed, at its flag. Enter and a click elsewhere keep
// the name, Escape does not; the field then goes.
#pragma once

#include <QLineEdit>

#include "view/sound_view.h"

namespace sonavel {

class MarkerNameEdit : public QLineEdit {
    Q_OBJECT

  public:
    // Stands on the view's window, at that place of it or as near as it has room. A new marker is
    // added with its name.
    MarkerNameEdit(CSoundView& view, const NameWanted& wanted, QPoint place, QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

  private:
    enum class Ending { kKeep, kForget };
    void End(Ending ending);

    CSoundView& view_;
    NameWanted wanted_;
    bool ended_ = false;
};

}  // namespace sonavel
