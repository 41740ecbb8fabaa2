#include "app/work_gate.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <algorithm>

#include "app/child_frame.h"
#include "app/command_ids.h"
#include "meter/ui/play_meter_bar.h"
#include "platform/qt/qt_progress.h"
#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

constexpr int kIdlePollMs = 30;
constexpr const char* kReadingProperty = "isForReading";

// None of these opens a dialog, and none changes a sound; what Stop records stands in a sound of
// its own.
constexpr int kOfASound[] = {
    view_command::kPlay,
    view_command::kPlayLooped,
    view_command::kPlayToEnd,
    view_command::kStop,
    view_command::kPause,
    view_command::kSpaceKey,
    view_command::kPreviewCut,
    view_command::kPreRoll,
    view_command::kStart,
    view_command::kEnd,
    view_command::kRewind,
    view_command::kForward,
    view_command::kCursorLeft,
    view_command::kCursorRight,
    view_command::kExtendLeft,
    view_command::kExtendRight,
    view_command::kExtendLeftFar,
    view_command::kExtendRightFar,
    view_command::kSelectToStart,
    view_command::kSelectToEnd,
    view_command::kSelectAll,
    view_command::kPreviousMarker,
    view_command::kNextMarker,
    view_command::kSelectToNextMarker,
    view_command::kMarkerPlay,
    view_command::kMarkerSelect,
    view_command::kLastSelection,
    view_command::kZoomLevelIn,
    view_command::kZoomLevelOut,
    view_command::kZoomLevelFull,
    view_command::kZoomTimeIn,
    view_command::kZoomTimeOut,
    view_command::kZoomTimeFull,
    view_command::kZoomSelection,
    view_command::kZoomDefault,
    view_command::kPreviousZoom,
    view_command::kNextZoom,
    view_command::kShowWaveform,
    view_command::kShowSpectrogram,
    view_command::kShowBoth,
    view_command::kOverview,
    view_command::kStatusSample,
    view_command::kStatusTime,
    view_command::kStatusSecond,
    view_command::kSnapToZero,
    view_command::kPlayFollowsClicks,
};

constexpr int kOfTheFrame[] = {
    app_command::kCascade,    app_command::kTileHorizontally, app_command::kTileVertically,
    app_command::kTabs,       app_command::kNextWindow,       app_command::kPreviousWindow,
    app_command::kStatusBar,  app_command::kOriginLine,       app_command::kManual,
    app_command::kManualKeys, app_command::kWhatsNew,         app_command::kExit,
    meter_command::kThirtyDb, meter_command::kSixtyDb,        meter_command::kNinetyDb,
    meter_command::kAbsolute, meter_command::kShowLevel,
};

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

Outcome WorkGate::Hold(int commandId) const {
    if (!IsRunning() || std::ranges::find(kOfTheFrame, commandId) != std::end(kOfTheFrame))
        return Done();
    const OpenSound* active = workspace_.Active();
    const bool isFree = !active || !active->document->IsBeingChanged();
    if (isFree && std::ranges::find(kOfASound, commandId) != std::end(kOfASound)) return Done();
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
