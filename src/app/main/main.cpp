// The desktop editor: sonavel [FILE].
#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "app/application.h"
#include "app/command_icons.h"
#include "app/look.h"
#include "platform/portaudio/portaudio_wave_devices.h"
#include "platform/qt/file_names.h"
#include "platform/qt/ui_thread.h"
#include "platform/qt/utf8_text.h"
#include "sound/file_formats.h"

namespace {

// The call, without the words that were the toolkit's, in which no byte of a file's name is lost.
QStringList CallOf(int count, char** words) {
    QStringList call;
    for (int i = 0; i < count; ++i) call << sonavel::FileText(words[i]);
    return call;
}

// Empty without a file. Ends the program for --help, --version and a wrong call.
std::filesystem::path FileOfCommandLine(const QStringList& call) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A sound editor for 8- and 16-bit PCM."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The sound to open (%1).")
                                     .arg(sonavel::Utf8Text(sonavel::AllExtensions("", ", "))),
                                 QStringLiteral("[FILE]"));
    parser.process(call);
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) return {};
    if (files.size() > 1) {
        std::fputs("sonavel: one file at most can be named\n", stderr);
        std::exit(1);
    }
    // Without "." and ".." parts: the first "." of a path begins its extension.
    std::error_code error;
    return std::filesystem::absolute(sonavel::FilePath(files.front()), error).lexically_normal();
}

using sonavel::PortAudioWaveDevices;

int RunWith(PortAudioWaveDevices& devices, const std::filesystem::path& file) {
    const sonavel::ProgramFolder folder = sonavel::ProgramFolder::OfThisProgram();
    sonavel::Application application(devices, folder);
    if (!file.empty()) {
        if (const auto reason = application.OpenAtStart(sonavel::FileText(file))) {
            std::fprintf(stderr, "sonavel: %s: %s\n", file.c_str(), qPrintable(*reason));
            return 1;
        }
    }
    application.Show();
    return QApplication::exec();
}

struct ProgramEnd {
    int status = 0;
    PortAudioWaveDevices::Ending devices = PortAudioWaveDevices::Ending::kClean;
};

ProgramEnd Run(int argc, char** argv) {
    QApplication qt(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Sonavel"));
    QApplication::setApplicationVersion(QStringLiteral("1.2 Beta"));
    QApplication::setDesktopFileName(QStringLiteral("sonavel"));
    const std::filesystem::path file = FileOfCommandLine(CallOf(argc, argv));
    sonavel::ApplyLook();
    sonavel::LoadPictures();
    QApplication::setWindowIcon(sonavel::ProgramIcon());

    PortAudioWaveDevices devices(sonavel::PostToUiThread);
    ProgramEnd end;
    end.status = RunWith(devices, file);
    end.devices = devices.End();
    return end;
}

}  // namespace

int main(int argc, char** argv) {
    const ProgramEnd end = Run(argc, argv);
    // The sound libraries' own clean-up might wait for a thread that hangs in them.
    if (end.devices == PortAudioWaveDevices::Ending::kHangs) std::_Exit(end.status);
    return end.status;
}
