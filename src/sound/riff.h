// Navigation in RIFF files: finding chunks, going into them and leaving them.
#pragma once

#include <cstdint>
#include <optional>

#include "sound/byte_source.h"
#include "sound/four_cc.h"

namespace sonavel {

struct RiffChunk {
    FourCc id = 0;
    std::uint32_t sizeBytes = 0;  // as the header says, whether or not so much is there
    FourCc formType = 0;          // of "RIFF" and "LIST" chunks
    std::uint64_t dataOffset = 0;

    std::uint64_t End() const { return dataOffset + sizeBytes; }
    // Where the next chunk begins: a chunk of odd size is followed by a pad byte.
    std::uint64_t EndWithPad() const { return End() + (sizeBytes & 1); }
};

// Every search runs forward from the current position. Sizes come from the file and may lie; they
// are only followed, never allocated, and a search ends at the end of what is really there.
class RiffReader {
  public:
    explicit RiffReader(FileSource& source) : cursor_(source) {}

    // Finds the next "RIFF" or "LIST" chunk of a form type and goes behind the type. Without a
    // parent the search ends only at the end of the source.
    std::optional<RiffChunk> DescendForm(FourCc container, FourCc formType,
                                         const RiffChunk* parent = nullptr);
    // Finds the next chunk of that id that begins inside the parent, and goes to its data.
    std::optional<RiffChunk> Descend(FourCc id, const RiffChunk& parent);
    // Goes behind the chunk and its pad byte.
    void Ascend(const RiffChunk& chunk) { cursor_.Seek(chunk.EndWithPad()); }

    ByteCursor& Cursor() { return cursor_; }

  private:
    std::optional<RiffChunk> ReadHeader();
    template <class Matches>
    std::optional<RiffChunk> Search(const RiffChunk* parent, Matches matches);

    ByteCursor cursor_;
};

}  // namespace sonavel
