#include "recovery/crc32.h"

#include <array>

#include "sound/byte_order.h"

namespace sonavel::recovery {
namespace {

constexpr std::uint32_t kReflectedPolynomial = 0xEDB88320;
constexpr std::size_t kStride = 8;

using Tables = std::array<std::array<std::uint32_t, 256>, kStride>;

// Table k tells what a byte becomes when k more bytes of zero follow it.
constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) != 0 ? kReflectedPolynomial : 0);
        tables[0][byte] = value;
    }
    for (std::size_t k = 1; k < kStride; ++k)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[k - 1][byte];
            tables[k][byte] = (before >> 8) ^ tables[0][before & 0xFF];
        }
    return tables;
}

constexpr Tables kTables = MakeTables();

std::uint32_t TakeEight(const std::uint8_t* bytes, std::uint32_t value) {
    const std::uint32_t low = LoadLittle32(bytes) ^ value;
    const std::uint32_t high = LoadLittle32(bytes + 4);
    return kTables[7][low & 0xFF] ^ kTables[6][low >> 8 & 0xFF] ^ kTables[5][low >> 16 & 0xFF] ^
           kTables[4][low >> 24] ^ kTables[3][high & 0xFF] ^ kTables[2][high >> 8 & 0xFF] ^
           kTables[1][high >> 16 & 0xFF] ^ kTables[0][high >> 24];
}

}  // namespace

std::uint32_t Crc32(std::span<const std::uint8_t> bytes, std::uint32_t before) {
    std::uint32_t value = ~before;
    for (; bytes.size() >= kStride; bytes = bytes.subspan(kStride))
        value = TakeEight(bytes.data(), value);
    for (const std::uint8_t byte : bytes) value = (value >> 8) ^ kTables[0][(value ^ byte) & 0xFF];
    return ~value;
}

}  // namespace sonavel::recovery
