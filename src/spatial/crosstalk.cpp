#include "spatial/crosstalk.h"

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "platform/parallel.h"
#include "sound/frame_range.h"
#include "sound/pair_buffer.h"
#include "sound/sample_io.h"
#include "spatial/crosstalk_filter.h"
#include "spatial/placing_words.h"

namespace sonavel {
namespace {

// Stereo frames from this one of the range on; silence outside the range.
void ReadPairs(const Sound& sound, FrameRange range, std::int64_t first, std::span<float> pairs) {
    std::ranges::fill(pairs, 0.0f);
    const auto count = static_cast<std::int64_t>(pairs.size() / 2);
    const std::int64_t from = std::max<std::int64_t>(first, 0);
    const std::int64_t to = std::min<std::int64_t>(first + count, range.Frames());
    if (to <= from) return;
    ReadInterleaved(sound, range.start + static_cast<std::uint32_t>(from),
                    pairs.subspan(2 * static_cast<std::size_t>(from - first),
                                  2 * static_cast<std::size_t>(to - from)));
}

WorkDone Filter(const Sound& sound, FrameRange range, const CrosstalkFilter& filter,
                std::span<float> pairs, ProgressWindow& progress) {
    const std::size_t blocks = (range.Frames() + kCrosstalkBlock - 1) / kCrosstalkBlock;
    const auto compute = [&](std::size_t block) {
        std::vector<float> input(std::size_t{2} * filter.InputFrames());
        std::array<float, kFftSize> output;
        const auto first = static_cast<std::int64_t>(block) * kCrosstalkBlock;
        ReadPairs(sound, range, first - filter.Taps() / 2, input);
        filter.Process(input, output);
        const auto to = pairs.subspan(2 * static_cast<std::size_t>(first));
        std::copy_n(output.begin(), std::min(output.size(), to.size()), to.begin());
    };
    const auto before = [&](std::size_t block) {
        if (progress.Poll()) return Onward::kStop;
        progress.SetPosition(static_cast<int>(block * 100 / blocks));
        return Onward::kGoOn;
    };
    return ComputeUnits({.count = blocks, .compute = compute, .before = before}, ThreadsToUse());
}

void Store(Sound& sound, std::uint32_t start, std::span<float> pairs) {
    const float limit = sound.GetBits() == 8 ? 127 : 32767;
    const float peak = PeakOf(pairs);
    if (peak > limit) {
        MultiplyBy(limit / peak, pairs);
        if (sound.GetBits() != 32) HoldWithinLimits(pairs, sound.GetBits());
    }
    WriteInterleaved(sound, start, pairs);
}

}  // namespace

Outcome CancelCrosstalk(CSoundDoc& document, std::uint32_t selectionStart,
                        std::uint32_t selectionEnd, double angle, Listener& listener) try {
    CWavePlayer& sound = document.Sound();
    const FrameRange range = RangeToWorkOn(selectionStart, selectionEnd, sound.GetFrameCount());
    if (range.IsEmpty()) return Failed("The sound is empty.");
    if (sound.GetChannels() != 2) return Failed("Cross Talk needs a stereo sound.");
    const auto bank = listener.At(sound.GetSamplesPerSecond());
    if (!bank) return bank.Ended();
    PairBuffer output(range.Frames());
    if (!output.HasMemory()) return Failed(failure::kMemory);
    {
        const CrosstalkFilter filter(**bank, angle);
        const auto progress = document.Services().progress.CreateProgress("Progress Cross Talk");
        const WorkDone done = Filter(sound, range, filter, output.Pairs(), *progress);
        if (done.end == WorkEnd::kOutOfMemory) return Failed(failure::kMemory);
        if (done.end == WorkEnd::kStopped) return Cancelled();
    }
    const DescribedStep step(document.Steps(),
                             WordsOfCrosstalk(selectionStart, selectionEnd, angle, listener));
    Result<SoundEdit> edit = document.BeginEdit("Cross Talk");
    if (!edit) return edit.Ended();
    Store(sound, range.start, output.Pairs());
    document.ClearPreview();
    edit->Commit(range.start);
    return Done();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
