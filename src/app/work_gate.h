// What the person may do while a long operation runs: go to other sounds, look at them and play
// them; nothing that edits, opens, saves or closes, and nothing at all with a sound that is just
// being changed.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <vector>

#include "platform/command_table.h"
#include "platform/outcome.h"
#include "platform/qt/running_work.h"
#include "workspace/workspace.h"

class QWidget;

namespace sonavel {

class WorkGate : public QObject {
    Q_OBJECT

  public:
    // Watches the input of the whole program; all must outlive it. `frame` holds the sounds.
    WorkGate(RunningWork& work, const Workspace& workspace, QWidget& frame);

    bool IsRunning() const { return work_.IsRunning(); }
    // Fails, with the reason, where the command has to wait.
    Outcome Hold(const CommandInfo& command) const;
    // Likewise of all that opens, saves or closes.
    Outcome HoldAll() const;

    // Soon, when no operation is under way and no dialog is open: no command is being carried out
    // then. The operations that are in the way are cancelled, or waited for.
    enum class InTheWay { kIsAwaited, kIsCancelled };
    void WhenIdle(std::function<void()> task, InTheWay operations);

  protected:
    bool eventFilter(QObject* target, QEvent* event) override;

  private:
    struct Task {
        std::function<void()> run;
        InTheWay operations;
    };

    bool Withholds(const QWidget& target) const;
    void RunTasks();

    RunningWork& work_;
    const Workspace& workspace_;
    QWidget& frame_;
    std::vector<Task> tasks_;
    QTimer timer_;
};

// Marks a window beside the frame as one that shows texts alone, so that it needs no holding back.
void MarkAsReading(QWidget& window);

}  // namespace sonavel
