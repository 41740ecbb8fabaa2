#include <algorithm>

#include "exchange/chunk_map.h"

namespace sonavel {

std::uint32_t ChunkFields::U16(std::size_t at) const {
    const std::uint32_t first = U8(at), second = U8(at + 1);
    return order_ == ByteOrder::kBig ? first << 8 | second : second << 8 | first;
}

std::uint32_t ChunkFields::U32(std::size_t at) const {
    const std::uint32_t first = U16(at), second = U16(at + 2);
    return order_ == ByteOrder::kBig ? first << 16 | second : second << 16 | first;
}

std::uint64_t ChunkFields::U64(std::size_t at) const {
    const std::uint64_t first = U32(at), second = U32(at + 4);
    return order_ == ByteOrder::kBig ? first << 32 | second : second << 32 | first;
}

FourCc ChunkFields::Id(std::size_t at) const {
    return U8(at) | U8(at + 1) << 8 | U8(at + 2) << 16 | U8(at + 3) << 24;
}

std::span<const std::uint8_t> ChunkFields::Bytes(std::size_t at, std::size_t count) const {
    if (at >= bytes_.size()) return {};
    return bytes_.subspan(at, std::min(count, bytes_.size() - at));
}

}  // namespace sonavel
