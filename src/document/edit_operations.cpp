// Copying, removing and pasting.
#include "document/edit_operations.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "document/clip_image.h"
#include "document/edit_step.h"
#include "sound/failure_texts.h"

namespace sonavel::edit {
namespace {

constexpr std::string_view kNoSelection = "Nothing is selected.";

EditResult RemoveSelection(CSoundDoc& document, const EditSelection& at) {
    Result<SoundEdit> edit = document.BeginEdit("Source Sample");
    if (!edit) return NothingDone(document, at, edit.Reason());
    if (!document.Sound().RemoveFrames(at.startFrame, at.endFrame))
        return NothingDone(document, at, failure::kMemory);
    return Done(*edit, {.cursorFrame = at.startFrame}, at.startFrame);
}

// The clip `count` times over; false when the memory cannot be had.
bool Repeat(const ClipRecord& clip, std::uint32_t count, SoundBuffer& repeated) {
    const std::uint64_t bytes = clip.GetDataSize() * count;
    if (bytes > kMaxSoundBytes || !repeated.AllocBuffer(bytes)) return false;
    for (std::uint32_t i = 0; i < count; ++i)
        std::memcpy(repeated.Data() + i * clip.GetDataSize(), clip.Bytes().data(),
                    clip.GetDataSize());
    return true;
}

// Inserting behind the selection first leaves the sound as it was when there is no memory; samples
// and markers come out as if the selection had gone first.
bool InsertInPlaceOf(CWave& sound, const EditSelection& at, std::span<const std::uint8_t> bytes) {
    if (at.IsEmpty()) return sound.InsertFrames(at.cursorFrame, bytes);
    return sound.InsertFrames(at.endFrame, bytes) && sound.RemoveFrames(at.startFrame, at.endFrame);
}

// Fills `target` with repetitions of the clip, doubling what is there already.
void Fill(std::span<std::uint8_t> target, std::span<const std::uint8_t> clip) {
    std::size_t filled = std::min(target.size(), clip.size());
    std::memcpy(target.data(), clip.data(), filled);
    while (filled < target.size()) {
        const std::size_t next = std::min(filled, target.size() - filled);
        std::memcpy(target.data() + filled, target.data(), next);
        filled += next;
    }
}

// How many bytes of a selection an overwriting command fills with repetitions of the clip.
enum class OverwriteExtent { kOneClip, kWholeSelection, kWholeClips };

std::size_t BytesToFill(OverwriteExtent extent, std::size_t selected, std::size_t clip) {
    switch (extent) {
        case OverwriteExtent::kOneClip:
            return std::min(selected, clip);
        case OverwriteExtent::kWholeSelection:
            return selected;
        case OverwriteExtent::kWholeClips:
            return selected / clip * clip;
    }
    return 0;
}

EditResult OverwriteSelection(CSoundDoc& document, const ClipRecord& clip,
                              const EditSelection& requested, OverwriteExtent extent) {
    CWavePlayer& sound = document.Sound();
    const EditSelection at = ClampedTo(sound, requested);
    if (at.IsEmpty()) return NothingDone(document, requested, kNoSelection);
    if (const auto reason = ReasonAgainst(sound, clip); !reason.empty())
        return NothingDone(document, requested, reason);
    const std::size_t start = sound.ByteOffset(at.startFrame);
    const std::size_t selected = sound.ByteOffset(at.endFrame) - start;
    const std::size_t bytes = BytesToFill(extent, selected, clip.GetDataSize());
    if (bytes == 0) {
        constexpr std::string_view kTooSmall = "Too small block..................";
        document.Services().prompts.ShowMessage(kTooSmall);
        return NothingDone(document, requested, kTooSmall);
    }
    Result<SoundEdit> edit = document.BeginUnrecordedEdit();
    if (!edit) return NothingDone(document, requested, edit.Reason());
    Fill(sound.MutableBytes().subspan(start, bytes), clip.Bytes());
    return Done(*edit, at, at.startFrame);
}

}  // namespace

bool CopyRange(CSoundDoc& document, std::uint32_t startFrame, std::uint32_t endFrame) {
    const CWave& sound = document.Sound();
    const EditSelection range =
        ClampedTo(sound, {.startFrame = startFrame, .endFrame = endFrame, .cursorFrame = 0});
    if (range.IsEmpty()) return true;
    const std::size_t start = sound.ByteOffset(range.startFrame);
    const std::size_t end = sound.ByteOffset(range.endFrame);
    auto image = WriteClipImage(sound.GetFormat(), sound.Bytes().subspan(start, end - start));
    if (image && document.Services().clipboard.SetImage(std::move(*image))) return true;
    document.SetLastError(image ? "The clipboard cannot be opened." : failure::kMemory);
    return false;
}

EditResult Cut(CSoundDoc& document, const EditSelection& requested) {
    const EditSelection at = ClampedTo(document.Sound(), requested);
    if (at.IsEmpty()) return NothingDone(document, requested, kNoSelection);
    if (!CopyRange(document, at.startFrame, at.endFrame)) return NotBegun(requested);
    return RemoveSelection(document, at);
}

EditResult Delete(CSoundDoc& document, const EditSelection& requested) {
    const EditSelection at = ClampedTo(document.Sound(), requested);
    if (at.IsEmpty()) return NothingDone(document, requested, kNoSelection);
    return RemoveSelection(document, at);
}

EditResult Paste(CSoundDoc& document, const ClipRecord& clip, const EditSelection& requested,
                 std::uint32_t count) {
    CWavePlayer& sound = document.Sound();
    EditSelection at = ClampedTo(sound, requested);
    if (const auto reason = ReasonAgainst(sound, clip); !reason.empty())
        return NothingDone(document, requested, reason);
    if (count == 0 || count > kHighestReplicateCount)
        return NothingDone(document, requested, "The clip can be pasted 1 to 1000 times at once.");
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample");
    if (!edit) return NothingDone(document, requested, edit.Reason());

    SoundBuffer repeated;
    if ((count > 1 && !Repeat(clip, count, repeated)) ||
        !InsertInPlaceOf(sound, at, count > 1 ? std::as_const(repeated).Bytes() : clip.Bytes()))
        return NothingDone(document, requested, failure::kMemory);

    const std::uint32_t inserted = clip.GetFrameCount() * count;
    if (at.IsEmpty()) {
        const std::uint32_t start = std::exchange(at.cursorFrame, at.cursorFrame + inserted);
        return Done(*edit, {at.cursorFrame, at.cursorFrame, at.cursorFrame}, start);
    }
    at.cursorFrame = at.startFrame;
    at.endFrame = at.startFrame + inserted;
    return Done(*edit, at, at.startFrame);
}

EditResult PasteOverwrite(CSoundDoc& document, const ClipRecord& clip, const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kOneClip);
}

EditResult PasteBlockOverwrite(CSoundDoc& document, const ClipRecord& clip,
                               const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kWholeSelection);
}

EditResult PasteBlockCopy(CSoundDoc& document, const ClipRecord& clip, const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kWholeClips);
}

bool ReplaceWithClip(CSoundDoc& document, const ClipRecord& clip) {
    Result<Sound> copy = clip.present ? clip.Copy() : Failed("There is no sound on the clipboard.");
    if (!copy) {
        document.SetLastError(copy.Reason());
        return false;
    }
    Result<SoundEdit> edit = document.BeginUnrecordedEdit();
    if (!edit) {
        document.SetLastError(edit.Reason());
        return false;
    }
    document.Sound().Adopt(std::move(*copy));
    edit->Commit(0);
    return true;
}

}  // namespace sonavel::edit
