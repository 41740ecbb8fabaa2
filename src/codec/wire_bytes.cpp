#include "codec/wire_bytes.h"

namespace sonavel::wire {

std::span<const std::uint8_t> Parser::Take(std::size_t count) {
    good_ = good_ && count <= bytes_.size();
    if (!good_) return {};
    const auto taken = bytes_.first(count);
    bytes_ = bytes_.subspan(count);
    return taken;
}

std::uint32_t Parser::U32() {
    const auto bytes = Take(4);
    return good_ ? LoadLittle32(bytes.data()) : 0;
}

std::uint32_t Parser::U32UpTo(std::uint32_t most) {
    const std::uint32_t value = U32();
    good_ = good_ && value <= most;
    return good_ ? value : 0;
}

std::uint64_t Parser::U64() {
    const std::uint64_t low = U32();
    return low | std::uint64_t{U32()} << 32;
}

std::uint64_t Parser::U64UpTo(std::uint64_t most) {
    const std::uint64_t value = U64();
    good_ = good_ && value <= most;
    return good_ ? value : 0;
}

std::string Parser::Text(std::size_t mostBytes) {
    const std::uint32_t size = U32();
    good_ = good_ && size <= mostBytes;
    const auto bytes = Take(size);
    return good_ ? std::string(bytes.begin(), bytes.end()) : std::string();
}

}  // namespace sonavel::wire
