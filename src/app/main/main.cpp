// The desktop editor: sonavel [FILE].
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

#include "app/application.h"
#include "app/command_icons.h"
#include "app/look.h"
#include "platform/portaudio/portaudio_wave_devices.h"
#include "platform/qt/ui_thread.h"

namespace {

// Nothing without a file. Ends the program for --help, --version and a wrong call.
QString FileOfCommandLine(const QApplication& qt) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A sound editor for 8- and 16-bit PCM."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(
        QStringLiteral("FILE"), QStringLiteral("The sound to open (.wav, .aiff, .aif, .au, .snd)."),
        QStringLiteral("[FILE]"));
    parser.process(qt);
    const QStringList files = parser.positionalArguments();
    if (files.isEmpty()) return {};
    if (files.size() > 1) {
        std::fputs("sonavel: one file at most can be named\n", stderr);
        std::exit(1);
    }
    // Without "." and ".." parts: the first "." of a path begins its extension.
    return QDir::cleanPath(QFileInfo(files.front()).absoluteFilePath());
}

using sonavel::PortAudioWaveDevices;

int RunWith(PortAudioWaveDevices& devices, const QString& file) {
    const sonavel::ProgramFolder folder = sonavel::ProgramFolder::OfThisProgram();
    sonavel::Application application(devices, folder);
    if (!file.isEmpty()) {
        if (const auto reason = application.OpenAtStart(file)) {
            std::fprintf(stderr, "sonavel: %s: %s\n", qPrintable(file), qPrintable(*reason));
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
    const QString file = FileOfCommandLine(qt);
    sonavel::ApplyLook(qt);
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
