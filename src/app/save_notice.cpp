#include "app/save_notice.h"

#include "sound/file_formats.h"

namespace sonavel {

namespace {

SaveNotice Refused(std::string text) {
    return {std::move(text), false};
}

// ".wav, .au, .snd, .aiff or .aif"
std::string AllEndings() {
    std::string endings = AllExtensions("", ", ");
    return endings.replace(endings.rfind(','), 1, " or");
}

}  // namespace

SaveNotice NoticeOfSave(Workspace& workspace, const SaveAsChoice& choice) {
    const OpenSound* active = workspace.Active();
    if (!active) return {};
    const auto open = workspace.IndexOfPath(choice.path);
    if (open && open != workspace.ActiveIndex())
        return Refused(
            "This file is open in another window. Close it there, or choose another name.");
    const CWavePlayer& sound = active->document->Sound();
    if (sound.IsRecording() &&
        (choice.channels != sound.GetChannels() || choice.bits != sound.GetBits()))
        return Refused("Channels and bits cannot be changed while the sound is being recorded.");
    const std::string extension = ExtensionFromFirstDot(choice.path);
    if (FileFormatOfExtension(extension)) return {active->document->SaveWarning(choice)};
    if (extension.find('/') != std::string::npos)
        return Refused("Nothing can be saved here: the name of a folder has a \".\" in it.");
    return Refused("Nothing can be saved under this name: it must end in " + AllEndings() + ".");
}

}  // namespace sonavel
