#include "sound/wav_format.h"

#include <algorithm>
#include <array>

#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::uint16_t kExtensibleFormatTag = 0xFFFE;
constexpr std::size_t kSubFormatOffset = 24;
constexpr std::array<std::uint8_t, 16> kPcmSubFormat = {0x01, 0, 0, 0,    0, 0,    0x10, 0,
                                                        0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

bool HoldsPcm(std::span<const std::uint8_t> chunk) {
    return chunk.size() >= kWavExtensibleFormatBytes &&
           std::ranges::equal(chunk.subspan(kSubFormatOffset, kPcmSubFormat.size()), kPcmSubFormat);
}

PcmFormat WithDerivedFields(PcmFormat format) {
    if (format.blockAlign == 0)
        format.blockAlign = static_cast<std::uint16_t>(format.bitsPerSample / 8 * format.channels);
    if (format.averageBytesPerSecond == 0)
        format.averageBytesPerSecond = format.samplesPerSecond * format.blockAlign;
    return format;
}

}  // namespace

PcmFormat ParseWavFormat(std::span<const std::uint8_t> chunk) {
    PcmFormat format;
    format.formatTag = LoadLittle16(&chunk[0]);
    format.channels = LoadLittle16(&chunk[2]);
    format.samplesPerSecond = LoadLittle32(&chunk[4]);
    format.averageBytesPerSecond = LoadLittle32(&chunk[8]);
    format.blockAlign = LoadLittle16(&chunk[12]);
    if (chunk.size() < kWavPcmFormatBytes) return format;
    PcmFormat plain = format;
    plain.formatTag = kPcmFormatTag;
    plain.bitsPerSample = LoadLittle16(&chunk[14]);
    plain = WithDerivedFields(plain);
    if (format.formatTag == kPcmFormatTag) return plain;
    const bool wrapped = format.formatTag == kExtensibleFormatTag && HoldsPcm(chunk);
    return wrapped && IsEditable(plain) ? plain : format;
}

std::vector<std::uint8_t> BuildWavHeader(const PcmFormat& format, std::uint32_t dataBytes,
                                         std::uint32_t bytesBehindData) {
    ByteBuilder header;
    header.Text("RIFF").Little32(kWavHeaderBytes - 8 + dataBytes + bytesBehindData);
    header.Text("WAVEfmt ").Little32(kWavPcmFormatBytes);
    header.Little16(format.formatTag).Little16(format.channels);
    header.Little32(format.samplesPerSecond).Little32(format.averageBytesPerSecond);
    header.Little16(format.blockAlign).Little16(format.bitsPerSample);
    header.Text("data").Little32(dataBytes);
    return header.Bytes();
}

}  // namespace sonavel
