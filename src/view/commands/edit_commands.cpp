#include "view/commands/edit_commands.h"

#include "document/clip_image.h"
#include "document/edit_operations.h"
#include "document/range_operations.h"
#include "sound/sound_texts.h"
#include "view/commands/view_words.h"
#include "view/draw/first_difference.h"

namespace sonavel {
namespace {

EditSelection EditPlace(const CSoundView& view) {
    return {view.State().GetSelection().start, view.State().GetSelection().end,
            view.State().Cursor()};
}

// Takes over where an edit leaves selection and cursor.
Outcome Finish(CSoundView& view, const Result<EditSelection>& after) {
    if (!after) return after.Ended();
    view.State().SetSelection(after->startFrame, after->endFrame);
    view.State().SetCursor(after->cursorFrame);
    view.Repaint().TimeAreas();
    return Done();
}

Outcome FinishRemoval(CSoundView& view, const Result<EditSelection>& after) {
    if (after && view.State().WaveformWidth() > std::int64_t{view.FrameCount()})
        view.Zoom().FitTime();
    return Finish(view, after);
}

using PasteOperation = Result<EditSelection> (*)(CSoundDoc&, const ClipRecord&,
                                                 const EditSelection&);

Outcome PasteWith(CSoundView& view, PasteOperation operation) {
    if (Outcome ready = PrepareClip(view); !ready) return ready;
    return Finish(view, operation(view.Document(), view.Host().Clip(), EditPlace(view)));
}

// Without a selection the range is that of the clip, both ends inside.
MixQuestion QuestionOfMix(const CSoundView& view) {
    const unsigned bits = view.Sound().GetBits();
    if (view.State().HasSelection())
        return {view.State().GetSelection().start, view.State().GetSelection().end, bits};
    const std::uint32_t frames = view.Host().Clip().GetFrameCount();
    return {view.State().Cursor(), view.State().Cursor() + (frames > 0 ? frames - 1 : 0), bits};
}

std::string CommandOf(const CrossfadeChoice& choice) {
    return "crossfade-mix clipboard-start=" + std::to_string(choice.clipboardStartPercent) +
           " clipboard-end=" + std::to_string(choice.clipboardEndPercent) +
           " destination-start=" + std::to_string(choice.destinationStartPercent) +
           " destination-end=" + std::to_string(choice.destinationEndPercent);
}

double Gain(int percent) {
    return percent / 100.0;
}

// The clip on the clipboard as a sound that plays itself.
class ClipPlayer : public ClipboardPreview {
  public:
    ClipPlayer(CSoundDoc& document, const ClipRecord& clip)
        : player_(document.Services().prompts, document.Services().progress,
                  document.Services().devices) {
        player_.SetPlaybackDevice(document.Options().playbackDeviceId);
        if (auto sound = clip.Copy()) player_.Adopt(std::move(*sound));
    }
    void Play() override { player_.Play(0); }
    void Stop() override { player_.Stop(CWavePlayer::StopReport::kSilent); }

  private:
    CWavePlayer player_;
};

std::string AttributesText(const PcmFormat& format) {
    return RateText(format.samplesPerSecond) + ", " + BitsText(format.bitsPerSample) + ", " +
           ChannelsText(format.channels);
}

// The state before the redo lies in the step that the next Undo applies.
void ScrollToRedoneEdit(CSoundView& view) {
    const UndoHistory& history = view.Document().History();
    const std::optional<std::size_t> before = history.CurrentPosition();
    if (!before) return;
    const std::uint32_t frame = FirstDifferentFrame(history.StepAt(*before), view.Sound());
    if (!view.Zoom().IsFrameInSight(frame)) view.Zoom().ScrollToShow(frame);
}

}  // namespace

Outcome CutSelection(CSoundView& view) {
    return FinishRemoval(view, edit::Cut(view.Document(), EditPlace(view)));
}

Outcome CropToSelection(CSoundView& view) {
    return FinishRemoval(view, edit::Crop(view.Document(), EditPlace(view)));
}

Outcome RemoveRanges(CSoundView& view, std::span<const FrameRange> ranges) {
    return FinishRemoval(view, edit::RemoveRanges(view.Document(), EditPlace(view), ranges));
}

Outcome InsertSilence(CSoundView& view, std::uint32_t frames) {
    const DescribedStep step(view.Document().Steps(),
                             WordsAt(view, "insert-silence " + std::to_string(frames)));
    return Finish(view, edit::InsertSilence(view.Document(), EditPlace(view), frames));
}

Outcome CopySelection(CSoundView& view) {
    const Selection selection = view.State().GetSelection();
    return edit::CopyRange(view.Document(), selection.start, selection.end);
}

Outcome DeleteSelection(CSoundView& view) {
    return FinishRemoval(view, edit::Delete(view.Document(), EditPlace(view)));
}

Outcome Paste(CSoundView& view) {
    if (Outcome ready = PrepareClip(view); !ready) return ready;
    return Finish(view, edit::Paste(view.Document(), view.Host().Clip(), EditPlace(view)));
}

Outcome PasteOverwrite(CSoundView& view) {
    return PasteWith(view, edit::PasteOverwrite);
}
Outcome PasteBlockOverwrite(CSoundView& view) {
    return PasteWith(view, edit::PasteBlockOverwrite);
}
Outcome PasteBlockCopy(CSoundView& view) {
    return PasteWith(view, edit::PasteBlockCopy);
}

Outcome PasteNew(CSoundView& view) {
    if (view.State().HasSelection())
        if (Outcome copied = CopySelection(view); !copied) return copied;
    if (Outcome ready = PrepareClip(view); !ready) return ready;
    return view.Host().NewDocumentFromClip();
}

Outcome UndoEdit(CSoundView& view) {
    if (Outcome undone = view.Document().Undo(); !undone) return undone;
    view.Zoom().FitTime();
    view.Repaint().TimeAreas();
    return Done();
}

Outcome RedoEdit(CSoundView& view) {
    if (Outcome redone = view.Document().Redo(); !redone) return redone;
    ScrollToRedoneEdit(view);
    view.Repaint().TimeAreas();
    return Done();
}

// --- Those with a dialog

Outcome PrepareClip(CSoundView& view) {
    return edit::PrepareClip(view.Document(), view.Host().Clip());
}

Result<MixQuestion> PrepareMix(CSoundView& view) {
    if (Outcome ready = PrepareClip(view); !ready) return ready;
    return QuestionOfMix(view);
}

Outcome PasteReplicate(CSoundView& view, int count) {
    if (count < 1 || count > kHighestReplicateCount)
        return Failed("A clip is pasted 1 to 1000 times.");
    const DescribedStep step(view.Document().Steps(),
                             WordsOfPaste(view, "paste-replicate " + std::to_string(count)));
    return Finish(view, edit::Paste(view.Document(), view.Host().Clip(), EditPlace(view),
                                    static_cast<std::uint32_t>(count)));
}

Outcome MixClipboard(CSoundView& view, const MixChoice& choice) {
    const DescribedStep step(
        view.Document().Steps(),
        WordsOfPaste(view, "mix clipboard=" + std::to_string(choice.clipboardPercent) +
                               " destination=" + std::to_string(choice.destinationPercent)));
    const edit::MixGains gains = {Gain(choice.clipboardPercent), Gain(choice.destinationPercent)};
    return Finish(view, edit::Mix(view.Document(), view.Host().Clip(), EditPlace(view), gains));
}

Outcome CrossfadeMixClipboard(CSoundView& view, const CrossfadeChoice& choice) {
    const DescribedStep step(view.Document().Steps(), WordsOfPaste(view, CommandOf(choice)));
    edit::CrossfadeGains gains;
    gains.start = {Gain(choice.clipboardStartPercent), Gain(choice.destinationStartPercent)};
    gains.end = {Gain(choice.clipboardEndPercent), Gain(choice.destinationEndPercent)};
    return Finish(view,
                  edit::CrossfadeMix(view.Document(), view.Host().Clip(), EditPlace(view), gains));
}

Result<ClipboardContents> ReadClipboardContents(CSoundView& view) {
    ClipRecord& clip = view.Host().Clip();
    if (!ReadClipboard(view.Document().Services().clipboard, clip) || !clip.present)
        return Failed("The clipboard holds no wave data.");
    return ClipboardContents{AttributesText(clip.GetFormat()), clip.GetDataSize(),
                             clip.GetFrameCount(), clip.GetDuration()};
}

std::unique_ptr<ClipboardPreview> MakeClipPlayer(CSoundView& view) {
    return std::make_unique<ClipPlayer>(view.Document(), view.Host().Clip());
}

}  // namespace sonavel
