#include "spatial/spatializer.h"

#include <algorithm>
#include <array>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure_texts.h"
#include "platform/parallel.h"
#include "sound/frame_range.h"
#include "sound/pair_buffer.h"
#include "sound/sample_io.h"
#include "spatial/block_filter.h"

namespace sonavel {
namespace {

// A block of a range, with the 256 samples before it; those before the range are silent.
void ReadBlock(const Sound& sound, FrameRange range, std::size_t index,
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

// Fills the output as far as the person lets it, and returns its peak; the rest stays silent.
float RunFilter(const Sound& sound, FrameRange range, const BlockFilter& filter,
                std::span<float> output, ProgressWindow& progress) {
    constexpr std::size_t kBlockFloats = std::size_t{2} * kBlockFrames;
    const std::size_t blocks = (output.size() + kBlockFloats - 1) / kBlockFloats;
    std::vector<float> peaks(blocks);
    const auto compute = [&](std::size_t index) {
        std::array<float, kBlockInput> input;
        std::array<float, kBlockFloats> block;
        ReadBlock(sound, range, index, input);
        filter.Process(input, index, block);
        const auto to = output.subspan(index * kBlockFloats);
        const auto heard = std::span(block).first(std::min(block.size(), to.size()));
        std::ranges::copy(heard, to.begin());
        peaks[index] = PeakOf(heard);
    };
    const auto before = [&](std::size_t index) {
        if (index == 0) return Onward::kGoOn;
        if (progress.Poll()) return Onward::kStop;
        progress.SetPosition(static_cast<int>(index * kBlockFloats * 100 / range.Frames() / 2));
        return Onward::kGoOn;
    };
    // Less than a second's sound is done before another thread has started.
    const unsigned threads = range.Frames() < sound.GetSamplesPerSecond() ? 1 : ThreadsToUse();
    const std::size_t done =
        ComputeUnits({.count = blocks, .compute = compute, .before = before}, threads).units;
    if (done < blocks) std::ranges::fill(output.subspan(done * kBlockFloats), 0.0f);
    progress.SetPosition(100);
    return PeakOf(std::span(peaks).first(done));
}

// How what was computed fits into 16 bits. Peaks beyond them are brought down first; 8-bit sounds
// are brought up afterwards, and what passes 16 bits then is held at their ends.
class Fitting {
  public:
    Fitting(float peak, unsigned bits) : tooLoud_(peak > kLimit), eightBits_(bits == 8) {
        if (tooLoud_) factor_ = kLimit / peak;
    }

    void Fit(std::span<float> pairs) const {
        if (tooLoud_) MultiplyBy(factor_, pairs);
        if (eightBits_) MultiplyBy(kEightBitScale, pairs);
        if (tooLoud_ || eightBits_) HoldWithinLimits(pairs, 16);
    }

  private:
    static constexpr float kLimit = 32767;

    bool tooLoud_;
    bool eightBits_;
    float factor_ = 1;
};

void WriteFitted(Sound& sound, FrameRange range, const Fitting& fitting, PairBuffer& output) {
    output.ForEachPart([&](std::uint32_t first, std::span<float> pairs) {
        fitting.Fit(pairs);
        WriteInterleaved(sound, range.start + first, pairs);
    });
}

Outcome StoreInPlace(CSoundDoc& document, FrameRange range, const Fitting& fitting,
                     PairBuffer& output) {
    Result<SoundEdit> edit =
        document.BeginEdit("Copy Sample", ReplacesFrames(range.start, range.end));
    if (!edit) return edit.Ended();
    WriteFitted(document.Sound(), range, fitting, output);
    document.ClearPreview();
    edit->Commit(0);
    return Done();
}

Outcome Store(CSoundDoc& document, FrameRange range, const Fitting& fitting, PairBuffer& output) {
    const unsigned bits = ComputedBits(document.Sound().GetBits());
    if (document.Sound().GetChannels() == 2 && document.Sound().GetBits() == bits)
        return StoreInPlace(document, range, fitting, output);
    Result<Sound> result = Converted(document.Sound(), 2, ChannelChoice::kBothOrMix, bits);
    if (!result) return result.Ended();
    Result<SoundEdit> edit = document.BeginReplacement("Copy Sample");
    if (!edit) return edit.Ended();
    WriteFitted(*result, range, fitting, output);
    edit->ReplaceSound(std::move(*result));
    document.ClearPreview();
    edit->Commit(0);
    return Done();
}

bool FitsAsStereo(const Sound& sound) {
    const PcmFormat result = MakeSoundFormat(2, ComputedBits(sound.GetBits()), 1);
    return std::uint64_t{sound.GetFrameCount()} * result.blockAlign <= MostSoundBytes(result);
}

Outcome HandOver(const SpatialTarget& target, FrameRange range, const Fitting& fitting,
                 PairBuffer& output) {
    if (target.outcome == SpatialOutcome::kApply)
        return Store(target.document, range, fitting, output);
    output.ForEachPart([&](std::uint32_t, std::span<float> pairs) { fitting.Fit(pairs); });
    const auto play = target.outcome == SpatialOutcome::kPlayedPreview
                          ? CSoundDoc::PreviewPlay::kYes
                          : CSoundDoc::PreviewPlay::kNo;
    return target.document.MakePreview(output.Pairs(), play, 2 * range.Frames(),
                                       CSoundDoc::PreviewFormat::kComputedStereo);
}

template <class MakeFilter>
Outcome Spatialize(const SpatialTarget& target, const MakeFilter& makeFilter) try {
    CSoundDoc& document = target.document;
    const FrameRange range =
        RangeToWorkOn(target.selectionStart, target.selectionEnd, document.Sound().GetFrameCount());
    if (range.IsEmpty()) return Failed("The sound is empty.");
    if (target.outcome == SpatialOutcome::kApply && !FitsAsStereo(document.Sound()))
        return Failed("The sound is too long to become 16-bit stereo.");
    PairBuffer output(range.Frames());
    if (!output.HasMemory()) return Failed(failure::kMemory);
    float peak = 0;
    {
        const auto progress =
            document.Services().progress.CreateProgress("Progress" + std::string(target.title));
        peak = RunFilter(document.Sound(), range, makeFilter(range.Frames()), output.Pairs(),
                         *progress);
    }
    return HandOver(target, range, Fitting(peak, document.Sound().GetBits()), output);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace

Outcome SpatializePositional(const SpatialTarget& target, const SourcePosition& position) {
    return Spatialize(target, [&](std::uint32_t) { return FixedSourceFilter(position); });
}

Outcome SpatializeMoving(const SpatialTarget& target, std::span<const SourcePosition> points) {
    const SourcePath path(points);
    return Spatialize(target,
                      [&](std::uint32_t frames) { return MovingSourceFilter(path, frames); });
}

}  // namespace sonavel
