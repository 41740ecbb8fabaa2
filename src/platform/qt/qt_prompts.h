// The engine's messages and questions as boxes over the window that has the focus.
#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>

#include "platform/user_prompts.h"

namespace sonavel {

class QtPrompts : public UserPrompts {
  public:
    using StatusSink = std::function<void(const QString& text)>;

    // Boxes stand over the active window, and over this one while none is active.
    void SetMainWindow(QWidget* window) { mainWindow_ = window; }
    void SetStatusSink(StatusSink sink) { statusSink_ = std::move(sink); }

    // Until the next TakeHeldMessages, messages are kept instead of shown: at start-up nobody may
    // be there to close a box. Questions are still asked.
    void HoldMessages() { holding_ = true; }
    // What was kept, notes for the status bar included; from here on messages are shown again.
    QStringList TakeHeldMessages();

    void ShowMessage(std::string_view text) override;
    void ShowStatus(std::string_view text) override;
    bool AskOkCancel(std::string_view text, std::string_view caption) override;
    bool AskYesNo(std::string_view text, std::string_view caption) override;
    ChangedFileAnswer AskChangedFile() override;
    std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion) override;

  private:
    QWidget* ParentForBox() const;

    QPointer<QWidget> mainWindow_;
    StatusSink statusSink_;
    bool holding_ = false;
    QStringList held_;
};

}  // namespace sonavel
