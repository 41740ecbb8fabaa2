// The records of a document's unsaved work: what it started from, and each change since, in the
// order in which they came. All of them are plain values with a form in bytes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "document/edit_record.h"
#include "document/file_origin.h"
#include "document/import_origin.h"
#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"
#include "sound/marker_list.h"
#include "sound/pcm_format.h"

namespace sonavel::recovery {

// The first record. kSound: the sound itself, whose samples follow.
struct BaseRecord {
    enum class Kind : std::uint32_t { kFile, kSound };

    Kind kind = Kind::kSound;
    std::optional<FileOrigin> file{};  // kFile
    PcmFormat format{};                // these three of kSound
    MarkerList markers{};
    std::uint64_t sampleBytes = 0;
    std::uint32_t frames = 0;  // of the sound
};

struct NameRecord {
    std::filesystem::path path{};  // empty while untitled
    std::string title{};
    std::optional<FileIdentity> identity{};  // of the file at the path, when it was left last
};

// A change of the sound, as EditRecord has it (document/edit_record.h), seen from before it: the
// samples that follow take the place of `bytesBefore` bytes from `startByte` on.
struct ChangeRecord {
    enum class Step : std::uint32_t { kNone, kStored };

    EditReach reach = EditReach::kFrames;
    Step step = Step::kStored;
    std::string name{};  // of the step
    std::uint64_t startByte = 0;
    std::uint64_t bytesBefore = 0;
    std::uint64_t sampleBytes = 0;
    PcmFormat format{};             // behind the change
    std::uint32_t framesAfter = 0;  // of the sound
    MarkerList markers{};           // behind the change
};

// Undo or Redo.
struct StepRecord {
    enum class Way : std::uint32_t { kUndo, kRedo };

    Way way = Way::kUndo;
    PcmFormat format{};  // behind it
    std::uint32_t framesAfter = 0;
};

struct TagsRecord {
    std::vector<SoundTag> tags;
};

// Behind a base that is a sound, of a document that was imported.
struct OriginRecord {
    ImportOrigin origin{};
    std::vector<ForeignChunk> chunks{};
};

using JournalRecord =
    std::variant<BaseRecord, NameRecord, ChangeRecord, StepRecord, TagsRecord, OriginRecord>;

// Without the samples that follow.
std::vector<std::uint8_t> PackRecord(const JournalRecord& record);
// The type, which PackRecord leaves to the header around it.
std::uint32_t TypeOf(const JournalRecord& record);
// Nothing when these bytes are no record of that type that makes sense.
std::optional<JournalRecord> ParseRecord(std::uint32_t type, std::span<const std::uint8_t> bytes);
// How many bytes of samples have to follow.
std::uint64_t SampleBytesOf(const JournalRecord& record);

}  // namespace sonavel::recovery
