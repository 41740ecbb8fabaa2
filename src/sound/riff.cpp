#include "sound/riff.h"

#include "sound/byte_order.h"

namespace sonavel {
namespace {

bool BeginsInside(std::uint64_t position, const RiffChunk* parent) {
    return !parent || (position >= parent->dataOffset && position < parent->End());
}

}  // namespace

std::optional<RiffChunk> RiffReader::ReadHeader() {
    std::uint8_t header[8];
    if (!cursor_.ReadAll(header)) return std::nullopt;
    RiffChunk chunk;
    chunk.id = LoadLittle32(header);
    chunk.sizeBytes = LoadLittle32(header + 4);
    chunk.dataOffset = cursor_.Position();
    if (chunk.id != kRiffChunk && chunk.id != kListChunk) return chunk;
    std::uint8_t formType[4];
    if (cursor_.ReadAll(formType)) chunk.formType = LoadLittle32(formType);
    return chunk;
}

template <class Matches>
std::optional<RiffChunk> RiffReader::Search(const RiffChunk* parent, Matches matches) {
    while (BeginsInside(cursor_.Position(), parent)) {
        const std::optional<RiffChunk> chunk = ReadHeader();
        // Zeros are no chunks, and there may be gigabytes of them.
        if (!chunk || chunk->id == 0) return std::nullopt;
        if (matches(*chunk)) return chunk;
        Ascend(*chunk);
    }
    return std::nullopt;
}

std::optional<RiffChunk> RiffReader::DescendForm(FourCc container, FourCc formType,
                                                 const RiffChunk* parent) {
    return Search(parent, [=](const RiffChunk& chunk) {
        return chunk.id == container && chunk.formType == formType;
    });
}

std::optional<RiffChunk> RiffReader::Descend(FourCc id, const RiffChunk& parent) {
    return Search(&parent, [=](const RiffChunk& chunk) { return chunk.id == id; });
}

}  // namespace sonavel
