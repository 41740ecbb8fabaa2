// Where the parts of a view lie within its client area.
#pragma once

#include "view/state/display_settings.h"
#include "view/state/pixel_map.h"
#include "view/state/rectangle.h"
#include "view/state/selection.h"

namespace sonavel {

enum class RulerVisibility { kHidden, kShown };

struct GeometryRequest {
    Rectangle client;
    RulerVisibility horizontalRuler = RulerVisibility::kShown;
    RulerVisibility verticalRuler = RulerVisibility::kShown;
    int verticalScrollBarWidth = 16;  // the host's own
    SoundPicture picture = SoundPicture::kWaveform;
};

// A client area too small for a part gives that part no width or no height, never a negative one.
struct ViewGeometry {
    Rectangle horizontalScrollBar;
    Rectangle verticalScrollBar;
    Rectangle timeZoomButton;
    Rectangle levelZoomButton;
    Rectangle zoomerButton;
    // Where time runs: for mouse, selection and cursor one area, whatever it shows.
    Rectangle waveform;
    // Its parts. What the picture leaves out has no height, but for the envelope, whose zoom goes
    // on without being seen.
    Rectangle envelope;
    Rectangle spectrogram;
    SoundPicture picture = SoundPicture::kWaveform;
    Rectangle verticalRuler;
    Rectangle markerStrip;
    Rectangle horizontalRuler;

    static ViewGeometry Layout(const GeometryRequest& request);

    bool ShowsEnvelope() const { return picture != SoundPicture::kSpectrogram; }
    bool ShowsSpectrogram() const { return picture != SoundPicture::kWaveform; }
    // The rectangle in which a channel's envelope is drawn: all of it for mono, a half each for
    // stereo; and that of its spectrogram.
    Rectangle Lane(unsigned channel, unsigned channels) const;
    Rectangle SpectrogramLane(unsigned channel, unsigned channels) const;

    bool operator==(const ViewGeometry&) const = default;
};

// What lies over the waveform, in client coordinates; empty rectangles where nothing is to be seen.
// The background of the selection reaches from its first to its last column, one pixel to the
// right.
Rectangle SelectionRect(const Rectangle& waveform, const PixelMap& map, const Selection& selection);
// The one-pixel column of the cursor; it stays inside at the waveform's right edge.
Rectangle CursorRect(const Rectangle& waveform, const PixelMap& map, std::int64_t cursor);

}  // namespace sonavel
