#include "app/application.h"

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <algorithm>

#include "app/about_dialog.h"
#include "app/application_commands.h"
#include "app/command_icons.h"
#include "app/document_saver.h"
#include "app/new_sound_dialog.h"
#include "app/preferences/option_sheet.h"
#include "app/recovery/left_work_offer.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "properties/ui/file_properties_sheet.h"
#include "sound/file_formats.h"
#include "sound/foreign_extensions.h"

namespace sonavel {

namespace {

constexpr const char* kOpenFolderKey = "Main Frame/OpenFolder";

// The first use of the sound devices holds the event loop up for a moment; the window is painted
// first.
constexpr int kLogoSoundDelayMs = 250;

// How soon the status bar says that work is kept no more.
constexpr int kFaultPeriodMs = 1000;

QString OpenFilters() {
    QStringList filters{QObject::tr("Audio Files (%1)").arg(Utf8Text(AllExtensions("*", " ")))};
    for (const FileFormat& format : FileFormats()) {
        QStringList patterns;
        for (const std::string_view extension : format.extensions)
            patterns << QStringLiteral("*") + Utf8Text(extension);
        filters << QStringLiteral("%1 (%2)").arg(Utf8Text(format.openName), patterns.join(u' '));
    }
    return (filters << QObject::tr("All Files (*)")).join(QStringLiteral(";;"));
}

// The names that sound files go by. What a file is, its content decides.
QString ImportFilters() {
    std::string patterns = AllExtensions("*", " ");
    for (const std::string_view extension : ForeignExtensions())
        patterns.append(" *").append(extension);
    return QObject::tr("Sound Files (%1)").arg(Utf8Text(patterns)) + QStringLiteral(";;") +
           QObject::tr("All Files (*)");
}

bool HasPath(const std::vector<RefusedFile>& files, const QString& path) {
    return std::ranges::find(files, path, &RefusedFile::path) != files.end();
}

// Of several, the last failure counts, else that one was cancelled.
void TakeInto(Outcome& all, const Outcome& one) {
    if (one.IsFailed() || (all && !one)) all = one;
}

}  // namespace

Application::Application(WaveDevices& devices, const ProgramFolder& folder,
                         const std::optional<std::filesystem::path>& recoveryFolder)
    : logoSound_(devices, folder),
      workspace_({prompts_, progress_, clipboard_, devices, folder, &codecs_,
                  UndoStorage::OfThisSystem()}),
      importer_(workspace_, &frame_, [this](const QString& path) { frame_.Recent().Add(path); }),
      effectCommands_(MakeEffectHost()),
      commands_(std::make_unique<TableCommandTarget<Application>>(*this, ApplicationCommands())) {
    frame_.ShowStartUpLogo();
    AddActions();
    frame_.Build(workspace_, progress_.Work(), {&effectCommands_, commands_.get()});
    ConnectFrame();
    if (recoveryFolder) KeepWork(*recoveryFolder);
}

Application::~Application() {
    // The child windows show sounds that the workspace owns.
    while (workspace_.Count() > 0) workspace_.Close(workspace_.Count() - 1);
    workspace_.SetObserver(nullptr);
}

void Application::KeepWork(const std::filesystem::path& folder) {
    keeper_ =
        std::make_unique<recovery::WorkKeeper>(folder, recovery::WorkKeeper::Keeping::kChanges);
    workspace_.SetKeeper(keeper_.get());
    LimitRecovery();
    faultTimer_.setInterval(kFaultPeriodMs);
    faultTimer_.callOnTimeout([this] { keeper_->TellFaults(); });
    faultTimer_.start();
    endSignals_.emplace([this] { LeaveAtOnce(); });
    // The desktop ends the program soon after; whether it does is not known yet.
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &frame_,
                     [this] { keeper_->Finish(); });
}

void Application::OfferWhatWasLeft() {
    if (!keeper_) return;
    // It would lie over the question and take no click meanwhile.
    const auto hideLogo = [this] { frame_.HideLogo(); };
    frame_.Tell(OfferLeftWork(keeper_->Folder(), workspace_, &frame_, hideLogo));
}

void Application::LeaveAtOnce() {
    prompts_.HoldMessages();
    // Whoever ends the program may not wait for what cannot be cancelled.
    if (frame_.Gate().IsRunning()) {
        keeper_->Finish();
        return frame_.Gate().WhenIdle([this] { LeaveAtOnce(); }, WorkGate::InTheWay::kIsCancelled);
    }
    for (std::size_t i = 0; i < workspace_.Count(); ++i)
        static_cast<void>(workspace_.StopActivity(i));
    workspace_.LeaveKeeper();
    keeper_->Finish();
    QCoreApplication::exit(0);
}

EffectHost Application::MakeEffectHost() {
    return {
        .activeView =
            [this] {
                const OpenSound* active = workspace_.Active();
                return active ? active->view.get() : nullptr;
            },
        .openSound =
            [this](Sound&& sound, std::string_view titlePrefix) {
                workspace_.NewDocumentFromSound(std::move(sound), titlePrefix);
            },
        .state = effectState_,
        .memory = effectMemory_,
        .window = &frame_,
    };
}

void Application::AddActions() {
    const auto add = [this](const CommandInfo& info) {
        frame_.Actions().Add(info)->setIcon(CommandIcon(info.id));
    };
    for (const CommandInfo& info : EffectCommands::Rows()) add(info);
    for (const Command<Application>& row : ApplicationCommands()) add(row.info);
}

void Application::ConnectFrame() {
    prompts_.SetMainWindow(&frame_);
    prompts_.SetStatusSink([this](const QString& text) { frame_.Status().ShowNote(text); });
    progress_.SetMainWindow(&frame_);
    QObject::connect(&frame_.Recent(), &RecentFiles::Chosen, &frame_,
                     [this](const QString& path) { frame_.Tell(OpenFile(path)); });
    QObject::connect(&frame_, &CMainFrame::FilesDropped, &frame_,
                     [this](const QStringList& paths) { frame_.Tell(OpenFiles(paths)); });
}

QStringList Application::OpenAtStart(const QStringList& absolutePaths) {
    QStringList failures;
    prompts_.HoldMessages();
    heldRefusals_ = importer_.RefusedOf(absolutePaths);
    for (const QString& path : absolutePaths) {
        if (HasPath(heldRefusals_, path)) continue;
        const Outcome opened = OpenPlainly(path);
        if (!opened) failures << ShownFileText(path) + ": " + Utf8Text(opened.Reason());
    }
    heldMessages_ = prompts_.TakeHeldMessages();
    return failures;
}

void Application::ShowWhatWasHeld() {
    for (const QString& text : std::exchange(heldMessages_, {}))
        prompts_.ShowMessage(text.toStdString());
    frame_.Tell(importer_.Offer(std::exchange(heldRefusals_, {})));
    OfferWhatWasLeft();
}

void Application::Show() {
    frame_.show();
    QTimer::singleShot(kLogoSoundDelayMs, &frame_, [this] { logoSound_.Play(); });
    QTimer::singleShot(0, &frame_, [this] { ShowWhatWasHeld(); });
}

Outcome Application::OpenPlainly(const QString& absolutePath) {
    const std::filesystem::path path = FilePath(absolutePath);
    if (const auto index = workspace_.IndexOfPath(path)) {
        workspace_.Activate(*index);
        return Done();
    }
    Outcome opened = workspace_.OpenDocument(path);
    std::error_code error;
    if (opened)
        frame_.Recent().Add(absolutePath);
    else if (!std::filesystem::exists(path, error))
        frame_.Recent().Remove(absolutePath);
    return opened;
}

Outcome Application::OpenPlainlyOrName(const QString& absolutePath) {
    Outcome opened = OpenPlainly(absolutePath);
    if (!opened.IsFailed()) return opened;
    const QString name = ShownFileText(FileText(FilePath(absolutePath).filename()));
    return Failed(name.toStdString() + ": " + opened.Reason());
}

Outcome Application::NewSound() {
    NewSoundDialog dialog({}, &frame_);
    return dialog.exec() == QDialog::Accepted ? workspace_.NewDocument(dialog.Choice())
                                              : Cancelled();
}

QStringList Application::AskForFiles(const QString& title, const QString& filters) {
    const QString folder = PersonSettings().value(kOpenFolderKey, QDir::currentPath()).toString();
    QStringList paths = OpenFilesDialog::Ask(title, folder, filters, &frame_);
    if (!paths.isEmpty())
        PersonSettings().setValue(kOpenFolderKey, QFileInfo(paths.front()).absolutePath());
    return paths;
}

Outcome Application::Open() {
    const QStringList paths = AskForFiles(QObject::tr("Open"), OpenFilters());
    return paths.isEmpty() ? Cancelled() : OpenFiles(paths);
}

Outcome Application::OpenFiles(const QStringList& absolutePaths) {
    if (Outcome held = frame_.Gate().HoldAll(); !held) return held;
    const std::vector<RefusedFile> refused = importer_.RefusedOf(absolutePaths);
    Outcome all = Done();
    for (const QString& path : absolutePaths)
        if (!HasPath(refused, path)) TakeInto(all, OpenPlainlyOrName(path));
    TakeInto(all, importer_.Offer(refused));
    return all;
}

Outcome Application::Import() {
    const QStringList paths = AskForFiles(QObject::tr("Import"), ImportFilters());
    return paths.isEmpty() ? Cancelled() : importer_.Import(paths);
}

bool Application::HasModifiedSounds() const {
    for (std::size_t i = 0; i < workspace_.Count(); ++i)
        if (workspace_.At(i).document->GetModified()) return true;
    return false;
}

Outcome Application::SaveAll() {
    Outcome all = Done();
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        CSoundDoc& document = *workspace_.At(i).document;
        if (!document.GetModified()) continue;
        workspace_.Activate(i);
        TakeInto(all, DocumentSaver(workspace_, document, &frame_).Save());
    }
    return all;
}

Outcome Application::RunScript() {
    return scripts_.AskAndRun();
}

Outcome Application::CopyAsScript() {
    return scripts_.CopySteps();
}

void Application::ShowFileProperties() {
    OpenSound* active = workspace_.Active();
    if (!active) return;
    CFilePropertiesSheet(*active->document, progress_, &frame_).exec();
}

void Application::EditPreferences() {
    const HostServices& services = workspace_.Services();
    StorageFacts facts{.undoMemory = services.undo.memoryBytes};
    if (keeper_)
        facts.recovery = {keeper_->UsualLimitBytes(), recovery::BytesIn(keeper_->Folder())};
    COptionSheet sheet(services.folder, services.devices, &frame_, facts, frame_.KeysOfCommands());
    QObject::connect(&sheet, &COptionSheet::Changed, &frame_, [this] { TakeSettings(); });
    sheet.exec();
}

void Application::LimitRecovery() {
    const ProfileText options = workspace_.Services().folder.Options().Read();
    const int megabytes =
        RowOf(SettingId::kRecoveryRoom).Effective(StoredNumber(options, SettingId::kRecoveryRoom));
    keeper_->SetLimit(static_cast<std::uint64_t>(megabytes) << 20);
}

void Application::TakeSettings() {
    if (keeper_) LimitRecovery();
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        workspace_.At(i).view->ReloadSettings();
    }
    frame_.TakeSettings();
}

void Application::ShowSampleDatabase() {
    if (!catalogue_) {
        const auto open = [this](const QString& path) {
            const Outcome opened = OpenFile(path);
            frame_.Tell(opened);
            return opened.IsDone();
        };
        catalogue_ = std::make_unique<CatalogueWindow>(workspace_.Services(), open);
        catalogue_->setAttribute(Qt::WA_QuitOnClose, false);
    }
    catalogue_->Present();
}

void Application::RunLogo() {
    LogoWindow logo(QApplication::activeModalWidget());
    logoSound_.Play();
    logo.exec();
}

void Application::ShowAbout() {
    const auto showLicences = [this] { help_.Show(QStringLiteral("licences")); };
    AboutDialog([this] { RunLogo(); }, showLicences, &frame_).exec();
}

void Application::Exit() {
    frame_.close();
}

}  // namespace sonavel
