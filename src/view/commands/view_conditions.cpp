#include "view/commands/view_conditions.h"

#include "view/refusals.h"

namespace sonavel::view_condition {

const char* IsIdle(const CSoundView& view) {
    return view.Sound().IsRecording() ? "The sound is being recorded." : nullptr;
}

const char* HasSound(const CSoundView& view) {
    return view.Sound().HasData() ? nullptr : refusal::kNoSound;
}

const char* HasSelection(const CSoundView& view) {
    return view.State().HasSelection() ? nullptr : refusal::kNoSelection;
}

const char* HasClip(const CSoundView& view) {
    return view.Document().Services().clipboard.OffersWave() ? nullptr
                                                             : "The clipboard holds no wave data.";
}

const char* CanPlay(const CSoundView& view) {
    const char* reason = HasSound(view);
    return reason ? reason : IsIdle(view);
}

const char* CanStop(const CSoundView& view) {
    const bool active = view.Sound().IsPlaying() || view.Sound().IsRecording();
    return active ? nullptr : "Nothing is playing.";
}

const char* CanPause(const CSoundView& view) {
    const bool active = view.Sound().IsPlaying() || view.Sound().IsPaused();
    return active ? nullptr : "Nothing is playing.";
}

const char* CanUseSpace(const CSoundView& view) {
    return view.Sound().IsRecording() ? nullptr : HasSound(view);
}

const char* CanRemove(const CSoundView& view) {
    const char* reason = HasSelection(view);
    return reason ? reason : IsIdle(view);
}

const char* CanPaste(const CSoundView& view) {
    const char* reason = HasClip(view);
    return reason ? reason : IsIdle(view);
}

const char* CanOverwrite(const CSoundView& view) {
    const char* reason = HasSelection(view);
    return reason ? reason : CanPaste(view);
}

const char* CanPasteNew(const CSoundView& view) {
    return view.State().HasSelection() ? nullptr : HasClip(view);
}

const char* CanUndo(const CSoundView& view) {
    if (const char* reason = IsIdle(view)) return reason;
    return view.Document().CanUndo() ? nullptr : "There is nothing to undo.";
}

const char* CanRedo(const CSoundView& view) {
    if (const char* reason = IsIdle(view)) return reason;
    return view.Document().CanRedo() ? nullptr : "There is nothing to redo.";
}

const char* HasMarkers(const CSoundView& view) {
    return view.Sound().Markers().Empty() ? refusal::kNoMarkers : nullptr;
}

const char* CanDelete(const CSoundView& view) {
    const auto chosen = view.State().ChosenMarker();
    return chosen && view.Sound().Markers().Find(*chosen) ? nullptr : CanRemove(view);
}

const char* HadSelection(const CSoundView& view) {
    return view.State().HadSelection() ? nullptr : "There was no other selection.";
}

const char* HasZoomBack(const CSoundView& view) {
    return view.Zoom().History().HasBack() ? nullptr : "There is no zoom before this one.";
}

const char* HasZoomForward(const CSoundView& view) {
    return view.Zoom().History().HasForward() ? nullptr : "There is no zoom after this one.";
}

const char* CanMakeRegion(const CSoundView& view) {
    const char* reason = HasMarkers(view);
    return reason ? reason : HasSelection(view);
}

}  // namespace sonavel::view_condition
