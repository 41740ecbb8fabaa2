#include "document/range_operations.h"

#include <algorithm>
#include <utility>

#include "document/edit_step.h"
#include "platform/failure_texts.h"
#include "sound/sample_types.h"

namespace sonavel::edit {
namespace {

// False when the memory cannot be had, or the sound would become too long.
bool MakeSilence(const Sound& sound, std::uint32_t frames, SoundBuffer& silence) {
    const std::uint64_t bytes = std::uint64_t{frames} * sound.GetBlockAlign();
    if (bytes > MostSoundBytes(sound.GetFormat()) || !silence.AllocBuffer(bytes)) return false;
    FillWithSilence(silence.Bytes(), sound.GetBits());
    return true;
}

bool AreInOrder(std::span<const FrameRange> ranges, std::uint32_t frames) {
    std::uint32_t behind = 0;
    for (const FrameRange& range : ranges) {
        if (range.start < behind || range.end <= range.start) return false;
        behind = range.end;
    }
    return behind <= frames;
}

std::uint32_t FramesIn(std::span<const FrameRange> ranges) {
    std::uint32_t frames = 0;
    for (const FrameRange& range : ranges) frames += range.Frames();
    return frames;
}

// Where a frame is once the ranges are gone.
std::uint32_t PlaceWithout(std::span<const FrameRange> ranges, std::uint32_t frame) {
    std::uint32_t before = 0;
    for (const FrameRange& range : ranges)
        if (range.start < frame) before += std::min(range.end, frame) - range.start;
    return frame - before;
}

MarkerList MarkersWithout(MarkerList markers, std::span<const FrameRange> ranges) {
    // The last one first, so that the places of the others stay what they are.
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        markers.ShiftForStretch(range->start, range->end, 0);
    return markers;
}

// What lies between the ranges, as another sound.
Result<Sound> Without(const Sound& sound, std::span<const FrameRange> ranges) {
    Sound kept;
    if (!kept.Create(sound.GetChannels(), sound.GetBits(), sound.GetSamplesPerSecond(),
                     sound.GetFrameCount() - FramesIn(ranges)))
        return Failed(failure::kMemory);
    std::span<std::uint8_t> room = kept.MutableBytes();
    std::uint64_t from = 0;
    const auto copyUpTo = [&](std::uint64_t end) {
        const auto piece = sound.Bytes().subspan(from, end - from);
        std::ranges::copy(piece.first(std::min(piece.size(), room.size())), room.begin());
        room = room.subspan(std::min(piece.size(), room.size()));
    };
    for (const FrameRange& range : ranges) {
        copyUpTo(sound.ByteOffset(range.start));
        from = sound.ByteOffset(range.end);
    }
    copyUpTo(sound.GetDataSize());
    kept.Markers() = MarkersWithout(sound.Markers(), ranges);
    return kept;
}

}  // namespace

Result<EditSelection> Crop(CSoundDoc& document, const EditSelection& requested) {
    CWave& sound = document.Sound();
    const EditSelection at = ClampedTo(sound, requested);
    if (at.IsEmpty()) return Failed("Nothing is selected.");
    Result<SoundEdit> edit = document.BeginEdit("Source Sample");
    if (!edit) return edit.Ended();
    // Behind first, so that the places in front of it stay what they are.
    const std::uint32_t frames = sound.GetFrameCount();
    if (at.endFrame < frames && !sound.RemoveFrames(at.endFrame, frames))
        return Failed(failure::kMemory);
    if (at.startFrame > 0 && !sound.RemoveFrames(0, at.startFrame)) return Failed(failure::kMemory);
    edit->Commit(0);
    return EditSelection{};
}

Result<EditSelection> InsertSilence(CSoundDoc& document, const EditSelection& requested,
                                    std::uint32_t frames) {
    CWave& sound = document.Sound();
    EditSelection at = ClampedTo(sound, requested);
    if (frames == 0) return Failed("The silence is to be at least one frame long.");
    SoundBuffer silence;
    if (!MakeSilence(sound, frames, silence)) return Failed(failure::kMemory);
    const std::uint32_t start = at.IsEmpty() ? at.cursorFrame : at.startFrame;
    const std::uint32_t behind = at.IsEmpty() ? at.cursorFrame : at.endFrame;
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", ReplacesFrames(start, behind));
    if (!edit) return edit.Ended();
    if (!sound.InsertFrames(behind, std::as_const(silence).Bytes()) ||
        (!at.IsEmpty() && !sound.RemoveFrames(at.startFrame, at.endFrame)))
        return Failed(failure::kMemory);
    edit->Commit(start);
    if (at.IsEmpty()) return EditSelection{start + frames, start + frames, start + frames};
    return EditSelection{start, start + frames, start};
}

Result<EditSelection> RemoveRanges(CSoundDoc& document, const EditSelection& requested,
                                   std::span<const FrameRange> ranges) {
    const CWave& sound = document.Sound();
    const EditSelection at = ClampedTo(sound, requested);
    if (ranges.empty() || !AreInOrder(ranges, sound.GetFrameCount()))
        return Failed("There is nothing to remove.");
    if (FramesIn(ranges) == sound.GetFrameCount())
        return Failed("Nothing of the sound would stay.");
    Result<Sound> kept = Without(sound, ranges);
    if (!kept) return kept.Ended();
    Result<SoundEdit> edit = document.BeginReplacement("Source Sample");
    if (!edit) return edit.Ended();
    edit->ReplaceSound(std::move(*kept));
    edit->Commit(ranges.front().start);
    return EditSelection{PlaceWithout(ranges, at.startFrame), PlaceWithout(ranges, at.endFrame),
                         PlaceWithout(ranges, at.cursorFrame)};
}

}  // namespace sonavel::edit
