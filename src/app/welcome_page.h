// What the empty main window says: the first steps as buttons, and the sounds used last.
#pragma once

#include <QFrame>
#include <QVBoxLayout>

#include "app/child_windows.h"
#include "app/recent_files.h"
#include "view/ui/command_menu.h"

namespace sonavel {

class WelcomePage : public QFrame {
    Q_OBJECT

  public:
    // Lies in the middle of the area. All must outlive it; the actions need not be there yet.
    WelcomePage(ChildWindows& area, const CommandActions& actions, RecentFiles& recent);

    // Shown while there is no sound.
    void Follow();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Fill();
    void AddCommands();
    void AddRecent();
    void AddLine(const QString& text);
    void Centre();

    ChildWindows& area_;
    const CommandActions& actions_;
    RecentFiles& recent_;
    QVBoxLayout* lines_ = nullptr;
};

}  // namespace sonavel
