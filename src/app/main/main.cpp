// The desktop editor: sonavel [FILE]...
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

// As absolute file texts without "." and ".." parts, because the first "." of a path begins its
// extension. Ends the program for --help and --version.
QStringList FilesOfCommandLine(const QStringList& call) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A sound editor for 8- and 16-bit PCM."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("The sounds to open (%1) or to import (others).")
                                     .arg(sonavel::Utf8Text(sonavel::AllExtensions("", ", "))),
                                 QStringLiteral("[FILE]..."));
    parser.process(call);
    QStringList files;
    for (const QString& file : parser.positionalArguments()) {
        std::error_code error;
        files << sonavel::FileText(
            std::filesystem::absolute(sonavel::FilePath(file), error).lexically_normal());
    }
    return files;
}

using sonavel::PortAudioWaveDevices;

// Without a window when nothing of what was named can be opened.
int RunWith(PortAudioWaveDevices& devices, const QStringList& files) {
    const sonavel::ProgramFolder folder = sonavel::ProgramFolder::OfThisProgram();
    sonavel::Application application(devices, folder);
    const QStringList failures = application.OpenAtStart(files);
    for (const QString& failure : failures)
        std::fprintf(stderr, "sonavel: %s\n", qPrintable(failure));
    if (!files.isEmpty() && failures.size() == files.size()) return 1;
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
    const QStringList files = FilesOfCommandLine(CallOf(argc, argv));
    sonavel::ApplyLook();
    sonavel::LoadPictures();
    QApplication::setWindowIcon(sonavel::ProgramIcon());

    PortAudioWaveDevices devices(sonavel::PostToUiThread);
    ProgramEnd end;
    end.status = RunWith(devices, files);
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
