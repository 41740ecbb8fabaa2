#include "view/draw/block_extremes.h"

#include <algorithm>

namespace sonavel {
namespace {

// Plain reductions, which the compiler vectorises, unlike std::max_element.
SampleExtremes ExtremesOfBlocks(std::span<const std::int32_t> maxima,
                                std::span<const std::int32_t> minima) {
    std::int32_t maximum = maxima[0];
    std::int32_t minimum = minima[0];
    for (const std::int32_t value : maxima) maximum = std::max(maximum, value);
    for (const std::int32_t value : minima) minimum = std::min(minimum, value);
    return {maximum, minimum};
}

}  // namespace

void BlockExtremes::Rebuild(const Sound& wave, std::int64_t firstChangedFrame) {
    ++revision_;
    changedFrom_ = kNothing;
    const unsigned channels = std::clamp(wave.GetChannels(), 1u, 2u);
    if (channels != channels_ || wave.GetBits() != bits_) firstChangedFrame = 0;
    channels_ = channels;
    bits_ = wave.GetBits();
    const std::int64_t oldCount = static_cast<std::int64_t>(blockCount_);
    const std::int64_t count = (wave.GetFrameCount() + kFramesPerBlock - 1) / kFramesPerBlock;
    Resize(static_cast<std::size_t>(count));
    // What was or is now the last block may have been partial before.
    const std::int64_t first =
        std::min({firstChangedFrame / kFramesPerBlock, oldCount - 1, count - 1});
    const auto firstBlock = static_cast<std::size_t>(std::max<std::int64_t>(first, 0));
    VisitSampleType(bits_, [&](auto type) {
        RebuildFrom<decltype(type)>(SamplesOf<decltype(type)>(wave.Bytes()), firstBlock);
    });
}

void BlockExtremes::NoteChange(std::int64_t firstChangedFrame) {
    changedFrom_ = std::min(changedFrom_, firstChangedFrame);
}

void BlockExtremes::Refresh(const Sound& wave) {
    if (changedFrom_ != kNothing) Rebuild(wave, changedFrom_);
}

void BlockExtremes::Resize(std::size_t count) {
    blockCount_ = count;
    for (unsigned channel = 0; channel < blocks_.size(); ++channel) {
        const std::size_t size = channel < channels_ ? count : 0;
        blocks_[channel].maxima.resize(size);
        blocks_[channel].minima.resize(size);
    }
}

template <class Type>
void BlockExtremes::RebuildFrom(std::span<const typename Type::Stored> samples,
                                std::size_t firstBlock) {
    const std::size_t perBlock = kFramesPerBlock * channels_;
    // A last frame that is there in part is no frame.
    const std::size_t total = samples.size() / channels_ * channels_;
    for (std::size_t block = firstBlock; block < blockCount_; ++block) {
        const std::size_t start = block * perBlock;
        const auto stored =
            ScanStored(samples.subspan(start, std::min(perBlock, total - start)), channels_);
        for (unsigned channel = 0; channel < channels_; ++channel) {
            const SampleExtremes extremes = LevelsOf<Type>(stored, channel);
            blocks_[channel].maxima[block] = extremes.maximum;
            blocks_[channel].minima[block] = extremes.minimum;
        }
    }
}

std::span<const std::int32_t> BlockExtremes::Maxima(unsigned channel) const {
    return channel < channels_ ? blocks_[channel].maxima : std::span<const std::int32_t>{};
}

std::span<const std::int32_t> BlockExtremes::Minima(unsigned channel) const {
    return channel < channels_ ? blocks_[channel].minima : std::span<const std::int32_t>{};
}

SampleExtremes BlockExtremes::Over(unsigned channel, std::int64_t startFrame,
                                   std::int64_t endFrame) const {
    const auto maxima = Maxima(channel);
    const auto minima = Minima(channel);
    // The last visited frame decides, not the last frame: a column does not see the block in which
    // it merely ends.
    const std::int64_t steps = (endFrame - 1 - startFrame) / kFramesPerBlock;
    const std::int64_t lastBlock = startFrame / kFramesPerBlock + steps;
    if (maxima.empty()) return {};
    // Behind the end the values read last stand on, on purpose: what is drawn there repeats them.
    const auto end = static_cast<std::int64_t>(maxima.size()) - 1;
    const std::int64_t first = std::clamp<std::int64_t>(startFrame / kFramesPerBlock, 0, end);
    const std::int64_t last = std::clamp<std::int64_t>(lastBlock, first, end);
    const std::int64_t count = last - first + 1;
    return ExtremesOfBlocks(maxima.subspan(first, count), minima.subspan(first, count));
}

}  // namespace sonavel
