// How a document comes into being and how it is saved: New, Open, Save and Save As.
#include "document/sound_doc.h"
#include "platform/code_page_949.h"
#include "sound/failure_texts.h"
#include "sound/file_formats.h"

namespace sonavel {
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
    // Also after a failed read: what was there before is then heard.
    if (options_.openAndPlay) sound_.Play(0);
    return read;
}

bool CSoundDoc::ReadFile(const std::filesystem::path& path, std::string_view extension) {
    const FileFormat* format = FileFormatOfExtension(extension);
    if (!format)
        return Fail("Files with the extension \"" + DisplayText(extension) +
                    "\" cannot be opened.");
    return sound_.Take(format->read(path, sound_.FileHost())) || Fail(sound_.LastError());
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
    const FileFormat* format = FileFormatOfExtension(extension);
    if (!format)
        return Fail("Files with the extension \"" + DisplayText(extension) + "\" cannot be saved.");
    const MarkerSaving markers = options_.saveMarkers ? MarkerSaving::kOn : MarkerSaving::kOff;
    if (!sound_.ReportOutcome(format->write(sound_, path, markers, sound_.FileHost())))
        return Fail(sound_.LastError());
    if (format->savedMark == SavedMark::kSaved)
        sound_.SetModified(false);
    else if (!SaveWarning(path).empty())
        // A modified sound stays so; one of which the file holds less becomes so.
        sound_.SetModified(true);
    return true;
}

void CSoundDoc::TakePath(const std::filesystem::path& path) {
    path_ = path;
    title_ = DisplayText(path.filename().native());
}

bool CSoundDoc::SaveAs() {
    const std::optional<SaveAsChoice> choice =
        dialogs_.AskSaveAs({.proposedName = title_,
                            .filter = SaveFilter(),
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
