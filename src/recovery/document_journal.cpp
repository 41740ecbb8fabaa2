#include "recovery/document_journal.h"

#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "recovery/base_copy.h"

namespace sonavel::recovery {
namespace {

constexpr int kMostRestartsForRoom = 5;

// Nothing where there is no memory for the copy.
std::optional<SamplesToKeep> Kept(const Sound& now, std::uint64_t start, std::uint64_t bytes) {
    SamplesToKeep kept;
    if (bytes == 0) return kept;
    if (bytes >= LentSamples::kLeastBytes) {
        kept.lent = BlockOf(now).Lend(start, bytes);
        return kept.lent ? std::optional(std::move(kept)) : std::nullopt;
    }
    if (!kept.copy.AllocBuffer(bytes)) return std::nullopt;
    std::memcpy(kept.copy.Data(), now.Bytes().data() + start, bytes);
    return kept;
}

ChangeRecord RecordOf(const HistoryChange& change, const Sound& now) {
    const EditRecord& edit = *change.record;
    return {.reach = edit.reach,
            .step = change.kind == HistoryChange::Kind::kStep ? ChangeRecord::Step::kStored
                                                              : ChangeRecord::Step::kNone,
            .name = std::string(change.stepName),
            .startByte = edit.startByte,
            .bytesBefore = edit.bytesKept,
            .sampleBytes = edit.bytesThere,
            .format = now.GetFormat(),
            .framesAfter = now.GetFrameCount(),
            .markers = now.Markers()};
}

}  // namespace

DocumentJournal::DocumentJournal(CSoundDoc& document, const JournalHost& host)
    : document_(document), host_(host) {
    Listen();
    if (document_.GetModified()) BeginWith(document_.Sound());
}

DocumentJournal::DocumentJournal(CSoundDoc& document, const JournalHost& host,
                                 ReplayedJournal replayed, Keeping keeping)
    : document_(document),
      host_(host),
      keeping_(keeping),
      file_(std::move(replayed.file)),
      undoable_(replayed.undoable),
      redoable_(replayed.redoable),
      name_(PresentName()) {
    Listen();
    if (!Keeps()) return;
    host_.thread.Watch(file_);
    host_.thread.Post([file = file_] { file->Begin(); });
}

void DocumentJournal::Listen() {
    document_.AddObserver(this);
    document_.SetHistoryListener(this);
    if (!Keeps()) return;
    document_.Sound().SetRecordingTap(this);
    ClaimFile();
}

void DocumentJournal::ClaimFile() {
    if (document_.Path() == claimed_) return;
    if (!claimed_.empty()) host_.claims->Release(claimed_);
    claimed_ = document_.Path();
    sharesFile_ = !claimed_.empty() && !host_.claims->Claim(claimed_);
}

DocumentJournal::~DocumentJournal() {
    if (!claimed_.empty()) host_.claims->Release(claimed_);
    document_.Sound().SetRecordingTap(nullptr);
    document_.SetHistoryListener(nullptr);
    document_.RemoveObserver(this);
}

void DocumentJournal::Discard() {
    if (!file_) return;
    host_.thread.Post([file = std::exchange(file_, nullptr)] { file->Remove(); });
    undoable_ = redoable_ = 0;
    faultTold_ = false;
}

void DocumentJournal::TellFault() {
    if (!file_ || faultTold_ || file_->Fault() == JournalFault::kNone) return;
    faultTold_ = true;
    document_.Services().prompts.ShowStatus(TextOf(file_->Fault()));
}

// --- Beginning

bool DocumentJournal::CanBeginWithFile() const {
    const FileOrigin* file = document_.File();
    return file && document_.FileHoldsSound() && IdentityOfFile(file->path) == file->identity;
}

NameRecord DocumentJournal::PresentName() const {
    NameRecord name{document_.Path(), document_.Title(), {}};
    if (const FileOrigin* file = document_.File()) name.identity = file->identity;
    return name;
}

void DocumentJournal::Begin(const BaseRecord& base, SamplesToKeep samples) {
    file_ = std::make_shared<JournalFile>(host_.newFolder(), host_.budget);
    undoable_ = redoable_ = 0;
    host_.thread.Watch(file_);
    host_.thread.Post([file = file_] { file->Begin(); });
    Append(base, std::move(samples));
    NoteName();
    if (base.kind == BaseRecord::Kind::kFile) host_.thread.PostLong(CopyingBase(file_, *base.file));
}

// False when the state before the change can be had no more.
bool DocumentJournal::BeginBefore(const HistoryChange& change, const Sound& now) {
    const EditRecord& edit = *change.record;
    const std::uint64_t bytesBefore = now.GetDataSize() - edit.bytesThere + edit.bytesKept;
    if (CanBeginWithFile()) {
        Begin({.kind = BaseRecord::Kind::kFile, .file = *document_.File()}, {});
        return true;
    }
    if (bytesBefore > 0 || !edit.markers.Empty()) return false;
    const bool isOfMarkers = edit.reach == EditReach::kMarkers;
    Begin({.format = isOfMarkers ? now.GetFormat() : edit.format}, {});
    return true;
}

void DocumentJournal::BeginWith(const Sound& now) {
    BaseRecord base{.format = now.GetFormat(),
                    .markers = now.Markers(),
                    .sampleBytes = now.GetDataSize(),
                    .frames = now.GetFrameCount()};
    std::optional<SamplesToKeep> samples = Kept(now, 0, now.GetDataSize());
    if (!samples) base.sampleBytes = base.frames = 0;
    Begin(base, samples ? std::move(*samples) : SamplesToKeep());
    if (!samples) file_->SetFault(JournalFault::kNoMemory);
    if (const ImportOrigin* import = document_.Import())
        Append(OriginRecord{*import, document_.Extras().chunks});
    if (!document_.Tags().empty()) OnTagsChanged(document_.Tags());
}

// The old folder stays until the new one is written, unless its room is what the new one needs.
void DocumentJournal::Restart(const Sound& now) {
    const std::shared_ptr<JournalFile> old = file_;
    const bool lacksRoom = old && old->Fault() == JournalFault::kBudget;
    if (lacksRoom) {
        ++restartsForRoom_;
        Discard();
    }
    BeginWith(now);
    if (old && !lacksRoom) host_.thread.Post([old] { old->Remove(); });
}

// --- Changes

void DocumentJournal::OnHistoryChange(const HistoryChange& change, const Sound& now) try {
    TellFault();
    if (change.kind == HistoryChange::Kind::kForgotten) return Discard();
    if (!Keeps()) return;
    if (change.record != nullptr && change.kind != HistoryChange::Kind::kUndone &&
        change.kind != HistoryChange::Kind::kRedone)
        NoteChange(change, now);
    else
        NoteStep(change, now);
} catch (const std::bad_alloc&) {
    if (file_) file_->SetFault(JournalFault::kNoMemory);
}

void DocumentJournal::NoteChange(const HistoryChange& change, const Sound& now) {
    if (!file_ && !BeginBefore(change, now)) return BeginWith(now);
    if (CanRestart(now)) return Restart(now);
    std::optional<SamplesToKeep> samples =
        Kept(now, change.record->startByte, change.record->bytesThere);
    if (!samples) return file_->SetFault(JournalFault::kNoMemory);
    Append(RecordOf(change, now), *std::move(samples));
    if (change.kind == HistoryChange::Kind::kStep) ++undoable_;
    redoable_ = 0;
    if (change.record->reach != EditReach::kMarkers) RemoveTake();
}

// --- Recording

void DocumentJournal::OnRecorded(std::span<const std::uint8_t> wholeFrames) {
    const Sound& now = document_.Sound();
    if (!file_ && CanBeginWithFile())
        Begin({.kind = BaseRecord::Kind::kFile,
               .file = *document_.File(),
               .frames = now.GetFrameCount()},
              {});
    else if (!file_)
        BeginWith(now);
    auto bytes =
        std::make_shared<std::vector<std::uint8_t>>(wholeFrames.begin(), wholeFrames.end());
    host_.thread.Post(
        [file = file_, bytes, format = now.GetFormat()] { file->AppendToTake(format, *bytes); });
    hasTake_ = true;
}

void DocumentJournal::EndReplay() {
    if (Keeps()) host_.thread.Post([file = file_] { file->RemoveTake(); });
}

// Behind the record that holds it.
void DocumentJournal::RemoveTake() {
    if (std::exchange(hasTake_, false)) host_.thread.Post([file = file_] { file->RemoveTake(); });
}

void DocumentJournal::OnSaving(const std::filesystem::path& path) {
    if (Keeps()) host_.thread.Post([saves = host_.saves, path] { saves->Note(path); });
}

void DocumentJournal::NoteStep(const HistoryChange& change, const Sound& now) {
    const bool undoes = change.kind == HistoryChange::Kind::kUndone;
    std::uint32_t& from = undoes ? undoable_ : redoable_;
    // Steps of before the base are in no record.
    if (!file_ || from == 0 || CanRestart(now)) return Restart(now);
    Append(StepRecord{undoes ? StepRecord::Way::kUndo : StepRecord::Way::kRedo, now.GetFormat(),
                      now.GetFrameCount()});
    --from;
    ++(undoes ? redoable_ : undoable_);
}

// Where the records have used up their room, the sound alone may still have it.
bool DocumentJournal::CanRestart(const Sound& now) const {
    return file_->Fault() == JournalFault::kBudget && restartsForRoom_ < kMostRestartsForRoom &&
           now.GetDataSize() < host_.budget->limitBytes / 2;
}

void DocumentJournal::OnTagsChanged(std::span<const SoundTag> tags) {
    if (!Keeps()) return;
    if (!file_ && CanBeginWithFile())
        Begin({.kind = BaseRecord::Kind::kFile,
               .file = *document_.File(),
               .frames = document_.Sound().GetFrameCount()},
              {});
    else if (!file_)
        return BeginWith(document_.Sound());
    Append(TagsRecord{{tags.begin(), tags.end()}});
}

void DocumentJournal::OnTitleOrModifiedChanged() {
    TellFault();
    if (Keeps()) ClaimFile();
    if (!file_) return;
    // A recording that goes on is unsaved work of a sound that has not changed yet.
    if (!document_.GetModified()) return hasTake_ ? void() : Discard();
    if (!Keeps()) return;
    // A file that was written, and yet does not hold all of the sound, may be the one that the
    // records begin with.
    const NameRecord name = PresentName();
    if (name.identity != name_.identity) return Restart(document_.Sound());
    if (name.path != name_.path || name.title != name_.title) NoteName();
}

void DocumentJournal::NoteName() {
    name_ = PresentName();
    Append(name_);
}

void DocumentJournal::Append(const JournalRecord& record, SamplesToKeep samples) try {
    host_.thread.PostAppend(file_, {TypeOf(record), PackRecord(record), std::move(samples.copy),
                                    std::move(samples.lent)});
} catch (const std::bad_alloc&) {
    file_->SetFault(JournalFault::kNoMemory);
}

}  // namespace sonavel::recovery
