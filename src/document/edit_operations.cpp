// Copying, removing and pasting.
#include "document/edit_operations.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "document/clip_image.h"
#include "document/edit_step.h"
#include "platform/failure_texts.h"
#include "sound/made_beside.h"
#include "sound/watched_conversion.h"

namespace sonavel::edit {
namespace {

constexpr std::string_view kNoSelection = "Nothing is selected.";

Result<EditSelection> RemoveSelection(CSoundDoc& document, const EditSelection& at) {
    Result<SoundEdit> edit =
        document.BeginEdit("Source Sample", ReplacesFrames(at.startFrame, at.endFrame));
    if (!edit) return edit.Ended();
    if (!document.Sound().RemoveFrames(at.startFrame, at.endFrame)) return Failed(failure::kMemory);
    edit->Commit(at.startFrame);
    return EditSelection{.cursorFrame = at.startFrame};
}

// The clip `count` times over, one copy as its own. The sound is not touched, so a cancel leaves
// nothing to be taken back.
Outcome Repeat(const ClipRecord& clip, std::uint32_t count, ProgressFactory& factory,
               SoundBuffer& repeated) {
    const std::uint64_t copy = clip.GetDataSize(), bytes = copy * count;
    if (count == 1) return Done();
    if (bytes > MostSoundBytes(clip.GetFormat()) || !repeated.AllocBuffer(bytes))
        return Failed(failure::kMemory);
    const auto window =
        bytes >= kProgressFromBytes ? factory.CreateProgress("Progress Paste Replicate") : nullptr;
    for (std::uint32_t i = 0; i < count; ++i) {
        std::memcpy(repeated.Data() + i * copy, clip.Bytes().data(), copy);
        if (!window) continue;
        window->SetPosition(static_cast<int>(std::uint64_t{i + 1} * 100 / count));
        if (window->Poll()) return Cancelled();
    }
    return Done();
}

// Inserting behind the selection first leaves the sound as it was when there is no memory; samples
// and markers come out as if the selection had gone first.
bool InsertInPlaceOf(CWave& sound, const EditSelection& at, std::span<const std::uint8_t> bytes) {
    if (at.IsEmpty()) return sound.InsertFrames(at.cursorFrame, bytes);
    return sound.InsertFrames(at.endFrame, bytes) && sound.RemoveFrames(at.startFrame, at.endFrame);
}

EditPlan PlanOfPaste(const EditSelection& at) {
    return at.IsEmpty() ? InsertsAt(at.cursorFrame) : ReplacesFrames(at.startFrame, at.endFrame);
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

Result<EditSelection> OverwriteSelection(CSoundDoc& document, const ClipRecord& clip,
                                         const EditSelection& requested, OverwriteExtent extent) {
    CWavePlayer& sound = document.Sound();
    const EditSelection at = ClampedTo(sound, requested);
    if (at.IsEmpty()) return Failed(kNoSelection);
    if (Outcome fits = CheckClip(sound, clip); !fits) return fits;
    const std::size_t start = sound.ByteOffset(at.startFrame);
    const std::size_t selected = sound.ByteOffset(at.endFrame) - start;
    const std::size_t bytes = BytesToFill(extent, selected, clip.GetDataSize());
    if (bytes == 0) {
        constexpr std::string_view kTooSmall = "Too small block..................";
        document.Services().prompts.ShowMessage(kTooSmall);
        return Failed(kTooSmall);
    }
    Result<SoundEdit> edit =
        document.BeginUnrecordedEdit(ReplacesFrames(at.startFrame, at.endFrame));
    if (!edit) return edit.Ended();
    Fill(sound.MutableBytes().subspan(start, bytes), clip.Bytes());
    edit->Commit(at.startFrame);
    return at;
}

}  // namespace

Outcome CopyRange(CSoundDoc& document, std::uint32_t startFrame, std::uint32_t endFrame) {
    const CWave& sound = document.Sound();
    const EditSelection range =
        ClampedTo(sound, {.startFrame = startFrame, .endFrame = endFrame, .cursorFrame = 0});
    if (range.IsEmpty()) return Done();
    const std::size_t start = sound.ByteOffset(range.startFrame);
    const std::size_t end = sound.ByteOffset(range.endFrame);
    const auto bytes = sound.Bytes().subspan(start, end - start);
    auto image = WriteClipImage(sound.GetFormat(), bytes);
    if (!image) return Failed(failure::kMemory);
    if (!document.Services().clipboard.SetImage(std::move(*image)))
        return Failed("The clipboard cannot be opened.");
    std::vector<std::string> lines = PlaceLines(range.startFrame, range.endFrame);
    lines.emplace_back("copy");
    document.Steps().NoteLeft(Supply::kClip, std::move(lines),
                              MarkOfClip(document.Services().clipboard, bytes));
    return Done();
}

Result<EditSelection> Cut(CSoundDoc& document, const EditSelection& requested) {
    const EditSelection at = ClampedTo(document.Sound(), requested);
    if (at.IsEmpty()) return Failed(kNoSelection);
    if (Outcome copied = CopyRange(document, at.startFrame, at.endFrame); !copied) return copied;
    return RemoveSelection(document, at);
}

Result<EditSelection> Delete(CSoundDoc& document, const EditSelection& requested) {
    const EditSelection at = ClampedTo(document.Sound(), requested);
    if (at.IsEmpty()) return Failed(kNoSelection);
    return RemoveSelection(document, at);
}

Result<EditSelection> Paste(CSoundDoc& document, const ClipRecord& clip,
                            const EditSelection& requested, std::uint32_t count) {
    CWavePlayer& sound = document.Sound();
    EditSelection at = ClampedTo(sound, requested);
    if (Outcome fits = CheckClip(sound, clip); !fits) return fits;
    if (count == 0 || count > kHighestReplicateCount)
        return Failed("The clip can be pasted 1 to 1000 times at once.");
    SoundBuffer repeated;
    if (Outcome made = Repeat(clip, count, document.Services().progress, repeated); !made)
        return made;
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", PlanOfPaste(at));
    if (!edit) return edit.Ended();
    if (!InsertInPlaceOf(sound, at, count > 1 ? std::as_const(repeated).Bytes() : clip.Bytes()))
        return Failed(failure::kMemory);

    const std::uint32_t inserted = clip.GetFrameCount() * count;
    if (at.IsEmpty()) {
        const std::uint32_t start = std::exchange(at.cursorFrame, at.cursorFrame + inserted);
        edit->Commit(start);
        return EditSelection{at.cursorFrame, at.cursorFrame, at.cursorFrame};
    }
    at.cursorFrame = at.startFrame;
    at.endFrame = at.startFrame + inserted;
    edit->Commit(at.startFrame);
    return at;
}

Result<EditSelection> PasteOverwrite(CSoundDoc& document, const ClipRecord& clip,
                                     const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kOneClip);
}

Result<EditSelection> PasteBlockOverwrite(CSoundDoc& document, const ClipRecord& clip,
                                          const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kWholeSelection);
}

Result<EditSelection> PasteBlockCopy(CSoundDoc& document, const ClipRecord& clip,
                                     const EditSelection& at) {
    return OverwriteSelection(document, clip, at, OverwriteExtent::kWholeClips);
}

namespace {

StepWords WordsOfConversion(const Sound& sound, unsigned channels, ChannelChoice choice,
                            unsigned bits) {
    StepWords words;
    if (channels != sound.GetChannels())
        words.lines.push_back("convert-channels " + std::to_string(channels) +
                              " mode=" + std::to_string(static_cast<int>(choice)));
    if (bits != sound.GetBits()) words.lines.push_back("convert-bits " + std::to_string(bits));
    return words;
}

}  // namespace

Outcome ConvertFormat(CSoundDoc& document, unsigned channels, ChannelChoice choice, unsigned bits) {
    const CWave& sound = document.Sound();
    if (channels == sound.GetChannels() && bits == sound.GetBits()) return Done();
    Result<Sound> converted = MadeBeside(
        document.Services().progress, sound.GetDataSize(),
        [&](const PieceWatch& watch) { return Converted(sound, channels, choice, bits, watch); });
    if (!converted) return converted.Ended();
    const DescribedStep step(document.Steps(), WordsOfConversion(sound, channels, choice, bits));
    Result<SoundEdit> edit = document.BeginReplacement("Copy Sample");
    if (!edit) return edit.Ended();
    edit->ReplaceSound(std::move(*converted));
    edit->Commit(0);
    return Done();
}

Outcome ReplaceWithClip(CSoundDoc& document, const ClipRecord& clip) {
    if (!clip.present) return Failed("There is no sound on the clipboard.");
    Result<Sound> copy = clip.Copy();
    if (!copy) return copy.Ended();
    Result<SoundEdit> edit = document.BeginUnrecordedReplacement();
    if (!edit) return edit.Ended();
    edit->ReplaceSound(std::move(*copy));
    edit->Commit(0);
    return Done();
}

}  // namespace sonavel::edit
