// Numbers of files as bytes, in either byte order.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace sonavel {

inline std::uint16_t LoadLittle16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}
inline std::uint32_t LoadLittle32(const std::uint8_t* bytes) {
    return LoadLittle16(bytes) | std::uint32_t{LoadLittle16(bytes + 2)} << 16;
}
inline std::uint16_t LoadBig16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}
inline std::uint32_t LoadBig32(const std::uint8_t* bytes) {
    return std::uint32_t{LoadBig16(bytes)} << 16 | LoadBig16(bytes + 2);
}
inline std::uint64_t LoadBig64(const std::uint8_t* bytes) {
    return std::uint64_t{LoadBig32(bytes)} << 32 | LoadBig32(bytes + 4);
}

// Builds a block of bytes from its front to its end.
class ByteBuilder {
  public:
    ByteBuilder& Text(std::string_view text) {
        bytes_.insert(bytes_.end(), text.begin(), text.end());
        return *this;
    }
    ByteBuilder& Byte(unsigned value) {
        bytes_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    ByteBuilder& Little16(unsigned value) { return Byte(value).Byte(value >> 8); }
    ByteBuilder& Little32(std::uint32_t value) {
        return Little16(value & 0xFFFF).Little16(value >> 16);
    }
    ByteBuilder& Big16(unsigned value) { return Byte(value >> 8).Byte(value); }
    ByteBuilder& Big32(std::uint32_t value) { return Big16(value >> 16).Big16(value & 0xFFFF); }

    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace sonavel
