#include "app/work_gate.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include "app/child_frame.h"
#include "platform/qt/qt_progress.h"

namespace sonavel {

namespace {

constexpr int kIdlePollMs = 30;
constexpr const char* kReadingProperty = "isForReading";

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ContextMenu:
        case QEvent::InputMethod:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
            return true;
        default:
            return false;
    }
}

bool IsDragged(QEvent::Type type) {
    return type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop;
}

const CChildFrame* ChildFrameAround(const QWidget& widget) {
    for (const QWidget* at = &widget; at; at = at->parentWidget())
        if (const auto* frame = qobject_cast<const CChildFrame*>(at)) return frame;
    return nullptr;
}

// A floating bar and a menu, too, belong to the frame.
bool BelongsTo(const QWidget& frame, const QWidget& widget) {
    for (const QWidget* at = &widget; at; at = at->parentWidget())
        if (at == &frame) return true;
    return false;
}

}  // namespace

void MarkAsReading(QWidget& window) {
    window.setProperty(kReadingProperty, true);
}

WorkGate::WorkGate(RunningWork& work, const Workspace& workspace, QWidget& frame)
    : work_(work), workspace_(workspace), frame_(frame) {
    timer_.setInterval(kIdlePollMs);
    timer_.callOnTimeout([this] { RunTasks(); });
    qApp->installEventFilter(this);
}

Outcome WorkGate::HoldAll() const {
    if (!IsRunning()) return Done();
    return Failed(tr("Not while \"%1\" runs.").arg(work_.Caption()).toStdString());
}

Outcome WorkGate::Hold(const CommandInfo& command) const {
    if (!IsRunning() || command.whileWorking == WhileWorking::kAlways) return Done();
    const OpenSound* active = workspace_.Active();
    const bool isFree = !active || !active->document->IsBeingChanged();
    if (isFree && command.whileWorking == WhileWorking::kOnFreeSounds) return Done();
    return HoldAll();
}

bool WorkGate::Withholds(const QWidget& target) const {
    const QWidget& window = *target.window();
    if (qobject_cast<const CProgressDlg*>(&window) || window.isModal()) return false;
    if (window.property(kReadingProperty).toBool()) return false;
    const CChildFrame* frame = ChildFrameAround(target);
    // Its title and its border still move it, and bring it to the front.
    if (frame && frame != &target) return frame->Sound().document->IsBeingChanged();
    return !BelongsTo(frame_, target);
}

bool WorkGate::eventFilter(QObject* target, QEvent* event) {
    if (!IsRunning() || !target->isWidgetType()) return false;
    if (IsDragged(event->type())) return true;
    return IsInput(event->type()) && Withholds(*static_cast<QWidget*>(target));
}

void WorkGate::WhenIdle(std::function<void()> task, InTheWay operations) {
    tasks_.push_back({std::move(task), operations});
    timer_.start();
}

void WorkGate::RunTasks() {
    const auto cancels = [](const Task& task) { return task.operations == InTheWay::kIsCancelled; };
    if (IsRunning() && std::ranges::any_of(tasks_, cancels)) work_.CancelAll();
    if (IsRunning() || QApplication::activeModalWidget()) return;
    timer_.stop();
    for (const Task& task : std::exchange(tasks_, {})) task.run();
}

}  // namespace sonavel
