// The desktop editor: sonavel [OPTION]... [FILE]...
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "app/accessibility.h"
#include "app/application.h"
#include "app/call/editor_call.h"
#include "app/command_icons.h"
#include "app/display_guard.h"
#include "app/look.h"
#include "app/running_instance.h"
#include "platform/portaudio/portaudio_wave_devices.h"
#include "platform/qt/file_names.h"
#include "platform/qt/ui_thread.h"

namespace {

using sonavel::Application;
using sonavel::EditorCall;
using sonavel::InstanceRequest;
using sonavel::PortAudioWaveDevices;
using sonavel::RunningInstance;

constexpr int kFailed = 1;
constexpr int kMistake = 2;

// As absolute file texts without "." and ".." parts, because the first "." of a path begins its
// extension.
QStringList FilesOf(const EditorCall& call) {
    QStringList files;
    for (const std::string& file : call.files) {
        std::error_code error;
        files << sonavel::FileText(std::filesystem::absolute(file, error).lexically_normal());
    }
    return files;
}

void Begin(Application& application, EditorCall::First first) {
    sonavel::CMainFrame& frame = application.Frame();
    if (first == EditorCall::First::kNew) frame.Tell(application.NewSound());
    if (first == EditorCall::First::kRecord) frame.Tell(frame.Record());
}

void Serve(Application& application, const InstanceRequest& request) {
    sonavel::CMainFrame& frame = application.Frame();
    frame.setWindowState(frame.windowState() & ~Qt::WindowMinimized);
    frame.raise();
    frame.activateWindow();
    if (!request.files.isEmpty()) frame.Tell(application.OpenFiles(request.files));
    Begin(application, request.first);
}

// Without a window when nothing of what was named can be opened.
int RunWith(PortAudioWaveDevices& devices, RunningInstance& instance,
            const InstanceRequest& request) {
    const sonavel::ProgramFolder folder = sonavel::ProgramFolder::OfThisProgram();
    Application application(devices, folder, sonavel::recovery::StateRecoveryFolder());
    const QStringList failures = application.OpenAtStart(request.files);
    for (const QString& failure : failures)
        std::fprintf(stderr, "sonavel: %s\n", qPrintable(failure));
    if (!request.files.isEmpty() && failures.size() == request.files.size()) return kFailed;
    application.Show();
    instance.SetBusyTest([&application] { return application.Frame().Gate().IsRunning(); });
    QObject::connect(&instance, &RunningInstance::Requested, &application.Frame(),
                     [&application](const InstanceRequest& later) { Serve(application, later); });
    QTimer::singleShot(0, &application.Frame(),
                       [&application, &request] { Begin(application, request.first); });
    return QApplication::exec();
}

struct ProgramEnd {
    int status = 0;
    PortAudioWaveDevices::Ending devices = PortAudioWaveDevices::Ending::kClean;
};

ProgramEnd RunEditor(const EditorCall& call) {
    const InstanceRequest request{call.first, FilesOf(call)};
    const bool isShared = call.instance == EditorCall::Instance::kShared;
    RunningInstance instance(isShared ? RunningInstance::SocketPath() : QString());
    if (instance.Start(request) == RunningInstance::Role::kHandedOver) return {};
    sonavel::ApplyLook();
    sonavel::LoadPictures();
    sonavel::InstallAccessibility();
    QApplication::setWindowIcon(sonavel::ProgramIcon());

    PortAudioWaveDevices devices(sonavel::PostToUiThread);
    ProgramEnd end;
    end.status = RunWith(devices, instance, request);
    end.devices = devices.End();
    return end;
}

ProgramEnd Run(int argc, char** argv) {
    std::optional<sonavel::DisplayGuard> guard(std::in_place);
    QApplication qt(argc, argv);
    guard.reset();
    QApplication::setApplicationName(QStringLiteral("Sonavel"));
    QApplication::setApplicationVersion(QString::fromStdString(sonavel::EditorVersion()));
    QApplication::setDesktopFileName(QStringLiteral(SONAVEL_APPLICATION_ID));
    std::string mistake;
    // What is left are the words that were not the toolkit's.
    const auto call = sonavel::ParseEditorCall({argv + 1, argv + argc}, mistake);
    if (call) return RunEditor(*call);
    std::fprintf(stderr, "sonavel: %s\n%s\n", mistake.c_str(), sonavel::EditorUsage().c_str());
    return {kMistake, PortAudioWaveDevices::Ending::kClean};
}

int Print(const std::string& text) {
    return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? 0 : kFailed;
}

}  // namespace

int main(int argc, char** argv) {
    switch (sonavel::TextTaskOf({argv + std::min(argc, 1), argv + argc})) {
        case EditorCall::Task::kHelp:
            return Print(sonavel::EditorHelp());
        case EditorCall::Task::kVersion:
            return Print("sonavel " + sonavel::EditorVersion() + "\n");
        case EditorCall::Task::kRun:
            break;
    }
    const ProgramEnd end = Run(argc, argv);
    // The sound libraries' own clean-up might wait for a thread that hangs in them.
    if (end.devices == PortAudioWaveDevices::Ending::kHangs) std::_Exit(end.status);
    return end.status;
}
