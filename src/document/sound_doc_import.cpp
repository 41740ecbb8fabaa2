// How a document comes out of a foreign file and goes back into it, and its tags.
#include <algorithm>

#include "document/sound_doc.h"
#include "exchange/sound_frames.h"
#include "exchange/sound_import.h"

namespace sonavel {

Outcome CSoundDoc::ImportDocument(const std::filesystem::path& path, const ImportChoice& choice) {
    StopPlaying();
    const FileOrigin file{path, IdentityOfFile(path).value_or(FileIdentity()), choice};
    if (Outcome read = ReadImport(path, choice); !read) return read;
    TakePath(path);
    file_ = file;
    fileHolds_ = FileHolds::kAll;
    ForgetHistory();
    TellChanged(0);
    SetModified(false);
    if (options_.openAndPlay) sound_.Play(0);
    return Done();
}

Outcome CSoundDoc::ReadImport(const std::filesystem::path& path, const ImportChoice& choice) {
    Result<ImportedSound> imported = ImportSound(path, services_.codecs, choice, sound_.FileHost());
    if (!imported) return imported.Ended();
    sound_.Adopt(std::move(imported->sound));
    origin_ =
        ImportOrigin{imported->description, ImportLine(imported->description, imported->extras),
                     std::move(imported->losses)};
    extras_ = std::move(imported->extras);
    return Done();
}

std::string CSoundDoc::OriginLine() const {
    return origin_ ? origin_->line : std::string();
}

void CSoundDoc::SetTag(std::string_view key, std::string_view value) {
    const auto found = std::ranges::find(extras_.tags, key, &SoundTag::key);
    if (value.empty() && found == extras_.tags.end()) return;
    if (value.empty())
        extras_.tags.erase(found);
    else if (found != extras_.tags.end())
        found->value = value;
    else
        extras_.tags.push_back({std::string(key), std::string(value)});
    if (historyListener_) historyListener_->OnTagsChanged(extras_.tags);
    SetModified(true);
}

Outcome CSoundDoc::AskAboutLosses() {
    if (origin_->losses == ImportOrigin::Losses::kAccepted) return Done();
    SoundExtras extras = extras_;
    extras.markers = ChaptersOf(sound_.Markers());
    std::string question;
    for (const std::string& loss : LossesOfSaving(*origin_, sound_, extras))
        question += loss + ".\n";
    if (question.empty()) return Done();
    if (!services_.prompts.AskOkCancel(question + "Save all the same?", "Save")) return Cancelled();
    origin_->losses = ImportOrigin::Losses::kAccepted;
    return Done();
}

Outcome CSoundDoc::SaveLikeOrigin() {
    if (origin_->description.kind == SoundFileKind::kOther)
        return Failed(origin_->description.format +
                      " files cannot be written. Save As writes the sound in another format.");
    if (Outcome accepted = AskAboutLosses(); !accepted) return accepted;
    if (Outcome written = WriteForeignFile(path_, sound_, RequestLike(origin_->description),
                                           extras_, services_.codecs, sound_.FileHost());
        !written)
        return written;
    sound_.SetModified(false);
    NoteFileWritten();
    TellTitleOrModified();
    return Done();
}

}  // namespace sonavel
