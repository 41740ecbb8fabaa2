#include "view/ui/waveform_look.h"

#include <cmath>

#include "view/ui/qt_values.h"

namespace sonavel {

WaveformLook WaveformLook::Of(const CSoundView& view, double pixelRatio) {
    WaveformLook look;
    const ViewGeometry& geometry = view.State().Geometry();
    look.waveform = geometry.waveform;
    look.channels = view.Sound().GetChannels();
    for (unsigned channel = 0; channel < look.channels && channel < look.lanes.size(); ++channel) {
        if (geometry.ShowsEnvelope()) look.lanes[channel] = geometry.Lane(channel, look.channels);
        if (geometry.ShowsSpectrogram())
            look.spectrogramLanes[channel] = geometry.SpectrogramLane(channel, look.channels);
    }
    look.spectrogram = view.Settings().spectrogram;
    look.samplesPerSecond = view.Sound().GetSamplesPerSecond();
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
    look.gridTextPixels = RulerFont(RulerRoom::kRow).pixelSize();
    look.pixelRatio = pixelRatio;
    return look;
}

std::int64_t WaveformLook::ToDevice(std::int64_t pixels) const {
    return std::llround(static_cast<double>(pixels) * pixelRatio);
}

SpectrogramScene WaveformLook::Scene() const {
    const Rectangle& lane = spectrogramLanes[0];
    return {.look = spectrogram.look,
            .height = static_cast<unsigned>(ToDevice(lane.bottom) - ToDevice(lane.top)),
            .channels = channels,
            .samplesPerSecond = samplesPerSecond,
            .frameCount = frameCount,
            .virtualWidth = ToDevice(horizontal.maximum)};
}

ColumnSpan WaveformLook::VisibleColumns() const {
    const std::int64_t first = ToDevice(horizontal.position);
    return {first, first + ToDevice(waveform.Width())};
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
