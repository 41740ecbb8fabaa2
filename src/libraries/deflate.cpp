#include "libraries/deflate.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <new>

namespace sonavel {

std::optional<std::vector<std::uint8_t>> Deflated(std::span<const std::uint8_t> bytes) try {
    constexpr int kLevel = 6;
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::vector<std::uint8_t> stream(size);
    if (compress2(stream.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), kLevel) !=
        Z_OK)
        return std::nullopt;
    stream.resize(size);
    return stream;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

std::uint32_t CheckSum(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kAtOnce = std::size_t{1} << 30;
    uLong sum = crc32(0, nullptr, 0);
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), kAtOnce));
        sum = crc32(sum, part.data(), static_cast<uInt>(part.size()));
        bytes = bytes.subspan(part.size());
    }
    return static_cast<std::uint32_t>(sum);
}

}  // namespace sonavel
