#include "codec/main/sample_reader.h"

#include "codec/float_scrub.h"

namespace sonavel {

SampleReader::SampleReader(SNDFILE* file, const SoundFileDescription& description)
    : file_(file),
      samples_(description.samples),
      depth_(description.depth),
      channels_(description.channels),
      frameBytes_(description.BytesPerFrame()) {}

SampleReader::Got SampleReader::Read(std::span<std::uint8_t> to) {
    Got got;
    const sf_count_t frames = ReadFrames(to, to.size() / frameBytes_);
    got.hadError = sf_error(file_) != SF_ERR_NO_ERROR;
    got.frames = frames > 0 ? static_cast<std::size_t>(frames) : 0;
    if (samples_ == FrameSamples::kFloat32 && depth_ != FileDepth::kInteger)
        got.silenced =
            SilenceNonFinite({reinterpret_cast<float*>(to.data()), got.frames * channels_});
    return got;
}

sf_count_t SampleReader::ReadFrames(std::span<std::uint8_t> to, std::size_t frames) {
    const auto wanted = static_cast<sf_count_t>(frames);
    switch (samples_) {
        case FrameSamples::kUnsigned8:
            return ReadBytes(to, frames);
        case FrameSamples::kSigned16:
            return sf_readf_short(file_, reinterpret_cast<short*>(to.data()), wanted);
        case FrameSamples::kFloat32:
            break;
    }
    return sf_readf_float(file_, reinterpret_cast<float*>(to.data()), wanted);
}

// The library knows no bytes, but 16-bit samples whose high byte they are.
sf_count_t SampleReader::ReadBytes(std::span<std::uint8_t> to, std::size_t frames) {
    words_.resize(frames * channels_);
    const sf_count_t got = sf_readf_short(file_, words_.data(), static_cast<sf_count_t>(frames));
    const std::size_t samples = got > 0 ? static_cast<std::size_t>(got) * channels_ : 0;
    for (std::size_t i = 0; i < samples; ++i)
        to[i] = static_cast<std::uint8_t>((words_[i] >> 8) + 128);
    return got;
}

}  // namespace sonavel
