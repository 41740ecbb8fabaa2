// How a document comes into being and how it is saved: New, Open, Save and Save As.
#include "document/edit_operations.h"
#include "document/sound_doc.h"
#include "platform/code_page_949.h"
#include "platform/failure_texts.h"
#include "sound/file_formats.h"

namespace sonavel {

Outcome CSoundDoc::NewDocument(const NewSoundChoice& choice) {
    if (!IsEditable(MakeSoundFormat(choice.channels, choice.bits, choice.samplesPerSecond)))
        return Failed("This format cannot be edited.");
    StopPlaying();
    if (!sound_.Create(choice.channels, choice.bits, choice.samplesPerSecond, 0))
        return Failed(failure::kMemory);
    file_.reset();
    ForgetHistory();
    TellChanged(0);
    SetModified(false);
    return Done();
}

Outcome CSoundDoc::OpenDocument(const std::filesystem::path& path) {
    const std::string extension = ExtensionFromFirstDot(path);
    if (extension.empty()) return Failed("The file name has no extension.");
    StopPlaying();
    const FileOrigin file{path, IdentityOfFile(path).value_or(FileIdentity()), {}};
    Outcome read = ReadFile(path, extension);
    if (read) {
        TakePath(path);
        file_ = file;
        fileHolds_ = FileHolds::kAll;
        origin_.reset();
        extras_ = {};
        ForgetHistory();
        TellChanged(0);
        SetModified(false);
    }
    // Also after a failed read: what was there before is then heard.
    if (options_.openAndPlay) sound_.Play(0);
    return read;
}

Outcome CSoundDoc::ReadAgain() {
    if (!file_) return Failed("The document has no file yet.");
    const FileOrigin file = *file_;
    if (file.import) return ImportDocument(file.path, *file.import);
    return origin_ ? ImportDocument(file.path, {}) : OpenDocument(file.path);
}

Outcome CSoundDoc::ReadFile(const std::filesystem::path& path, std::string_view extension) {
    const FileFormat* format = FileFormatOfExtension(extension);
    if (!format)
        return Failed("Files with the extension \"" + DisplayText(extension) +
                      "\" cannot be opened.");
    Result<sonavel::Sound> sound = format->read(path, sound_.FileHost());
    const bool read = sound_.Take(std::move(sound));
    return DoneIf(read, sound_.LastError());
}

FileState CSoundDoc::StateOfFile() const {
    if (!file_) return FileState::kNone;
    const std::optional<FileIdentity> now = IdentityOfFile(file_->path);
    if (!now) return FileState::kGone;
    return *now == file_->identity ? FileState::kAsItWas : FileState::kChanged;
}

Outcome CSoundDoc::SaveDocument(const std::filesystem::path& path, OtherWriters others) {
    const bool isOverOthers = others == OtherWriters::kAskAbout && file_ && file_->path == path &&
                              StateOfFile() == FileState::kChanged;
    if (isOverOthers && services_.prompts.AskChangedFile() != ChangedFileAnswer::kOverwrite)
        return Cancelled();
    NoteWriting(path);
    if (IsOrigin(path)) return SaveLikeOrigin();
    const std::string extension = ExtensionFromFirstDot(path);
    if (extension.empty() || extension.size() == path.string().size())
        return Failed("The file name has no extension.");
    if (Outcome written = WriteFile(path, extension); !written) return written;
    TakePath(path);
    origin_.reset();
    NoteFileWritten();
    TellTitleOrModified();
    return Done();
}

void CSoundDoc::NoteWriting(const std::filesystem::path& path) {
    if (historyListener_) historyListener_->OnSaving(path);
}

void CSoundDoc::NoteFileWritten() {
    const std::optional<FileIdentity> identity = IdentityOfFile(path_);
    file_ = identity ? std::optional(FileOrigin{path_, *identity, {}}) : std::nullopt;
    fileHolds_ = WrittenFileHolds();
}

// A WAV file gives every sample back; of markers it may leave out what no other program reads.
FileHolds CSoundDoc::WrittenFileHolds() const {
    const bool isWave = FileFormatOfExtension(path_.extension().native()) == &FileFormats().front();
    const bool all = isWave && !origin_ && sound_.Markers().Empty() && extras_.tags.empty();
    return all ? FileHolds::kAll : FileHolds::kLess;
}

Outcome CSoundDoc::WriteFile(const std::filesystem::path& path, std::string_view extension) {
    const FileFormat* format = FileFormatOfExtension(extension);
    if (!format)
        return Failed("Files with the extension \"" + DisplayText(extension) +
                      "\" cannot be saved.");
    const MarkerSaving markers = options_.saveMarkers ? MarkerSaving::kOn : MarkerSaving::kOff;
    if (!sound_.ReportOutcome(format->write(sound_, path, markers, sound_.FileHost())))
        return Failed(sound_.LastError());
    if (format->savedMark == SavedMark::kSaved)
        sound_.SetModified(false);
    else if (!SaveWarning(path).empty())
        // A modified sound stays so; one of which the file holds less becomes so.
        sound_.SetModified(true);
    return Done();
}

void CSoundDoc::TakePath(const std::filesystem::path& path) {
    path_ = path;
    title_ = DisplayText(path.filename().native());
}

SaveAsRequest CSoundDoc::QuestionOfSaveAs() const {
    return {.proposedName = title_,
            .filter = SaveFilter(),
            .samplesPerSecond = sound_.GetSamplesPerSecond(),
            .channels = sound_.GetChannels(),
            .bits = sound_.GetBits(),
            .saveMarkers = options_.saveMarkers != 0,
            .durationSeconds = sound_.GetDuration()};
}

Outcome CSoundDoc::SaveAs(const SaveAsChoice& choice) {
    if (Outcome converted = ConvertForSave(choice); !converted) return converted;
    SetSaveMarkers(choice.saveMarkers);
    std::filesystem::path path = choice.path;
    if (!path.has_extension()) path += ".WAV";
    return SaveDocument(path);
}

Outcome CSoundDoc::ConvertForSave(const SaveAsChoice& choice) {
    return edit::ConvertFormat(*this, choice.channels, ChannelChoice::kBothOrMix, choice.bits);
}

}  // namespace sonavel
