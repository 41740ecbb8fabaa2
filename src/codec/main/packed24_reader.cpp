#include "codec/main/packed24_reader.h"

#include <bit>
#include <cstring>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

static_assert(std::endian::native == std::endian::little,
              "samples are used as they lie in the file");

constexpr std::size_t kSampleBytes = 3;

// Reads each sample with the byte before it, which becomes the lowest of 32 bits and is masked
// away; there must be one before the first.
SONAVEL_VECTOR_CLONES void Unpack(const std::uint8_t* packed, std::size_t samples, float* floats) {
    constexpr std::int32_t kSampleBits = -256;
    constexpr float kUnit = 0x1p-31f;
    for (std::size_t i = 0; i < samples; ++i) {
        std::int32_t value;
        std::memcpy(&value, packed + i * kSampleBytes - 1, sizeof value);
        floats[i] = static_cast<float>(value & kSampleBits) * kUnit;
    }
}

}  // namespace

bool Packed24Reader::CanRead(const LibraryFile& file) {
    const int major = file.info.format & SF_FORMAT_TYPEMASK;
    const bool isPlain = major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX ||
                         major == SF_FORMAT_RF64 || major == SF_FORMAT_W64;
    // A file of either byte order may have the name of WAV; these two are always little-endian.
    const int order = file.info.format & SF_FORMAT_ENDMASK;
    return isPlain && (file.info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_24 &&
           order != SF_ENDIAN_BIG;
}

Packed24Reader::Packed24Reader(SNDFILE* file, std::size_t channels)
    : file_(file),
      channels_(channels),
      framesPerPiece_(WholeFrames(kPieceBytes, channels * sizeof(float)) /
                      (channels * sizeof(float))),
      packed_(framesPerPiece_ * channels * kSampleBytes + 1),
      pieces_(framesPerPiece_ * channels * sizeof(float)) {}

std::span<const std::uint8_t> Packed24Reader::Next() {
    const auto wanted = static_cast<sf_count_t>(framesPerPiece_ * channels_ * kSampleBytes);
    const sf_count_t got = sf_read_raw(file_, packed_.data() + 1, wanted);
    hadError_ = hadError_ || sf_error(file_) != SF_ERR_NO_ERROR;
    const std::size_t frames =
        got <= 0 ? 0 : static_cast<std::size_t>(got) / (channels_ * kSampleBytes);
    frames_ += frames;
    const std::span<std::uint8_t> piece = pieces_.Next();
    Unpack(packed_.data() + 1, frames * channels_, reinterpret_cast<float*>(piece.data()));
    return piece.first(frames * channels_ * sizeof(float));
}

}  // namespace sonavel
