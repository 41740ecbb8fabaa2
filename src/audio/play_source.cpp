#include "audio/play_source.h"

#include <algorithm>
#include <cstring>

namespace sonavel {
namespace {

void Repeat(std::span<const std::uint8_t> sample, std::span<std::uint8_t> space) {
    std::size_t filled = 0;
    for (; filled < space.size(); filled += sample.size())
        std::memcpy(space.data() + filled, sample.data(),
                    std::min(sample.size(), space.size() - filled));
}

}  // namespace

void PlaySource::Start(ByteRange range, unsigned bytesPerSample) {
    position_ = range.start;
    end_ = range.end;
    bytesPerSample_ = std::max(bytesPerSample, 1u);
    skip_.reset();
}

std::optional<std::uint64_t> PlaySource::FillBlock(std::span<const std::uint8_t> sound,
                                                   std::span<std::uint8_t> block) {
    // Twice at most: a loop range that holds nothing to play must not go round for ever.
    for (int attempt = 0; attempt < 2; ++attempt) {
        const std::uint64_t blockStart = position_;
        LeaveOutSkipped();
        end_ = std::min<std::uint64_t>(end_, sound.size());
        if (position_ < end_) {
            CopyPadded(sound.first(end_), block);
            position_ += std::min<std::uint64_t>(block.size(), end_ - position_);
            return blockStart;
        }
        if (!looping_ || attempt > 0) break;
        position_ = loop_.start;
        end_ = loop_.end;
    }
    return std::nullopt;
}

// Intended oddity: playing goes on one sample past the end of what is left out, on the other
// channel of a stereo sound, and only a block that begins inside is moved; previews of a cut depend
// on it.
void PlaySource::LeaveOutSkipped() {
    if (!skip_ || position_ < skip_->start || position_ > skip_->end) return;
    const std::uint64_t samples = (skip_->end - position_) / bytesPerSample_ + 1;
    position_ += samples * bytesPerSample_;
}

void PlaySource::CopyPadded(std::span<const std::uint8_t> sound,
                            std::span<std::uint8_t> block) const {
    const std::size_t rest = sound.size() - position_;
    if (rest >= block.size()) {
        std::memcpy(block.data(), sound.data() + position_, block.size());
        return;
    }
    const std::size_t whole = rest - rest % bytesPerSample_;
    std::memcpy(block.data(), sound.data() + position_, whole);
    const std::size_t copiedEnd = whole > 0 ? position_ + whole : sound.size();
    if (copiedEnd < bytesPerSample_) {
        std::ranges::fill(block, std::uint8_t{0});
        return;
    }
    // Intended oddity: it is one channel's last value that goes on, not the last frame; every block
    // must leave with its full length.
    Repeat(sound.subspan(copiedEnd - bytesPerSample_, bytesPerSample_), block.subspan(whole));
}

}  // namespace sonavel
