// Builders of sound files, sound or broken.
#pragma once

#include <cstdint>
#include <string_view>

#include "sound/byte_order.h"
#include "support/test_files.h"

namespace sonavel {

inline FileBytes operator+(FileBytes left, const FileBytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

// A chunk of a RIFF file with the size of its content and, where that is odd, a pad byte.
inline FileBytes RiffChunkBytes(std::string_view id, const FileBytes& content) {
    FileBytes bytes =
        ByteBuilder().Text(id).Little32(static_cast<std::uint32_t>(content.size())).Bytes() +
        content;
    if (content.size() % 2 != 0) bytes.push_back(0);
    return bytes;
}

struct WavParts {
    unsigned tag = 1;
    unsigned channels = 1;
    std::uint32_t rate = 8000;
    unsigned bits = 16;
    unsigned blockAlign = 2;
    FileBytes beforeData{};  // whole chunks
    FileBytes data{};
    FileBytes behindData{};
};

inline FileBytes WavFormatBytes(const WavParts& parts) {
    return ByteBuilder()
        .Little16(parts.tag)
        .Little16(parts.channels)
        .Little32(parts.rate)
        .Little32(parts.rate * parts.blockAlign)
        .Little16(parts.blockAlign)
        .Little16(parts.bits)
        .Bytes();
}

inline FileBytes RiffBytes(const FileBytes& content) {
    return RiffChunkBytes("RIFF", BytesOf("WAVE") + content);
}

// A file as other programs write it, with pad bytes and a RIFF size that covers it all.
inline FileBytes WavBytes(const WavParts& parts) {
    return RiffBytes(RiffChunkBytes("fmt ", WavFormatBytes(parts)) + parts.beforeData +
                     RiffChunkBytes("data", parts.data) + parts.behindData);
}

struct AiffParts {
    unsigned channels = 1;
    std::uint32_t frames = 0;
    unsigned bits = 16;
    FileBytes rate = {0x40, 0x0B, 0xFA, 0, 0, 0, 0, 0, 0, 0};  // 8000
    FileBytes beforeCommon{};
    FileBytes data{};
};

inline FileBytes AiffCommonBytes(const AiffParts& parts) {
    return ByteBuilder()
               .Text("COMM")
               .Big32(18)
               .Big16(parts.channels)
               .Big32(parts.frames)
               .Big16(parts.bits)
               .Bytes() +
           parts.rate;
}

inline FileBytes AiffFormBytes(const FileBytes& chunks) {
    return ByteBuilder()
               .Text("FORM")
               .Big32(static_cast<std::uint32_t>(chunks.size() + 4))
               .Text("AIFF")
               .Bytes() +
           chunks;
}

inline FileBytes AiffBytes(const AiffParts& parts) {
    const auto soundSize = static_cast<std::uint32_t>(parts.data.size() + 8);
    return AiffFormBytes(parts.beforeCommon + AiffCommonBytes(parts) +
                         ByteBuilder().Text("SSND").Big32(soundSize).Big32(0).Big32(0).Bytes() +
                         parts.data);
}

struct AuParts {
    std::uint32_t offset = 28;
    std::uint32_t size = 0xFFFFFFFF;
    std::uint32_t encoding = 3;
    std::uint32_t rate = 8000;
    std::uint32_t channels = 1;
    FileBytes behindHeader;  // from byte 24 on: the annotation, then the data
};

inline FileBytes AuBytes(const AuParts& parts) {
    return ByteBuilder()
               .Text(".snd")
               .Big32(parts.offset)
               .Big32(parts.size)
               .Big32(parts.encoding)
               .Big32(parts.rate)
               .Big32(parts.channels)
               .Bytes() +
           parts.behindHeader;
}

}  // namespace sonavel
