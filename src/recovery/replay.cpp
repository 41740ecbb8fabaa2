#include "recovery/replay.h"

#include <optional>
#include <string>
#include <utility>

#include "platform/beside.h"
#include "recovery/base_copy.h"
#include "recovery/journal_bytes.h"
#include "recovery/journal_file.h"

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUnreadable = "The records of this work cannot be read.";
constexpr std::string_view kFileGone =
    "The file that this work began with has been changed or removed since.";
constexpr std::string_view kEndsEarly =
    "The last records of this work are damaged. What came before them was recovered.";
constexpr std::string_view kEndsForMemory =
    "There is not enough memory for all of this work. What came first was recovered.";

// Applies records to a document, one after the other.
class Replayer {
  public:
    Replayer(CSoundDoc& document, fs::path folder)
        : document_(document), folder_(std::move(folder)) {}

    // The samples of the record to come.
    SoundBuffer samples;
    std::uint32_t undoable = 0;
    std::uint32_t redoable = 0;

    Outcome operator()(BaseRecord& base) {
        if (base.file) return RestoreFile(*base.file);
        return document_.RestoreSound(
            Sound(base.format, std::move(samples), std::move(base.markers)));
    }

    Outcome operator()(NameRecord& name) {
        document_.RestoreName(name.path, name.title, name.identity);
        return Done();
    }

    Outcome operator()(ChangeRecord& change) {
        EditRecord edit{.reach = change.reach,
                        .startByte = change.startByte,
                        .bytesThere = change.bytesBefore,
                        .bytesKept = change.sampleBytes,
                        .samples = std::move(samples),
                        .format = change.format,
                        .markers = std::move(change.markers)};
        const bool stored = change.step == ChangeRecord::Step::kStored;
        Outcome replayed = document_.ApplyRecord(stored ? change.name : "", std::move(edit));
        if (!replayed) return replayed;
        if (stored) ++undoable;
        redoable = 0;
        return replayed;
    }

    Outcome operator()(StepRecord& step) {
        const bool undoes = step.way == StepRecord::Way::kUndo;
        std::uint32_t& from = undoes ? undoable : redoable;
        if (from == 0) return Failed(kEndsEarly);
        Outcome replayed = undoes ? document_.Undo() : document_.Redo();
        if (!replayed) return replayed;
        --from;
        ++(undoes ? redoable : undoable);
        return replayed;
    }

    Outcome operator()(OriginRecord& origin) {
        document_.RestoreOrigin(std::move(origin.origin), std::move(origin.chunks));
        return Done();
    }

    Outcome operator()(TagsRecord& tags) {
        document_.RestoreTags(std::move(tags.tags));
        return Done();
    }

  private:
    Outcome RestoreFile(const FileOrigin& origin) {
        const fs::path copy = BaseCopyPath(folder_, origin.path);
        const auto copied = IdentityOfFile(copy);
        if (copied && copied->sizeBytes == origin.identity.sizeBytes)
            return document_.RestoreFile(origin, copy);
        if (IdentityOfFile(origin.path) != origin.identity) return Failed(kFileGone);
        return document_.RestoreFile(origin, origin.path);
    }

    CSoundDoc& document_;
    fs::path folder_;
};

// Reads a record beside the calling thread, which shows the progress.
class WatchedReader {
  public:
    WatchedReader(JournalReader& reader, ProgressWindow& window)
        : reader_(reader), window_(window) {}

    std::optional<JournalRecord> Next() {
        std::optional<JournalRecord> record;
        const auto read = [&](const PieceWatch& watch) {
            record = reader_.Next(JournalReader::Samples::kLoad, watch);
            watch(reader_.ShareRead());
        };
        cancelled_ = !DoWatchedBeside(window_, read);
        return cancelled_ ? std::nullopt : std::move(record);
    }
    void Cancel() { cancelled_ = true; }
    bool WasCancelled() const { return cancelled_; }

  private:
    JournalReader& reader_;
    ProgressWindow& window_;
    bool cancelled_ = false;
};

// Of the records behind the first.
void ReplayRest(JournalReader& reader, WatchedReader& watched, Replayer& replayer, Replay& replay) {
    for (;;) {
        replay.goodBytes = reader.GoodBytes();
        replay.recordCount = reader.RecordCount();
        std::optional<JournalRecord> record = watched.Next();
        if (!record && (reader.IsWhole() || watched.WasCancelled())) return;
        if (!record && reader.LacksMemory()) return void(replay.word = kEndsForMemory);
        if (!record || std::holds_alternative<BaseRecord>(*record))
            return void(replay.word = kEndsEarly);
        replayer.samples = reader.TakeSamples();
        const Outcome replayed = std::visit(replayer, *record);
        if (replayed.IsCancelled()) return watched.Cancel();
        if (!replayed) return void(replay.word = kEndsEarly);
    }
}

}  // namespace

Result<Replay> ReplayInto(CSoundDoc& document, const fs::path& documentFolder) {
    JournalReader reader;
    if (!reader.Open(documentFolder / kJournalName)) return Failed(kUnreadable);
    const auto window = document.Services().progress.CreateProgress("Progress Recovery");
    WatchedReader watched(reader, *window);
    std::optional<JournalRecord> record = watched.Next();
    if (watched.WasCancelled()) return Cancelled();
    if (!record || !std::holds_alternative<BaseRecord>(*record))
        return Failed(reader.LacksMemory() ? failure::kMemory : kUnreadable);
    const bool savesUndo = document.Options().saveUndo != 0;
    document.SetSavesUndo(true);
    Replayer replayer(document, documentFolder);
    replayer.samples = reader.TakeSamples();
    if (Outcome restored = std::visit(replayer, *record); !restored) return restored;
    Replay replay;
    ReplayRest(reader, watched, replayer, replay);
    document.SetSavesUndo(savesUndo);
    if (watched.WasCancelled()) return Cancelled();
    replay.undoable = replayer.undoable;
    replay.redoable = replayer.redoable;
    document.SetModified(true);
    return replay;
}

Outcome ReplayTake(CSoundDoc& document, const fs::path& documentFolder) {
    const std::optional<TakeFacts> facts = LookAtTake(documentFolder / kTakeName);
    if (!facts) return Done();
    const Sound& sound = document.Sound();
    if (facts->format != sound.GetFormat()) return Failed("The recording has another format.");
    Result<SoundBuffer> samples = ReadTake(documentFolder / kTakeName, *facts);
    if (!samples) return samples.Ended();
    return document.ApplyRecord("Copy Sample", {.reach = EditReach::kFrames,
                                                .startByte = sound.GetDataSize(),
                                                .bytesThere = 0,
                                                .bytesKept = facts->soundBytes,
                                                .samples = *std::move(samples),
                                                .format = sound.GetFormat(),
                                                .markers = sound.Markers()});
}

}  // namespace sonavel::recovery
