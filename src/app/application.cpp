#include "app/application.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include "app/about_dialog.h"
#include "app/application_commands.h"
#include "app/command_icons.h"
#include "app/document_commands.h"
#include "app/preferences/option_sheet.h"
#include "app/save_notice.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "properties/ui/file_properties_sheet.h"
#include "sound/file_formats.h"

namespace sonavel {

namespace {

constexpr const char* kOpenFolderKey = "Main Frame/OpenFolder";

// The first use of the sound devices holds the event loop up for a moment; the window is painted
// first.
constexpr int kLogoSoundDelayMs = 250;

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

}  // namespace

Application::Application(WaveDevices& devices, const ProgramFolder& folder)
    : logoSound_(devices, folder),
      documentDialogs_(&frame_, folder),
      viewDialogs_(&frame_),
      workspace_({prompts_, progress_, clipboard_, devices, folder}, documentDialogs_,
                 viewDialogs_),
      effectCommands_(MakeEffectHost()),
      commands_(std::make_unique<TableCommandTarget<Application>>(*this, ApplicationCommands())) {
    frame_.ShowStartUpLogo();
    AddActions();
    frame_.Build(workspace_, {&effectCommands_, commands_.get()});
    ConnectFrame();
}

Application::~Application() {
    // The child windows show sounds that the workspace owns.
    while (workspace_.Count() > 0) workspace_.Close(workspace_.Count() - 1);
    workspace_.SetObserver(nullptr);
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
                return workspace_.NewDocumentFromSound(std::move(sound), titlePrefix);
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
    documentDialogs_.SetSaveNotice(
        [this](const SaveAsChoice& choice) { return NoticeOfSave(workspace_, choice); });
    documentDialogs_.SetDocumentFolder([this] {
        const OpenSound* active = workspace_.Active();
        if (!active) return QString();
        return FileText(active->document->Path().parent_path());
    });
    const auto open = [this](const QString& path) { OpenFile(path); };
    QObject::connect(&frame_.Recent(), &RecentFiles::Chosen, &frame_, open);
    QObject::connect(&frame_, &CMainFrame::FilesDropped, &frame_, [this](const QStringList& paths) {
        for (const QString& path : paths) OpenFile(path);
    });
}

std::optional<QString> Application::OpenAtStart(const QString& absolutePath) {
    prompts_.HoldMessages();
    const bool opened = OpenFile(absolutePath);
    heldMessages_ = prompts_.TakeHeldMessages();
    if (opened) return std::nullopt;
    QString reason = Utf8Text(workspace_.LastError());
    if (reason.isEmpty()) reason = heldMessages_.join(u' ');
    return reason.isEmpty() ? QStringLiteral("cannot be opened") : reason;
}

void Application::Show() {
    frame_.show();
    QTimer::singleShot(kLogoSoundDelayMs, &frame_, [this] { logoSound_.Play(); });
    QTimer::singleShot(0, &frame_, [this] {
        for (const QString& text : std::exchange(heldMessages_, {}))
            prompts_.ShowMessage(text.toStdString());
    });
}

bool Application::OpenFile(const QString& absolutePath) {
    const std::filesystem::path path = FilePath(absolutePath);
    if (const auto index = workspace_.IndexOfPath(path)) {
        workspace_.Activate(*index);
        return true;
    }
    if (workspace_.OpenDocument(path)) {
        frame_.Recent().Add(absolutePath);
        return true;
    }
    const QString name = ShownFileText(FileText(path.filename()));
    frame_.Status().ShowNote(name + QStringLiteral(": ") + Utf8Text(workspace_.LastError()));
    std::error_code error;
    if (!std::filesystem::exists(path, error)) frame_.Recent().Remove(absolutePath);
    return false;
}

bool Application::NewSound() {
    return workspace_.NewDocument();
}

QString Application::FolderToOpen() {
    return PersonSettings().value(kOpenFolderKey, QDir::currentPath()).toString();
}

bool Application::OpenFiles() {
    const QStringList paths =
        OpenFilesDialog::Ask(QObject::tr("Open"), FolderToOpen(), OpenFilters(), &frame_);
    if (paths.isEmpty()) return false;
    PersonSettings().setValue(kOpenFolderKey, QFileInfo(paths.front()).absolutePath());
    bool allOpened = true;
    for (const QString& path : paths) allOpened = OpenFile(path) && allOpened;
    return allOpened;
}

bool Application::HasModifiedSounds() const {
    for (std::size_t i = 0; i < workspace_.Count(); ++i)
        if (workspace_.At(i).document->GetModified()) return true;
    return false;
}

bool Application::SaveAll() {
    bool allSaved = true;
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        CSoundDoc& document = *workspace_.At(i).document;
        if (!document.GetModified()) continue;
        workspace_.Activate(i);
        allSaved = SaveUnderOwnPath(document) && allSaved;
    }
    return allSaved;
}

bool Application::ShowFileProperties() {
    OpenSound* active = workspace_.Active();
    if (!active) return false;
    CFilePropertiesSheet(*active->document, progress_, &frame_).exec();
    return true;
}

bool Application::EditPreferences() {
    const HostServices& services = workspace_.Services();
    COptionSheet sheet(services.folder, services.devices, &frame_);
    QObject::connect(&sheet, &COptionSheet::Changed, &frame_, [this] { TakeSettings(); });
    sheet.exec();
    return true;
}

void Application::TakeSettings() {
    for (std::size_t i = 0; i < workspace_.Count(); ++i) {
        workspace_.At(i).view->ReloadSettings();
    }
    frame_.TakeSettings();
}

bool Application::ShowSampleDatabase() {
    if (!catalogue_) {
        const auto open = [this](const QString& path) { return OpenFile(path); };
        catalogue_ = std::make_unique<CatalogueWindow>(workspace_.Services(), open);
        catalogue_->setAttribute(Qt::WA_QuitOnClose, false);
    }
    catalogue_->Present();
    return true;
}

void Application::RunLogo() {
    LogoWindow logo(QApplication::activeModalWidget());
    logoSound_.Play();
    logo.exec();
}

bool Application::ShowAbout() {
    AboutDialog([this] { RunLogo(); }, &frame_).exec();
    return true;
}

bool Application::Exit() {
    return frame_.close();
}

}  // namespace sonavel
