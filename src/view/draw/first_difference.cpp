#include "view/draw/first_difference.h"

#include <algorithm>
#include <cstring>

namespace sonavel {
namespace {

// Large enough for memcmp to run at the speed of memory, small enough to search byte by byte.
constexpr std::size_t kChunkBytes = 65536;

std::size_t FirstDifferentByte(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t start = 0; start < common; start += kChunkBytes) {
        const std::size_t length = std::min(kChunkBytes, common - start);
        if (std::memcmp(a.data() + start, b.data() + start, length) == 0) continue;
        const auto chunk = a.subspan(start, length);
        const auto place = std::mismatch(chunk.begin(), chunk.end(), b.begin() + start).first;
        return start + static_cast<std::size_t>(place - chunk.begin());
    }
    return common;
}

}  // namespace

std::uint32_t FirstDifferentFrame(const MarkerList& before, const MarkerList& after) {
    const std::vector<Marker>& old = before.All();
    const std::vector<Marker>& now = after.All();
    const auto [was, is] = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const bool removed = now.size() < old.size();
    if (removed && was != old.end()) return was->position;
    return is != now.end() ? is->position : 0;
}

std::uint32_t FirstDifferentFrame(const Sound& before, const Sound& after) {
    if (!(before.GetFormat() == after.GetFormat()) || after.GetBlockAlign() == 0) return 0;
    return static_cast<std::uint32_t>(FirstDifferentByte(before.Bytes(), after.Bytes()) /
                                      after.GetBlockAlign());
}

}  // namespace sonavel
