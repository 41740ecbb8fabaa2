#include "sound/sample_transfer.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace sonavel {
namespace {

// Small enough to stay in the processor's cache between the two passes; even, so that no word is
// cut.
constexpr std::size_t kPieceBytes = std::size_t{1} << 16;

}  // namespace

void SwapBytePairs(std::span<std::uint8_t> bytes) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const std::uint8_t first = bytes[i];
        bytes[i] = bytes[i + 1];
        bytes[i + 1] = first;
    }
    if (bytes.size() % 2 != 0) bytes.back() = 0;
}

void AddHalfRange(std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) byte ^= 0x80;
}

void SubtractFromHalfRange(std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(128 - byte);
}

std::size_t ReadTransformed(ByteCursor& cursor, std::span<std::uint8_t> to,
                            ByteTransform transform) {
    std::size_t total = 0;
    for (std::size_t done = 0; done < to.size(); done += kPieceBytes) {
        const auto piece = to.subspan(done, std::min(kPieceBytes, to.size() - done));
        const std::size_t got = cursor.Read(piece);
        std::memset(piece.data() + got, 0, piece.size() - got);
        transform(piece);
        total += got;
    }
    return total;
}

bool WriteTransformed(ReplacingFile& file, std::span<const std::uint8_t> bytes,
                      ByteTransform transform) {
    std::array<std::uint8_t, kPieceBytes> converted;
    for (std::size_t done = 0; done < bytes.size(); done += kPieceBytes) {
        const auto piece = bytes.subspan(done, std::min(kPieceBytes, bytes.size() - done));
        const std::span<std::uint8_t> target(converted.data(), piece.size());
        std::ranges::copy(piece, target.begin());
        transform(target);
        if (!file.Write(target)) return false;
    }
    return true;
}

}  // namespace sonavel
