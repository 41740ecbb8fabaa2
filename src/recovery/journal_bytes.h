// How a record lies in a journal: a head of fixed length with the record's number, its lengths and
// a checksum over all of it, then the record, then its samples.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/file_descriptor.h"
#include "platform/piece_watch.h"
#include "recovery/journal_record.h"
#include "sound/sound_buffer.h"

namespace sonavel::recovery {

inline constexpr std::size_t kHeadBytes = 32;
using RecordHead = std::array<std::uint8_t, kHeadBytes>;

// `number` counts the records of the journal from 0.
RecordHead MakeHead(std::uint32_t number, std::uint32_t type, std::span<const std::uint8_t> record,
                    std::span<const std::uint8_t> samples);

// The first name in a journal whose beginning is damaged, looked for wherever a record may begin in
// the first and the last megabyte.
std::optional<NameRecord> FindNameRecord(const std::filesystem::path& path);

// Reads a journal's records in their order. The file is hostile: lengths are held against what is
// really there before memory is taken for them.
class JournalReader {
  public:
    enum class Samples { kLoad, kCheckOnly };

    bool Open(const std::filesystem::path& path);
    // Nothing at the end, and at the first record that is torn, false or too big for the memory;
    // IsWhole() then says which. The watch is told the share of the journal that is read; a record
    // at which it stops is not read.
    std::optional<JournalRecord> Next(Samples samples, const PieceWatch& watch = Unwatched);
    // Those of the record before, with kLoad; to be taken once.
    SoundBuffer TakeSamples() { return std::move(samples_); }
    // Whether nothing stands behind the records that were read.
    bool IsWhole() const { return goodBytes_ == fileBytes_; }
    bool LacksMemory() const { return lacksMemory_; }
    // Of the journal, also within a record; 0 to 1.
    double ShareRead() const {
        return fileBytes_ > 0 ? static_cast<double>(position_) / static_cast<double>(fileBytes_)
                              : 0;
    }
    // Up to the end of the last good record, and their count.
    std::uint64_t GoodBytes() const { return goodBytes_; }
    std::uint32_t RecordCount() const { return number_; }

  private:
    struct Lengths {
        std::uint32_t type = 0;
        std::uint32_t recordBytes = 0;
        std::uint64_t sampleBytes = 0;
        std::uint32_t checksum = 0;
    };

    std::optional<Lengths> ReadHead(RecordHead& head);
    bool Read(std::span<std::uint8_t> to);
    bool ReadSamples(std::uint64_t bytes, Samples samples, const PieceWatch& watch,
                     std::uint32_t& checksum);
    std::optional<JournalRecord> ReadBody(const Lengths& lengths, Samples samples,
                                          const PieceWatch& watch, std::uint32_t checksum);

    FileDescriptor file_;
    std::uint64_t fileBytes_ = 0;
    std::uint64_t position_ = 0;
    std::uint64_t goodBytes_ = 0;
    std::uint32_t number_ = 0;
    bool lacksMemory_ = false;
    std::vector<std::uint8_t> record_;
    SoundBuffer samples_;
};

}  // namespace sonavel::recovery
