// Where the chunks of a RIFF WAVE, RF64, W64 or AIFF file lie, found by a walk that goes on where
// sizes lie, pad bytes are missing or the file ends early.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "exchange/file_remarks.h"
#include "exchange/random_bytes.h"
#include "sound/four_cc.h"

namespace sonavel {

enum class ChunkContainer : std::uint8_t { kNone, kRiff, kRifx, kRf64, kW64, kAiff };
enum class ByteOrder : std::uint8_t { kLittle, kBig };

struct ChunkPlace {
    FourCc id = 0;
    std::uint64_t dataOffset = 0;
    std::uint64_t sizeBytes = 0;    // what is there
    std::uint64_t statedBytes = 0;  // what the file says; less or more where it lies

    std::uint64_t End() const { return dataOffset + sizeBytes; }
};

struct ChunkMap {
    ChunkContainer container = ChunkContainer::kNone;  // kNone: none of these files, no chunks
    std::vector<ChunkPlace> chunks;                    // in the order of the file
    FileRemarks remarks;

    ByteOrder Order() const;
    // The first of that id.
    const ChunkPlace* Find(FourCc id) const;
};

inline constexpr std::size_t kMostChunks = 65536;

ChunkMap MapChunks(RandomBytes& bytes);

// Numbers of a chunk. What lies beyond its end reads as 0.
class ChunkFields {
  public:
    ChunkFields(std::span<const std::uint8_t> bytes, ByteOrder order)
        : bytes_(bytes), order_(order) {}

    std::size_t Size() const { return bytes_.size(); }
    std::uint32_t U8(std::size_t at) const { return at < bytes_.size() ? bytes_[at] : 0; }
    std::uint32_t U16(std::size_t at) const;
    std::uint32_t U32(std::size_t at) const;
    std::uint64_t U64(std::size_t at) const;
    FourCc Id(std::size_t at) const;
    // As many of `count` bytes from `at` on as there are.
    std::span<const std::uint8_t> Bytes(std::size_t at, std::size_t count) const;

  private:
    std::span<const std::uint8_t> bytes_;
    ByteOrder order_;
};

// The chunks inside a chunk that is in memory, from `at` on; salvaged like those of a file. The
// offsets count from its beginning. Remarks are added to `remarks`.
std::vector<ChunkPlace> MapInnerChunks(std::span<const std::uint8_t> bytes, std::size_t at,
                                       ByteOrder order, FileRemarks& remarks);

}  // namespace sonavel
