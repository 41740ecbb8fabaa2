// The main frame's bars: how they stand at first, and what they show.
#include <QMenuBar>
#include <utility>

#include "app/command_ids.h"
#include "app/main_frame.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

void CMainFrame::ShowInViewMenu(QAction& toggle, const QString& text) {
    toggle.setText(text);
    toggle.setStatusTip(tr("Show or hide this bar"));
    menuBar()
        ->findChild<QMenu*>(QStringLiteral("View"))
        ->insertAction(actions_.Action(app_command::kStatusBar), &toggle);
}

void CMainFrame::AddBar(QToolBar& bar, const QString& text, Qt::ToolBarArea area) {
    addToolBar(area, &bar);
    ShowInViewMenu(*bar.toggleViewAction(), text);
}

void CMainFrame::AddBars() {
    auto* file = new CommandBar(tr("File and Edit"), actions_, FileBarCommands(), this);
    zoom_ = new ZoomBar(actions_, this);
    auto* spatial = new CommandBar(tr("3D Effects"), actions_, SpatialBarCommands(), this);
    transport_ = new TransportBar(actions_, this);
    AddBar(*file, tr("File and &Edit Bar"));
    AddBar(*zoom_, tr("&Zoom Bar"));
    AddBar(*spatial, tr("&3D Effects Bar"));
    addToolBarBreak();
    AddBar(*transport_, tr("&Remocon Bar"));
    format_ = new FormatBar(tr("Format Information"), this);
    AddBar(*format_, tr("Format &Information Bar"));
    AddWindowList();
}

void CMainFrame::AddWindowList() {
    windowList_ = new WindowListBar(tr("Window List"), this);
    AddBar(*windowList_, tr("&Window List Bar"), Qt::BottomToolBarArea);
    connect(windowList_, &WindowListBar::Chosen, area_,
            [this](CChildFrame* frame) { area_->Choose(*frame); });
    connect(windowList_, &WindowListBar::MenuRequested, this, &CMainFrame::ShowFrameMenu);
}

void CMainFrame::ShowFrameMenu(CChildFrame* frame, const QPoint& globalPosition) {
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
    area_->Choose(*frame);
    QMenu menu;
    actions_.FillMenu(menu, kEntries);
    menu.exec(globalPosition);
}

void CMainFrame::HoldFloatingBars() {
    for (QWidget* bar : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool isBar = qobject_cast<QToolBar*>(bar) || qobject_cast<QDockWidget*>(bar);
        if (!isBar || !bar->isWindow() || bar->isHidden()) continue;
        bar->hide();
        heldBars_ << bar;
    }
}

void CMainFrame::ShowFloatingBars() {
    for (QWidget* bar : std::exchange(heldBars_, {}))
        if (bar) bar->show();
}

void CMainFrame::RefreshBars() {
    const OpenSound* active = workspace_->Active();
    windowList_->Refresh(active ? area_->FrameOf(*active) : nullptr);
    if (active)
        format_->ShowSound(*active->document, *active->view);
    else
        format_->Clear();
}

void CMainFrame::AddMeter() {
    meter_->setObjectName(QStringLiteral("PlayMeter"));
    addDockWidget(Qt::RightDockWidgetArea, meter_);
    ShowInViewMenu(*meter_->toggleViewAction(), tr("&Playmeter Bar"));
}

void CMainFrame::ConnectMeter(CChildFrame& frame) {
    SoundViewWidget& view = frame.View();
    const auto isActive = [this, &frame] { return &frame.Sound() == workspace_->Active(); };
    connect(&view, &SoundViewWidget::ColoursChanged, meter_, [this, isActive] {
        if (isActive()) FitMeter();
    });
    // A conversion, Undo and Redo may bring another sample width.
    connect(&frame, &CChildFrame::SoundChanged, meter_, [this, &frame, isActive] {
        if (isActive()) ReferMeter(frame.Sound().document->Sound());
    });
}

void CMainFrame::GiveMeterTo(const OpenSound* active) {
    for (std::size_t i = 0; i < workspace_->Count(); ++i) {
        OpenSound& sound = workspace_->At(i);
        sound.view->Playing().SetMeter(&sound == active ? meter_ : nullptr);
    }
    FitMeter();
}

void CMainFrame::FitMeter() {
    const OpenSound* active = workspace_->Active();
    meter_->OnPeaks(0, 0);
    if (!active) return;
    ReferMeter(active->document->Sound());
    meter_->SetColours(active->view->Settings().colours);
}

void CMainFrame::ReferMeter(const CWave& sound) {
    meter_->SetReference(static_cast<std::int32_t>(sound.GetMaxValue() + 1));
}

}  // namespace sonavel
