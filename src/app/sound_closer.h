// Closing sounds from the window, with what is asked before. Cancelled when the person cancels a
// question; nothing is closed before everything was asked.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "workspace/workspace.h"

namespace sonavel {

class SoundCloser {
  public:
    // Questions stand over `parent`; `tell` hears what else fails on the way.
    SoundCloser(Workspace& workspace, std::function<void(const Outcome&)> tell, QWidget* parent)
        : workspace_(workspace), tell_(std::move(tell)), parent_(parent) {}

    Outcome Close(std::size_t index);
    Outcome CloseActive() { return Close(workspace_.ActiveIndex().value()); }
    Outcome CloseAll();
    bool HasOthers() const { return workspace_.Count() > 1; }
    Outcome CloseOthers();  // than the active one

  private:
    Outcome AskWhetherToSave(std::size_t index);

    Workspace& workspace_;
    std::function<void(const Outcome&)> tell_;
    QPointer<QWidget> parent_;
};

}  // namespace sonavel
