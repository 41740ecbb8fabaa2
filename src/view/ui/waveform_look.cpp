#include "view/ui/waveform_look.h"

namespace sonavel {

WaveformLook WaveformLook::Of(const CSoundView& view, double pixelRatio) {
    WaveformLook look;
    const ViewGeometry& geometry = view.Geometry();
    look.waveform = geometry.waveform;
    look.channels = view.Sound().GetChannels();
    for (unsigned channel = 0; channel < look.channels && channel < look.lanes.size(); ++channel)
        look.lanes[channel] = geometry.Lane(channel, look.channels);
    look.frameCount = view.FrameCount();
    look.rate = view.Sound().GetRate();
    look.revision = view.Extremes().Revision();
    look.horizontal = view.Horizontal();
    look.vertical = view.Vertical();
    look.selection = view.GetSelection();
    look.colours = view.Colours();
    look.centreLine = view.Settings().centreLine;
    look.grid = view.Grid();
    look.statusFormat = view.GetStatusFormat();
    look.pixelRatio = pixelRatio;
    return look;
}

LookChange ChangeBetween(const WaveformLook& before, const WaveformLook& after) {
    if (before == after) return LookChange::kNone;
    WaveformLook scrolled = before;
    scrolled.horizontal.position = after.horizontal.position;
    if (scrolled == after) return LookChange::kPosition;
    WaveformLook selected = before;
    selected.selection = after.selection;
    if (selected == after) return LookChange::kSelection;
    return LookChange::kAll;
}

}  // namespace sonavel
