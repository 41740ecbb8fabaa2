#include "exchange/random_bytes.h"

#include <algorithm>

namespace sonavel {

std::vector<std::uint8_t> RandomBytes::Part(std::uint64_t offset, std::uint64_t bytes) {
    const std::uint64_t there = offset < Size() ? Size() - offset : 0;
    std::vector<std::uint8_t> part(static_cast<std::size_t>(std::min(bytes, there)));
    part.resize(ReadAt(offset, part));
    return part;
}

std::size_t BytesInMemory::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) {
    if (offset >= bytes_.size()) return 0;
    const auto from = bytes_.subspan(static_cast<std::size_t>(offset));
    const std::size_t count = std::min(from.size(), to.size());
    std::copy_n(from.begin(), count, to.begin());
    return count;
}

}  // namespace sonavel
