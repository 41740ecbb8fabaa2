#include "view/commands/edit_commands.h"

#include "document/clip_image.h"
#include "document/edit_operations.h"
#include "sound/failure_texts.h"
#include "sound/sound_texts.h"
#include "view/draw/first_difference.h"

namespace sonavel {
namespace {

EditSelection EditPlace(const CSoundView& view) {
    return {view.State().GetSelection().start, view.State().GetSelection().end,
            view.State().Cursor()};
}

bool RefuseAsDocument(CSoundView& view) {
    const std::string& reason = view.Document().LastError();
    return view.Refuse(reason.empty() ? "The command could not be carried out." : reason);
}

// Takes over where an edit leaves selection and cursor.
bool Finish(CSoundView& view, const EditResult& result) {
    if (!result.done) return RefuseAsDocument(view);
    view.State().SetSelection(result.selection.startFrame, result.selection.endFrame);
    view.State().SetCursor(result.selection.cursorFrame);
    view.Repaint().TimeAreas();
    return true;
}

bool FinishRemoval(CSoundView& view, const EditResult& result) {
    if (result.done && view.State().WaveformWidth() > std::int64_t{view.FrameCount()})
        view.Zoom().FitTime();
    return Finish(view, result);
}

bool Prepare(CSoundView& view) {
    return edit::PrepareClip(view.Document(), view.Host().Clip()) || RefuseAsDocument(view);
}

using OverwriteOperation = EditResult (*)(CSoundDoc&, const ClipRecord&, const EditSelection&);

bool Overwrite(CSoundView& view, OverwriteOperation operation) {
    return Prepare(view) &&
           Finish(view, operation(view.Document(), view.Host().Clip(), EditPlace(view)));
}

// Without a selection the range is that of the clip, both ends inside.
MixRange RangeOfMix(CSoundView& view) {
    const unsigned bits = view.Sound().GetBits();
    if (view.State().HasSelection())
        return {view.State().GetSelection().start, view.State().GetSelection().end, bits};
    const std::uint32_t frames = view.Host().Clip().GetFrameCount();
    return {view.State().Cursor(), view.State().Cursor() + (frames > 0 ? frames - 1 : 0), bits};
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
    const UndoStep& step = history.StepAt(*before);
    const std::uint32_t frame =
        step.holds == UndoStep::Holds::kMarkers
            ? FirstDifferentFrame(step.sound.Markers(), view.Sound().Markers())
            : FirstDifferentFrame(step.sound, view.Sound());
    if (!view.Zoom().IsFrameInSight(frame)) view.Zoom().ScrollToShow(frame);
}

}  // namespace

bool CutSelection(CSoundView& view) {
    return FinishRemoval(view, edit::Cut(view.Document(), EditPlace(view)));
}

bool CopySelection(CSoundView& view) {
    const Selection selection = view.State().GetSelection();
    return edit::CopyRange(view.Document(), selection.start, selection.end) ||
           RefuseAsDocument(view);
}

bool DeleteSelection(CSoundView& view) {
    return FinishRemoval(view, edit::Delete(view.Document(), EditPlace(view)));
}

bool Paste(CSoundView& view) {
    return Prepare(view) &&
           Finish(view, edit::Paste(view.Document(), view.Host().Clip(), EditPlace(view)));
}

bool PasteReplicate(CSoundView& view) {
    if (!Prepare(view)) return false;
    const std::optional<int> count = view.Dialogs().AskReplicateCount(1);
    if (!count) return view.Refuse(failure::kCancelled);
    if (*count < 1 || *count > kHighestReplicateCount)
        return view.Refuse("A clip is pasted 1 to 1000 times.");
    return Finish(view, edit::Paste(view.Document(), view.Host().Clip(), EditPlace(view),
                                    static_cast<std::uint32_t>(*count)));
}

bool PasteOverwrite(CSoundView& view) {
    return Overwrite(view, edit::PasteOverwrite);
}
bool PasteBlockOverwrite(CSoundView& view) {
    return Overwrite(view, edit::PasteBlockOverwrite);
}
bool PasteBlockCopy(CSoundView& view) {
    return Overwrite(view, edit::PasteBlockCopy);
}

bool PasteNew(CSoundView& view) {
    if (view.State().HasSelection() && !CopySelection(view)) return false;
    if (!Prepare(view)) return false;
    return view.Host().NewDocumentFromClip() || view.Refuse(view.Host().LastError());
}

bool MixClipboard(CSoundView& view) {
    if (!Prepare(view)) return false;
    const std::optional<MixChoice> choice = view.Dialogs().AskMix(RangeOfMix(view), {});
    if (!choice) return view.Refuse(failure::kCancelled);
    const edit::MixGains gains = {Gain(choice->clipboardPercent), Gain(choice->destinationPercent)};
    return Finish(view, edit::Mix(view.Document(), view.Host().Clip(), EditPlace(view), gains));
}

bool CrossfadeMixClipboard(CSoundView& view) {
    if (!Prepare(view)) return false;
    const std::optional<CrossfadeChoice> choice = view.Dialogs().AskCrossfade(RangeOfMix(view), {});
    if (!choice) return view.Refuse(failure::kCancelled);
    edit::CrossfadeGains gains;
    gains.start = {Gain(choice->clipboardStartPercent), Gain(choice->destinationStartPercent)};
    gains.end = {Gain(choice->clipboardEndPercent), Gain(choice->destinationEndPercent)};
    return Finish(view,
                  edit::CrossfadeMix(view.Document(), view.Host().Clip(), EditPlace(view), gains));
}

bool ShowClipboardContents(CSoundView& view) {
    ClipRecord& clip = view.Host().Clip();
    if (!ReadClipboard(view.Document().Services().clipboard, clip) || !clip.present)
        return view.Refuse("The clipboard holds no wave data.");
    ClipPlayer player(view.Document(), clip);
    view.Dialogs().ShowClipboardContents({AttributesText(clip.GetFormat()), clip.GetDataSize(),
                                          clip.GetFrameCount(), clip.GetDuration()},
                                         player);
    return true;
}

bool UndoEdit(CSoundView& view) {
    if (!view.Document().Undo()) return view.Refuse("There is nothing to undo.");
    view.Zoom().FitTime();
    view.Repaint().TimeAreas();
    return true;
}

bool RedoEdit(CSoundView& view) {
    if (!view.Document().Redo()) return view.Refuse("There is nothing to redo.");
    ScrollToRedoneEdit(view);
    view.Repaint().TimeAreas();
    return true;
}

}  // namespace sonavel
