#include "view/ui/waveform_look.h"

namespace sonavel {

WaveformLook WaveformLook::Of(const CSoundView& view, double pixelRatio) {
    WaveformLook look;
    const ViewGeometry& geometry = view.State().Geometry();
    look.waveform = geometry.waveform;
    look.channels = view.Sound().GetChannels();
    for (unsigned channel = 0; channel < look.channels && channel < look.lanes.size(); ++channel)
        look.lanes[channel] = geometry.Lane(channel, look.channels);
    look.frameCount = view.FrameCount();
    look.rate = view.Sound().GetRate();
    look.revision = view.Extremes().Revision();
    look.horizontal = view.Zoom().Horizontal();
    look.vertical = view.Zoom().Vertical();
    look.selection = view.State().GetSelection();
    look.colours = view.Settings().colours;
    look.centreLine = view.Settings().display.centreLine;
    look.grid = view.Settings().grid;
    look.statusFormat = view.Settings().statusFormat;
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
