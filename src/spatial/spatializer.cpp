#include "spatial/spatializer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "platform/vector_clones.h"
#include "sound/failure_texts.h"
#include "sound/float_block.h"
#include "sound/sample_io.h"
#include "spatial/block_filter.h"

namespace sonavel {
namespace {

constexpr unsigned kResultFrameBytes = 4;

struct Range {
    std::uint32_t start;
    std::uint32_t frames;
};

Range RangeOf(const SpatialTarget& target) {
    const std::uint32_t frames = target.document.Sound().GetFrameCount();
    if (target.selectionStart == target.selectionEnd) return {0, frames};
    const auto [first, last] = std::minmax(target.selectionStart, target.selectionEnd);
    const std::uint32_t start = std::min(first, frames);
    return {start, std::min(last, frames) - start};
}

// Hands out the blocks of a range, each with the 256 samples before it.
class BlockReader {
  public:
    BlockReader(const CWave& sound, Range range) : sound_(sound), range_(range) {}

    BlockInput Next() {
        std::copy(block_.end() - kBlockHistory, block_.end(), block_.begin());
        const auto own = std::span(block_).subspan(kBlockHistory);
        // One frame past the range is still taken in; renderings have always had it.
        const std::uint32_t left = range_.frames + 1 - std::min(done_, range_.frames + 1);
        const auto wanted = own.first(std::min<std::size_t>(own.size(), left));
        ReadChannel(sound_, 0, range_.start + done_, wanted, EightBitReading::kFull);
        std::fill(own.begin() + static_cast<std::ptrdiff_t>(wanted.size()), own.end(), 0.0f);
        done_ += kBlockFrames;
        return block_;
    }

  private:
    const CWave& sound_;
    Range range_;
    std::uint32_t done_ = 0;
    std::array<float, kBlockInput> block_{};
};

// Fills the output as far as the person lets it; the rest stays silent.
void RunFilter(const CWave& sound, Range range, BlockFilter& filter, std::span<float> output,
               ProgressWindow& progress) {
    BlockReader reader(sound, range);
    std::array<float, 2 * kBlockFrames> block;
    for (std::size_t written = 0; written < output.size();) {
        const float t = static_cast<float>(written) / static_cast<float>(output.size());
        filter.Process(reader.Next(), t, block);
        const std::size_t count = std::min(block.size(), output.size() - written);
        std::copy_n(block.begin(), count, output.begin() + static_cast<std::ptrdiff_t>(written));
        written += count;
        if (progress.Poll()) break;
        progress.SetPosition(static_cast<int>(written * 100 / range.frames / 2));
    }
    progress.SetPosition(100);
}

// Peaks beyond 16 bits are brought down first; 8-bit sounds are brought up afterwards, and what
// passes 16 bits then is held at their ends.
SONAVEL_VECTOR_CLONES
void FitInto16Bits(std::span<float> output, unsigned bits) {
    constexpr float kLimit = 32767;
    float peak = 0;
    for (const float value : output) peak = std::max(peak, std::abs(value));
    if (peak > kLimit)
        for (float& value : output) value *= kLimit / peak;
    if (bits == 8)
        for (float& value : output) value *= kEightBitScale;
    HoldWithinLimits(output, 16);
}

bool Store(CSoundDoc& document, Range range, std::span<const float> output) {
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample");
    if (!edit) {
        document.SetLastError(edit.Reason());
        return false;
    }
    CWavePlayer& sound = document.Sound();
    if (!sound.ConvertFormat(2, ChannelChoice::kBothOrMix, 16)) {
        document.SetLastError(failure::kMemory);
        return false;
    }
    WriteInterleaved(sound, range.start, output);
    document.ClearPreview();
    edit->Commit(0);
    return true;
}

bool FitsAs16BitStereo(const CWave& sound) {
    return std::uint64_t{sound.GetFrameCount()} * kResultFrameBytes <= kMaxSoundBytes;
}

bool HandOver(const SpatialTarget& target, Range range, std::span<const float> output) {
    if (target.outcome == SpatialOutcome::kApply) return Store(target.document, range, output);
    const auto play = target.outcome == SpatialOutcome::kPlayedPreview
                          ? CSoundDoc::PreviewPlay::kYes
                          : CSoundDoc::PreviewPlay::kNo;
    return target.document.MakePreview(output, play, 2 * range.frames,
                                       CSoundDoc::PreviewFormat::kStereo16);
}

bool Spatialize(const SpatialTarget& target, BlockFilter& filter) {
    CSoundDoc& document = target.document;
    const Range range = RangeOf(target);
    if (range.frames == 0) {
        document.SetLastError("The sound is empty.");
        return false;
    }
    if (target.outcome == SpatialOutcome::kApply && !FitsAs16BitStereo(document.Sound())) {
        document.SetLastError("The sound is too long to become 16-bit stereo.");
        return false;
    }
    FloatBlock block(std::size_t{2} * range.frames);
    if (!block.HasMemory()) {
        document.SetLastError(failure::kMemory);
        return false;
    }
    const std::span<float> output = block.Floats();
    {
        const auto progress =
            document.Services().progress.CreateProgress("Progress" + std::string(target.title));
        RunFilter(document.Sound(), range, filter, output, *progress);
    }
    FitInto16Bits(output, document.Sound().GetBits());
    return HandOver(target, range, output);
}

}  // namespace

bool SpatializePositional(const SpatialTarget& target, const SourcePosition& position) {
    FixedSourceFilter filter(position);
    return Spatialize(target, filter);
}

bool SpatializeMoving(const SpatialTarget& target, std::span<const SourcePosition> points) {
    const SourcePath path(points);
    MovingSourceFilter filter(path);
    return Spatialize(target, filter);
}

}  // namespace sonavel
