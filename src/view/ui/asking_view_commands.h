// The commands of a view in a window: those with a dialog show it and hand the answer to the
// engine, all others run as they are.
#pragma once

#include <QPointer>
#include <QWidget>

#include "view/commands/view_commands.h"

namespace sonavel {

class AskingViewCommands : public SoundViewCommands {
  public:
    // The dialogs stand over `parent`, which may be null.
    AskingViewCommands(CSoundView& view, QWidget* parent)
        : SoundViewCommands(view), parent_(parent) {}

    Outcome RunCommand(int id) override;

  private:
    QPointer<QWidget> parent_;
};

// The dialog "Marker" as it begins with the marker of that id.
Outcome AskAboutMarker(CSoundView& view, std::uint32_t markerId, QWidget* parent);

}  // namespace sonavel
