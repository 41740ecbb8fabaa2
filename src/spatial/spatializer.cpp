#include "spatial/spatializer.h"

#include <new>
#include <string>
#include <utility>

#include "platform/failure_texts.h"
#include "sound/frame_range.h"
#include "sound/pair_buffer.h"
#include "sound/sample_io.h"
#include "spatial/block_renderer.h"
#include "spatial/fitting.h"
#include "spatial/placing_words.h"

namespace sonavel {
namespace {

constexpr std::string_view kEmpty = "The sound is empty.";
constexpr std::string_view kTooLong = "The sound is too long to become 16-bit stereo.";

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

}  // namespace

Outcome SpatializePlaced(const SpatialTarget& target, const Placing& placing,
                         Listener& listener) try {
    CSoundDoc& document = target.document;
    const FrameRange range =
        RangeToWorkOn(target.selectionStart, target.selectionEnd, document.Sound().GetFrameCount());
    if (range.IsEmpty()) return Failed(kEmpty);
    if (target.outcome == SpatialOutcome::kApply && !FitsAsStereo(document.Sound()))
        return Failed(kTooLong);
    PairBuffer output(range.Frames());
    if (!output.HasMemory()) return Failed(failure::kMemory);
    const auto renderer = MakeRenderer(placing, {document.Sound(), range}, listener);
    if (!renderer) return renderer.Ended();
    const DescribedStep step(document.Steps(), WordsOf(target, placing, listener));
    RenderedBlocks rendered;
    {
        const auto progress =
            document.Services().progress.CreateProgress("Progress" + std::string(target.title));
        // Intended: what was cancelled is heard as far as it came.
        rendered = RenderBlocks(**renderer, document.Sound().GetSamplesPerSecond(), output.Pairs(),
                                *progress);
    }
    if (rendered.end == RenderEnd::kCancelled) document.Steps().LoseWords();
    return HandOver(target, range, Fitting(rendered.peak, document.Sound().GetBits()), output);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<Sound> PlacedCopy(const Sound& sound, const Placing& placing, Listener& listener,
                         ProgressWindow& progress) try {
    const std::uint32_t frames = sound.GetFrameCount();
    if (frames == 0) return Failed(kEmpty);
    if (!FitsAsStereo(sound)) return Failed(kTooLong);
    PairBuffer output(frames);
    Sound copy;
    if (!output.HasMemory() ||
        !copy.Create(2, ComputedBits(sound.GetBits()), sound.GetSamplesPerSecond(), frames))
        return Failed(failure::kMemory);
    const auto renderer = MakeRenderer(placing, {sound, {0, frames}}, listener);
    if (!renderer) return renderer.Ended();
    const RenderedBlocks rendered =
        RenderBlocks(**renderer, sound.GetSamplesPerSecond(), output.Pairs(), progress);
    if (rendered.end == RenderEnd::kCancelled) return Cancelled();
    WriteFitted(copy, {0, frames}, Fitting(rendered.peak, sound.GetBits()), output);
    copy.Markers() = sound.Markers();
    return copy;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome SpatializePositional(const SpatialTarget& target, const SourcePosition& position) {
    Listener listener;
    return SpatializePlaced(target, {.points = {position}}, listener);
}

Outcome SpatializeMoving(const SpatialTarget& target, std::span<const SourcePosition> path) {
    Listener listener;
    return SpatializePlaced(
        target, {.kind = PlacingKind::kPath, .points = {path.begin(), path.end()}}, listener);
}

}  // namespace sonavel
