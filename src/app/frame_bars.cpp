#include "app/frame_bars.h"

#include <QMenuBar>
#include <QToolButton>
#include <utility>

#include "app/command_ids.h"
#include "platform/qt/utf8_text.h"
#include "platform/qt/window_places.h"
#include "sound/sample_types.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

namespace {

void Dock(QMainWindow& frame, QWidget& bar) {
    if (!bar.isWindow()) return;
    if (auto* dock = qobject_cast<QDockWidget*>(&bar)) dock->setFloating(false);
    if (auto* tools = qobject_cast<QToolBar*>(&bar))
        frame.addToolBar(frame.toolBarArea(tools), tools);
}

}  // namespace

FrameBars::FrameBars(Workspace& workspace, ChildWindows& area, CommandActions& actions,
                     QMainWindow* frame)
    : QObject(frame),
      workspace_(workspace),
      area_(area),
      actions_(actions),
      frame_(*frame),
      meter_(new PlayMeterBar(workspace.Services().folder.Options(), frame)) {}

void FrameBars::ShowInViewMenu(QWidget& bar, QAction& toggle, const QString& text) {
    toggle.setText(text);
    toggle.setStatusTip(tr("Show or hide this bar"));
    connect(&toggle, &QAction::triggered, &bar, [this, &bar](bool isShown) {
        if (isShown && !PlacesItsWindows()) Dock(frame_, bar);
    });
    frame_.menuBar()
        ->findChild<QMenu*>(QStringLiteral("View"))
        ->insertAction(actions_.Action(app_command::kStatusBar), &toggle);
}

void FrameBars::AddBar(QToolBar& bar, const QString& text, Qt::ToolBarArea area) {
    frame_.addToolBar(area, &bar);
    // What the toolkit shows where a bar has no room for all of its buttons.
    if (auto* more = bar.findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button")))
        more->setAccessibleName(tr("More of %1").arg(bar.windowTitle()));
    ShowInViewMenu(bar, *bar.toggleViewAction(), text);
}

void FrameBars::Add() {
    auto* file = new CommandBar(tr("File and Edit"), actions_, FileBarCommands(), &frame_);
    zoom_ = new ZoomBar(actions_, &frame_);
    auto* spatial = new CommandBar(tr("3D Effects"), actions_, SpatialBarCommands(), &frame_);
    transport_ = new TransportBar(actions_, &frame_);
    AddBar(*file, tr("File and &Edit Bar"));
    AddBar(*zoom_, tr("&Zoom Bar"));
    AddBar(*spatial, tr("&3D Effects Bar"));
    frame_.addToolBarBreak();
    AddBar(*transport_, tr("&Remocon Bar"));
    format_ = new FormatBar(tr("Format Information"), &frame_);
    AddBar(*format_, tr("Format &Information Bar"));
    AddWindowList();
    AddMeter();
}

void FrameBars::AddWindowList() {
    windowList_ = new WindowListBar(tr("Window List"), &frame_);
    AddBar(*windowList_, tr("&Window List Bar"), Qt::BottomToolBarArea);
    connect(windowList_, &WindowListBar::Chosen, this,
            [this](CChildFrame* frame) { area_.Choose(*frame); });
    connect(windowList_, &WindowListBar::MenuRequested, this, &FrameBars::ShowFrameMenu);
}

void FrameBars::ShowFrameMenu(CChildFrame* frame, const QPoint& globalPosition) {
    constexpr MenuEntry kEntries[] = {
        MenuEntry::Command(app_command::kSave),
        MenuEntry::Command(app_command::kSaveAs),
        MenuEntry::Separator(),
        MenuEntry::Command(app_command::kClose),
        MenuEntry::Command(app_command::kCloseOthers),
        MenuEntry::Command(app_command::kCloseAll),
        MenuEntry::Separator(),
        MenuEntry::Command(app_command::kFileProperties),
    };
    // The commands are those of the active sound.
    area_.Choose(*frame);
    QMenu menu;
    actions_.FillMenu(menu, kEntries);
    menu.exec(globalPosition);
}

void FrameBars::HoldFloating() {
    for (QWidget* bar : frame_.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool isBar = qobject_cast<QToolBar*>(bar) || qobject_cast<QDockWidget*>(bar);
        if (!isBar || !bar->isWindow() || bar->isHidden()) continue;
        bar->hide();
        held_ << bar;
    }
}

void FrameBars::ShowFloating() {
    for (QWidget* bar : std::exchange(held_, {}))
        if (bar) bar->show();
}

void FrameBars::Refresh() {
    const OpenSound* active = workspace_.Active();
    windowList_->Refresh(active ? area_.FrameOf(*active) : nullptr);
    if (active)
        format_->ShowSound(*active->document, *active->view);
    else
        format_->Clear();
}

void FrameBars::ShowReadOuts(const ReadOuts& readOuts) {
    transport_->ShowTime(Utf8Text(readOuts.time));
    zoom_->ShowRatio(Utf8Text(readOuts.ratio));
}

void FrameBars::TakeSettings() {
    meter_->ReloadSettings();
    FitMeter();
}

void FrameBars::AddSound(CChildFrame& frame) {
    windowList_->Add(frame);
    ConnectMeter(frame);
}

void FrameBars::RemoveSound(const CChildFrame& frame) {
    windowList_->Remove(frame);
}

void FrameBars::AddMeter() {
    meter_->setObjectName(QStringLiteral("PlayMeter"));
    frame_.addDockWidget(Qt::RightDockWidgetArea, meter_);
    ShowInViewMenu(*meter_, *meter_->toggleViewAction(), tr("&Playmeter Bar"));
}

void FrameBars::ConnectMeter(CChildFrame& frame) {
    SoundViewWidget& view = frame.View();
    const auto isActive = [this, &frame] { return &frame.Sound() == workspace_.Active(); };
    connect(&view, &SoundViewWidget::ColoursChanged, meter_, [this, isActive] {
        if (isActive()) FitMeter();
    });
    // A conversion, Undo and Redo may bring another sample width.
    connect(&frame, &CChildFrame::SoundChanged, meter_, [this, &frame, isActive] {
        if (isActive()) ReferMeter(frame.Sound().document->Sound());
    });
}

void FrameBars::GiveMeterTo(const OpenSound* active) {
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        OpenSound& sound = workspace_.At(i);
        sound.view->Playing().SetMeter(&sound == active ? meter_ : nullptr);
    }
    FitMeter();
}

void FrameBars::FitMeter() {
    const OpenSound* active = workspace_.Active();
    meter_->OnPeaks(0, 0);
    if (!active) return;
    ReferMeter(active->document->Sound());
    meter_->SetColours(active->view->Settings().colours);
}

void FrameBars::ReferMeter(const CWave& sound) {
    meter_->SetReference(static_cast<std::int32_t>(FullScaleOf(sound.GetBits())));
}

}  // namespace sonavel
