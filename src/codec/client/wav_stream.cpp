#include "codec/client/wav_stream.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "codec/wire.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::size_t kLeastFormatBytes = 16;
constexpr std::size_t kExtensibleBytes = 40;
constexpr std::uint32_t kMostChunkBytes = 1u << 20;  // of chunks before the sound
constexpr int kMostChunks = 64;
constexpr unsigned kPcmTag = 1;
constexpr unsigned kFloatTag = 3;
constexpr unsigned kExtensibleTag = 0xFFFE;

bool Is(const std::uint8_t* bytes, std::string_view id) {
    return std::equal(id.begin(), id.end(), bytes);
}

std::optional<FrameSamples> SamplesOf(unsigned tag, unsigned bits) {
    if (tag == kPcmTag && bits == 8) return FrameSamples::kUnsigned8;
    if (tag == kPcmTag && bits == 16) return FrameSamples::kSigned16;
    if (tag == kFloatTag && bits == 32) return FrameSamples::kFloat32;
    return std::nullopt;
}

std::optional<WavStreamHead> ParseFormat(std::span<const std::uint8_t> chunk) {
    if (chunk.size() < kLeastFormatBytes) return std::nullopt;
    WavStreamHead head;
    unsigned tag = LoadLittle16(chunk.data());
    head.channels = LoadLittle16(chunk.data() + 2);
    head.rate = LoadLittle32(chunk.data() + 4);
    const unsigned bits = LoadLittle16(chunk.data() + 14);
    if (tag == kExtensibleTag && chunk.size() >= kExtensibleBytes) {
        head.channelMask = LoadLittle32(chunk.data() + 20);
        tag = LoadLittle16(chunk.data() + 24);
    }
    const auto samples = SamplesOf(tag, bits);
    const bool isGood = samples && head.channels > 0 && head.channels <= wire::kMostChannels &&
                        head.rate > 0 && head.rate <= wire::kMostRate;
    if (!isGood) return std::nullopt;
    head.samples = *samples;
    return head;
}

}  // namespace

std::optional<WavStreamHead> ReadWavStreamHead(const StreamRead& read) {
    std::array<std::uint8_t, 12> riff;
    if (!read(riff) || !Is(riff.data(), "RIFF") || !Is(riff.data() + 8, "WAVE"))
        return std::nullopt;
    std::optional<WavStreamHead> head;
    for (int chunk = 0; chunk < kMostChunks; ++chunk) {
        std::array<std::uint8_t, 8> start;
        if (!read(start)) return std::nullopt;
        if (Is(start.data(), "data")) return head;
        const std::uint32_t size = LoadLittle32(start.data() + 4);
        if (size > kMostChunkBytes) return std::nullopt;
        std::vector<std::uint8_t> content(size + size % 2);
        if (!read(content)) return std::nullopt;
        if (Is(start.data(), "fmt ")) head = ParseFormat(content);
    }
    return std::nullopt;
}

}  // namespace sonavel
