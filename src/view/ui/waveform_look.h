// Everything that the picture of the waveform area hangs on, as one comparable value; what differs
// between two looks tells how little must be drawn anew.
#pragma once

#include <array>
#include <cstdint>

#include "view/sound_view.h"

namespace sonavel {

struct WaveformLook {
    Rectangle waveform;              // client coordinates
    std::array<Rectangle, 2> lanes;  // empty where no envelopes are shown
    std::array<Rectangle, 2> spectrogramLanes;
    SpectrogramSettings spectrogram;
    std::uint32_t samplesPerSecond = 0;
    unsigned channels = 0;
    std::int64_t frameCount = 0;
    std::uint32_t rate = 0;
    std::uint64_t revision = 0;  // of the samples
    ScrollState horizontal;
    ScrollState vertical;
    Selection selection;
    ColourTable colours;
    int centreLine = 0;
    GridSettings grid;
    StatusFormat statusFormat = StatusFormat::kTime;
    int gridTextPixels = 0;
    double pixelRatio = 1;  // device pixels of a pixel

    static WaveformLook Of(const CSoundView& view, double pixelRatio);
    bool ShowsSpectrogram() const { return !spectrogramLanes[0].Empty(); }
    // In device pixels.
    SpectrogramScene Scene() const;
    ColumnSpan VisibleColumns() const;
    std::int64_t ToDevice(std::int64_t pixels) const;
    bool operator==(const WaveformLook&) const = default;
};

enum class LookChange {
    kNone,
    kPosition,   // scrolled in time, nothing else
    kSelection,  // another selection, nothing else
    kAll,
};

LookChange ChangeBetween(const WaveformLook& before, const WaveformLook& after);

}  // namespace sonavel
