// How a document comes into being and how it is saved: New, Open, Save and Save As.
#include "document/file_kind.h"
#include "document/sound_doc.h"
#include "platform/code_page_949.h"
#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/failure_texts.h"

namespace sonavel {
namespace {

// The list as people know it, with its stray blank and a pattern that no reader stands behind.
constexpr std::string_view kSaveFilter =
    "Audio Files (*.wav;*.au;*.aiff) |*.wav;*.au;*.aiff;*.mp3|Wave File (*.wav)|*.wav|"
    "Next/Sun audio file (*.au)|*.au|Apple audio files (*.aiff)|*.aiff|All Files (*.*)|*.*||";

}  // namespace

bool CSoundDoc::NewDocument() {
    const std::optional<NewSoundChoice> choice = dialogs_.AskNewSound({});
    return choice ? NewDocument(*choice) : Refuse(failure::kCancelled);
}

bool CSoundDoc::NewDocument(const NewSoundChoice& choice) {
    if (!IsEditable(MakePcmFormat(choice.channels, choice.bits, choice.samplesPerSecond)))
        return Fail("This format cannot be edited.");
    StopPlaying();
    if (!sound_.Create(choice.channels, choice.bits, choice.samplesPerSecond, 0))
        return Fail(failure::kMemory);
    ForgetHistory();
    TellChanged(0);
    SetModified(false);
    return true;
}

bool CSoundDoc::OpenDocument(const std::filesystem::path& path) {
    const std::string extension = ExtensionFromFirstDot(path);
    if (extension.empty()) return Fail("The file name has no extension.");
    StopPlaying();
    const bool read = ReadFile(path, extension);
    if (read) {
        TakePath(path);
        ForgetHistory();
        TellChanged(0);
        SetModified(false);
    }
    // Also after a failed read: the window then shows what it showed before.
    OpenIntoWindow();
    return read;
}

void CSoundDoc::OpenIntoWindow() {
    for (DocumentObserver* observer : observers_) {
        if (options_.openAndMaximize) observer->MaximizeFrame();
        if (options_.openAndPlay) observer->PlayFromStart();
    }
}

bool CSoundDoc::ReadFile(const std::filesystem::path& path, std::string_view extension) {
    constexpr std::string_view kUnread = "The file could not be read.";
    sound_.SetLastError("");
    switch (FileKindOfExtension(extension)) {
        case FileKind::kWav:
            return ReadWav(path);
        case FileKind::kNextSun:
            return ReadAu(path, sound_) || FailAsSound(kUnread);
        case FileKind::kAiff:
            return ReadAiff(path, sound_) || FailAsSound(kUnread);
        case FileKind::kUnknown:
            break;
    }
    return Fail("Files with the extension \"" + DisplayText(extension) + "\" cannot be opened.");
}

bool CSoundDoc::ReadWav(const std::filesystem::path& path) {
    if (!sound_.IsPCM(path)) return FailAsSound("The file does not hold PCM sound.");
    return sound_.Open(path, WavOpenMode::kReadAll) || FailAsSound("The file could not be read.");
}

bool CSoundDoc::SaveDocument(const std::filesystem::path& path) {
    const std::string extension = ExtensionFromFirstDot(path);
    if (extension.empty() || extension.size() == path.string().size())
        return Fail("The file name has no extension.");
    if (!WriteFile(path, extension)) return false;
    TakePath(path);
    TellTitleOrModified();
    return true;
}

bool CSoundDoc::WriteFile(const std::filesystem::path& path, std::string_view extension) {
    constexpr std::string_view kUnwritten = "The file could not be written.";
    sound_.SetLastError("");
    switch (FileKindOfExtension(extension)) {
        case FileKind::kWav:
            return WriteWav(path);
        case FileKind::kNextSun:
            return WriteAu(path, sound_) || FailAsSound(kUnwritten);
        case FileKind::kAiff:
            if (!WriteAiff(path, sound_)) return FailAsSound(kUnwritten);
            // A modified sound stays so; one of which the file holds less becomes so.
            if (!SaveWarning(path).empty()) sound_.SetModified(true);
            return true;
        case FileKind::kUnknown:
            break;
    }
    return Fail("Files with the extension \"" + DisplayText(extension) + "\" cannot be saved.");
}

bool CSoundDoc::WriteWav(const std::filesystem::path& path) {
    const MarkerSaving markers = options_.saveMarkers ? MarkerSaving::kOn : MarkerSaving::kOff;
    if (sound_.Save(path, markers)) return true;
    return FailAsSound("The sound was written without markers, because saving markers is off.");
}

void CSoundDoc::TakePath(const std::filesystem::path& path) {
    path_ = path;
    title_ = DisplayText(path.filename().native());
}

bool CSoundDoc::SaveAs() {
    const std::optional<SaveAsChoice> choice =
        dialogs_.AskSaveAs({.proposedName = title_,
                            .filter = std::string(kSaveFilter),
                            .samplesPerSecond = sound_.GetSamplesPerSecond(),
                            .channels = sound_.GetChannels(),
                            .bits = sound_.GetBits(),
                            .saveMarkers = options_.saveMarkers != 0,
                            .durationSeconds = sound_.GetDuration()});
    if (!choice) return Refuse(failure::kCancelled);
    if (!ConvertForSave(*choice)) return false;
    SetSaveMarkers(choice->saveMarkers);
    std::filesystem::path path = choice->path;
    if (!path.has_extension()) path += ".WAV";
    return SaveDocument(path);
}

bool CSoundDoc::ConvertForSave(const SaveAsChoice& choice) {
    if (choice.channels == sound_.GetChannels() && choice.bits == sound_.GetBits()) return true;
    Result<SoundEdit> edit = BeginEdit("Copy Sample");
    if (!edit) return Fail(edit.Reason());
    if (!sound_.ConvertFormat(choice.channels, ChannelChoice::kBothOrMix, choice.bits))
        return Fail(failure::kMemory);
    edit->Commit(0);
    return true;
}

}  // namespace sonavel
