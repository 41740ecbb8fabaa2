#include "app/main_frame.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <algorithm>

#include "app/command_icons.h"
#include "app/command_ids.h"
#include "app/command_palette.h"
#include "app/document_commands.h"
#include "app/frame_commands.h"
#include "app/key_sets.h"
#include "app/keys_dialog.h"
#include "app/main_menu.h"
#include "platform/qt/file_names.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "platform/qt/window_places.h"
#include "spatial/ui/spatial_commands.h"
#include "view/commands/place_commands.h"
#include "view/commands/view_commands.h"

namespace sonavel {

namespace {

constexpr int kPlayRefreshMs = 40;
constexpr QSize kFirstSize{1200, 760};
// Of the kept places of the bars; another number forgets them.
constexpr int kBarsVersion = 2;

template <class Target>
std::unique_ptr<CommandTarget> TargetOf(Target& target, std::span<const Command<Target>> table) {
    return std::make_unique<TableCommandTarget<Target>>(target, table);
}

template <class Target>
void AddTable(CommandActions& actions, std::span<const Command<Target>> table) {
    for (const Command<Target>& row : table)
        actions.Add(row.info)->setIcon(CommandIcon(row.info.id));
}

}  // namespace

CMainFrame::CMainFrame()
    : area_(new ChildWindows(this)),
      status_(new StatusPanes(this)),
      actions_([this](int id) { return Route(id); }),
      media_([this](MediaCommand command) { RunMedia(command); }) {
    setWindowTitle(QStringLiteral("Sonavel"));
    setWindowIcon(ProgramIcon());
    setCentralWidget(area_);
    setStatusBar(status_);
    setAcceptDrops(true);
    resize(kFirstSize.boundedTo(screen()->availableSize() * 9 / 10));
    refreshTimer_.setSingleShot(true);
    playTimer_.setInterval(kPlayRefreshMs);
    connect(&refreshTimer_, &QTimer::timeout, this, &CMainFrame::Refresh);
    connect(&playTimer_, &QTimer::timeout, this, &CMainFrame::UpdatePanes);
    connect(status_, &StatusPanes::PlaceTyped, this, &CMainFrame::GoToTypedPlace);
}

CMainFrame::~CMainFrame() {
    delete logo_.data();
}

void CMainFrame::ShowStartUpLogo() {
    logo_ = new LogoWindow;
    logo_->setAttribute(Qt::WA_QuitOnClose, false);
    if (PlacesItsWindows())
        logo_->show();
    else
        logo_->ShowWithin(*this);
    QTimer::singleShot(LogoWindow::kStartUpMs, logo_, &QObject::deleteLater);
}

void CMainFrame::HideLogo() {
    if (logo_) logo_->hide();
}

void CMainFrame::Build(Workspace& workspace, RunningWork& work,
                       std::vector<CommandTarget*> program) {
    workspace_ = &workspace;
    gate_.emplace(work, workspace, *this);
    program_ = std::move(program);
    frameCommands_ = TargetOf<CMainFrame>(*this, FrameCommands());
    closer_.emplace(
        workspace, [this](const Outcome& outcome) { Tell(outcome); }, this);
    bars_ = new FrameBars(workspace, *area_, actions_, this);
    program_.push_back(&bars_->MeterCommands());
    AddActions();
    AddMenus();
    bars_->Add();
    if (const ChangedKeys keys = StoredKeys(); !keys.empty()) actions_.SetKeys(keys);
    RestorePlaces();
    welcome_ = new WelcomePage(*area_, actions_, recent_);
    workspace.SetObserver(this);
    connect(area_, &ChildWindows::Activated, this, &CMainFrame::ActivateSoundOf);
    connect(&actions_, &CommandActions::CommandRun, this, &CMainFrame::AfterCommand);
    FollowWork(work);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            &CMainFrame::ScheduleRefresh);
    Refresh();
}

CommandTarget* CMainFrame::Route(int commandId) {
    if (CommandTarget* target = soundCommands_.TargetOf(commandId)) return target;
    if (frameCommands_ && frameCommands_->HandlesCommand(commandId)) return frameCommands_.get();
    for (CommandTarget* target : program_)
        if (target->HandlesCommand(commandId)) return target;
    return nullptr;
}

void CMainFrame::AddActions() {
    AddTable(actions_, ViewCommands());
    AddTable(actions_, DocumentCommands());
    AddTable(actions_, ExportCommands());
    AddTable(actions_, MeterCommands());
    AddTable(actions_, SpatialCommandTable());
    AddTable(actions_, SceneCommands());
    AddTable(actions_, FrameCommands());
}

void CMainFrame::AddMenus() {
    for (const MenuLayout& layout : MainMenuLayout()) {
        QMenu* menu = menuBar()->addMenu(QString::fromUtf8(layout.title));
        menu->setObjectName(QString::fromUtf8(layout.title).remove(u'&'));
        actions_.FillMenu(*menu, layout.entries);
    }
    // The keys of commands that no menu shows.
    for (const auto& [id, action] : actions_.All()) addAction(action);

    auto* recentMenu = new QMenu(tr("Recent &Files"), this);
    recent_.ShowIn(*recentMenu);
    auto* fileMenu = menuBar()->findChild<QMenu*>(QStringLiteral("File"));
    fileMenu->insertMenu(actions_.Action(app_command::kClose), recentMenu);
    auto* windowMenu = menuBar()->findChild<QMenu*>(QStringLiteral("Window"));
    auto* listStart = windowMenu->addSeparator();
    connect(windowMenu, &QMenu::aboutToShow, this, [this, windowMenu, listStart] {
        const QList<QAction*> all = windowMenu->actions();
        for (QAction* action : all.mid(all.indexOf(listStart) + 1)) delete action;
        area_->FillMenu(*windowMenu);
    });
}

std::vector<PaletteRow> CMainFrame::AllCommands() {
    QList<QMenu*> menus;
    for (const QAction* action : menuBar()->actions())
        if (QMenu* menu = action->menu()) menus << menu;
    actions_.Refresh();
    return PaletteRows(menus, actions_);
}

std::vector<KeyRow> CMainFrame::KeysOfCommands() {
    std::vector<KeyRow> rows;
    for (const PaletteRow& row : AllCommands())
        rows.push_back({row.id, row.name, actions_.OwnKeys(row.id)});
    return rows;
}

Outcome CMainFrame::ChangeKeys() {
    KeysDialog dialog(KeysOfCommands(), StoredKeys(), this);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    StoreKeys(dialog.Keys());
    actions_.SetKeys(dialog.Keys());
    return Done();
}

Outcome CMainFrame::OpenPalette() {
    CommandPalette palette(AllCommands(), this);
    if (palette.exec() != QDialog::Accepted) return Cancelled();
    // By way of the event loop, so that a command never runs inside another.
    QTimer::singleShot(0, this, [this, id = palette.Chosen()] { actions_.Run(id); });
    return Done();
}

void CMainFrame::GoToTypedPlace(const QString& text) {
    OpenSound* active = workspace_->Active();
    if (active && active->document->IsBeingChanged())
        Tell(gate_->HoldAll());
    else if (active)
        Tell(GoToTyped(*active->view, text.toStdString()));
    ScheduleRefresh();
}

// A key whose command is not offered comes here.
void CMainFrame::keyPressEvent(QKeyEvent* event) {
    const QKeySequence key(event->keyCombination());
    const QAction* crossfade = actions_.Action(view_command::kCrossfadeMix);
    const bool meansSave = key == QKeySequence(Qt::CTRL | Qt::Key_S);
    if (meansSave && crossfade && crossfade->shortcuts().contains(key))
        status_->ShowNote(tr("Nothing to crossfade: %1 %2 saves; Edit > Keys changes keys.")
                              .arg(Utf8Text(actions_.Offered(view_command::kCrossfadeMix).Reason()),
                                   actions_.Action(app_command::kSave)->shortcut().toString()));
    else
        QMainWindow::keyPressEvent(event);
}

void CMainFrame::TakeSettings() {
    actions_.SetKeys(StoredKeys());
    bars_->TakeSettings();
    ScheduleRefresh();
}

void CMainFrame::RestorePlaces() {
    PersonSettings settings;
    settings.beginGroup(QStringLiteral("Main Frame"));
    restoreGeometry(settings.value(QStringLiteral("Geometry")).toByteArray());
    // Floating bars stand above the frame only if it has a window before them.
    winId();
    restoreState(settings.value(QStringLiteral("Bars")).toByteArray(), kBarsVersion);
    bars_->HoldFloating();
    status_->setVisible(settings.value(QStringLiteral("StatusBar"), true).toBool());
    if (settings.value(QStringLiteral("Tabs")).toBool()) area_->SwitchTabs();
}

void CMainFrame::StorePlaces() const {
    PersonSettings settings;
    settings.beginGroup(QStringLiteral("Main Frame"));
    settings.setValue(QStringLiteral("Geometry"), saveGeometry());
    settings.setValue(QStringLiteral("Bars"), saveState(kBarsVersion));
    settings.setValue(QStringLiteral("StatusBar"), ShowsStatusBar());
    settings.setValue(QStringLiteral("Tabs"), area_->ShowsTabs());
}

void CMainFrame::Refresh() {
    UpdateTitle();
    UpdatePanes();
    bars_->Refresh();
    actions_.Refresh();
    welcome_->Follow();
}

void CMainFrame::UpdateTitle() {
    const OpenSound* active = workspace_->Active();
    title_ = QStringLiteral("Sonavel");
    if (active) title_ += QStringLiteral(" - ") + Utf8Text(active->document->Title()) + "[*]";
    // A maximised child would add its own name to whatever title it sees.
    for (QMdiSubWindow* window : area_->subWindowList()) removeEventFilter(window);
    setWindowTitle(title_);
    setWindowModified(active && active->document->GetModified());
}

void CMainFrame::UpdatePanes() {
    const OpenSound* active = workspace_->Active();
    const ReadOuts shown = active ? ReadOutsOf(*active->view) : ReadOuts();
    if (shown.isBusy != playTimer_.isActive())
        shown.isBusy ? playTimer_.start() : playTimer_.stop();
    status_->ShowState(Utf8Text(shown.state), shown.isBusy ? StatusPanes::StateWidth::kOfItsText
                                                           : StatusPanes::StateWidth::kUsual);
    status_->ShowSelection(Utf8Text(shown.selection));
    status_->ShowZoom(Utf8Text(shown.zoom));
    bars_->ShowReadOuts(shown);
    TellDesktop(active);
}

void CMainFrame::TellDesktop(const OpenSound* active) {
    MediaState state;
    if (active) {
        const CSoundView& view = *active->view;
        state.isPlaying = view.Sound().IsPlaying();
        state.isActive = state.isPlaying || view.Sound().IsPaused();
        state.title = Utf8Text(active->document->Title());
        const double rate = std::max(1u, view.Sound().GetSamplesPerSecond());
        const std::int64_t frame = view.Playing().PlayFrame().value_or(view.State().Cursor());
        state.microseconds = static_cast<qint64>(static_cast<double>(frame) / rate * 1e6);
    }
    media_.Follow(state);
}

void CMainFrame::RunMedia(MediaCommand command) {
    if (command == MediaCommand::kRaise) {
        raise();
        activateWindow();
        return;
    }
    const int id = command == MediaCommand::kPlay    ? int{view_command::kPlay}
                   : command == MediaCommand::kPause ? int{view_command::kPause}
                                                     : int{view_command::kStop};
    if (QApplication::activeModalWidget() == nullptr) actions_.Action(id)->trigger();
}

void CMainFrame::Tell(const Outcome& outcome) {
    if (outcome.IsFailed()) status_->ShowNote(Utf8Text(outcome.Reason()));
}

void CMainFrame::AfterCommand(int commandId, const Outcome& outcome) {
    Tell(outcome);
    // Another sound may be active by now.
    const CSoundDoc* document = soundCommands_.DocumentOfCommand();
    const bool saved = commandId == app_command::kSave || commandId == app_command::kSaveAs;
    if (saved && outcome && document) recent_.Add(FileText(document->Path()));
    ScheduleRefresh();
}

void CMainFrame::ForgetSoundCommands() {
    soundCommands_.Forget();
    if (gate_->IsRunning())
        gate_->WhenIdle([this] { soundCommands_.DropForgotten(); }, WorkGate::InTheWay::kIsAwaited);
    else
        soundCommands_.DropForgotten();
}

// What was held back is painted, and offered, when the operation has ended.
void CMainFrame::FollowWork(RunningWork& work) {
    actions_.SetHold([this](const CommandInfo& command) { return gate_->Hold(command); });
    connect(&work, &RunningWork::Begun, this, &CMainFrame::ScheduleRefresh);
    connect(&work, &RunningWork::Ended, this, [this] {
        area_->RepaintAll();
        ScheduleRefresh();
    });
}

}  // namespace sonavel
