// Numbers and texts of a record as bytes, and back with every step checked.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sound/byte_order.h"

namespace sonavel::wire {

using Bytes = std::vector<std::uint8_t>;

class Packer {
  public:
    Packer& U32(std::uint32_t value) {
        builder_.Little32(value);
        return *this;
    }
    Packer& U64(std::uint64_t value) {
        return U32(static_cast<std::uint32_t>(value)).U32(static_cast<std::uint32_t>(value >> 32));
    }
    // A number that is cut at its limit goes with as much of the text.
    Packer& Text(std::string_view text, std::size_t mostBytes) {
        text = text.substr(0, mostBytes);
        U32(static_cast<std::uint32_t>(text.size()));
        builder_.Text(text);
        return *this;
    }
    const Bytes& Done() const { return builder_.Bytes(); }

  private:
    ByteBuilder builder_;
};

// Reads in the order of packing. Once something was not there, or beyond its limit, all that
// follows is 0 or empty and IsGood() is false.
class Parser {
  public:
    explicit Parser(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint32_t U32();
    std::uint32_t U32UpTo(std::uint32_t most);
    std::uint64_t U64();
    std::uint64_t U64UpTo(std::uint64_t most);
    std::string Text(std::size_t mostBytes);

    bool IsGood() const { return good_; }
    // Good, and nothing is left over.
    bool IsAtEnd() const { return good_ && bytes_.empty(); }

  private:
    std::span<const std::uint8_t> Take(std::size_t count);

    std::span<const std::uint8_t> bytes_;
    bool good_ = true;
};

}  // namespace sonavel::wire
