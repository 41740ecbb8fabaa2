#include "spatial/spatializer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "platform/parallel.h"
#include "platform/vector_clones.h"
#include "sound/failure_texts.h"
#include "sound/float_block.h"
#include "sound/frame_range.h"
#include "sound/sample_io.h"
#include "spatial/block_filter.h"

namespace sonavel {
namespace {

constexpr unsigned kResultFrameBytes = 4;

// Some seconds.
constexpr std::size_t kPartFloats = std::size_t{1} << 19;

FrameRange RangeOf(const SpatialTarget& target) {
    const std::uint32_t frames = target.document.Sound().GetFrameCount();
    if (target.selectionStart == target.selectionEnd) return {0, frames};
    return RangeBetween(target.selectionStart, target.selectionEnd).ClampedTo(frames);
}

// A block of a range, with the 256 samples before it; those before the range are silent.
void ReadBlock(const CWave& sound, FrameRange range, std::size_t index,
               std::span<float, kBlockInput> block) {
    const auto done = static_cast<std::uint32_t>(index * kBlockFrames);
    const std::uint32_t history = done > 0 ? kBlockHistory : 0;
    // Intended: one frame past the range is still taken in, and is heard in its tail.
    const std::uint32_t left = range.Frames() + 1 - done;
    const std::span<float> heard =
        block.subspan(kBlockHistory - history)
            .first(history + std::min<std::uint32_t>(left, kBlockFrames));
    std::fill(block.begin(), block.end(), 0.0f);
    ReadChannel(sound, 0, range.start + done - history, heard, EightBitReading::kFull);
}

// Fills the output as far as the person lets it; the rest stays silent.
void RunFilter(const CWave& sound, FrameRange range, const BlockFilter& filter,
               std::span<float> output, ProgressWindow& progress) {
    constexpr std::size_t kBlockFloats = std::size_t{2} * kBlockFrames;
    const auto compute = [&](std::size_t index) {
        std::array<float, kBlockInput> input;
        std::array<float, kBlockFloats> block;
        ReadBlock(sound, range, index, input);
        filter.Process(input, index, block);
        const auto to = output.subspan(index * kBlockFloats);
        std::copy_n(block.begin(), std::min(block.size(), to.size()), to.begin());
    };
    const auto before = [&](std::size_t index) {
        if (index == 0) return Onward::kGoOn;
        if (progress.Poll()) return Onward::kStop;
        progress.SetPosition(static_cast<int>(index * kBlockFloats * 100 / range.Frames() / 2));
        return Onward::kGoOn;
    };
    const std::size_t blocks = (output.size() + kBlockFloats - 1) / kBlockFloats;
    // Less than a second's sound is done before another thread has started.
    const unsigned threads = range.Frames() < sound.GetSamplesPerSecond() ? 1 : ThreadsToUse();
    const std::size_t done =
        ComputeUnits({.count = blocks, .compute = compute, .before = before}, threads).units;
    if (done < blocks) std::ranges::fill(output.subspan(done * kBlockFloats), 0.0f);
    progress.SetPosition(100);
}

template <class Work>
void ForEachPart(std::span<float> output, const Work& work) {
    ComputeParts((output.size() + kPartFloats - 1) / kPartFloats, [&](std::size_t part) {
        const std::size_t first = part * kPartFloats;
        work(part, output.subspan(first, std::min(kPartFloats, output.size() - first)));
    });
}

SONAVEL_VECTOR_CLONES
float PeakOf(std::span<const float> values) {
    std::array<float, 16> peaks{};
    std::size_t i = 0;
    for (; i + peaks.size() <= values.size(); i += peaks.size())
        for (std::size_t k = 0; k < peaks.size(); ++k)
            peaks[k] = std::max(peaks[k], std::abs(values[i + k]));
    for (; i < values.size(); ++i) peaks[0] = std::max(peaks[0], std::abs(values[i]));
    return std::ranges::max(peaks);
}

SONAVEL_VECTOR_CLONES
void Multiply(std::span<float> values, float factor) {
    for (float& value : values) value *= factor;
}

// Peaks beyond 16 bits are brought down first; 8-bit sounds are brought up afterwards, and what
// passes 16 bits then is held at their ends.
void FitInto16Bits(std::span<float> output, unsigned bits) {
    constexpr float kLimit = 32767;
    std::vector<float> peaks(output.size() / kPartFloats + 1);
    ForEachPart(output, [&](std::size_t part, std::span<const float> values) {
        peaks[part] = PeakOf(values);
    });
    const float peak = std::ranges::max(peaks);
    ForEachPart(output, [&](std::size_t, std::span<float> values) {
        if (peak > kLimit) Multiply(values, kLimit / peak);
        if (bits == 8) Multiply(values, kEightBitScale);
        HoldWithinLimits(values, 16);
    });
}

bool Store(CSoundDoc& document, FrameRange range, std::span<float> output) {
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
    ForEachPart(output, [&](std::size_t part, std::span<const float> values) {
        const auto first = static_cast<std::uint32_t>(part * kPartFloats / 2);
        WriteInterleaved(sound, range.start + first, values);
    });
    document.ClearPreview();
    edit->Commit(0);
    return true;
}

bool FitsAs16BitStereo(const CWave& sound) {
    return std::uint64_t{sound.GetFrameCount()} * kResultFrameBytes <= kMaxSoundBytes;
}

bool HandOver(const SpatialTarget& target, FrameRange range, std::span<float> output) {
    if (target.outcome == SpatialOutcome::kApply) return Store(target.document, range, output);
    const auto play = target.outcome == SpatialOutcome::kPlayedPreview
                          ? CSoundDoc::PreviewPlay::kYes
                          : CSoundDoc::PreviewPlay::kNo;
    return target.document.MakePreview(output, play, 2 * range.Frames(),
                                       CSoundDoc::PreviewFormat::kStereo16);
}

template <class MakeFilter>
bool Spatialize(const SpatialTarget& target, const MakeFilter& makeFilter) {
    CSoundDoc& document = target.document;
    const FrameRange range = RangeOf(target);
    if (range.IsEmpty()) {
        document.SetLastError("The sound is empty.");
        return false;
    }
    if (target.outcome == SpatialOutcome::kApply && !FitsAs16BitStereo(document.Sound())) {
        document.SetLastError("The sound is too long to become 16-bit stereo.");
        return false;
    }
    FloatBlock block(std::size_t{2} * range.Frames());
    if (!block.HasMemory()) {
        document.SetLastError(failure::kMemory);
        return false;
    }
    const std::span<float> output = block.Floats();
    {
        const auto progress =
            document.Services().progress.CreateProgress("Progress" + std::string(target.title));
        RunFilter(document.Sound(), range, makeFilter(range.Frames()), output, *progress);
    }
    FitInto16Bits(output, document.Sound().GetBits());
    return HandOver(target, range, output);
}

}  // namespace

bool SpatializePositional(const SpatialTarget& target, const SourcePosition& position) {
    return Spatialize(target, [&](std::uint32_t) { return FixedSourceFilter(position); });
}

bool SpatializeMoving(const SpatialTarget& target, std::span<const SourcePosition> points) {
    const SourcePath path(points);
    return Spatialize(target,
                      [&](std::uint32_t frames) { return MovingSourceFilter(path, frames); });
}

}  // namespace sonavel
