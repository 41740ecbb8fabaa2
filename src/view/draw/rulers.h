// The rulers at the edges of the waveform as plain numbers: ticks and labels in client coordinates.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "view/draw/text_width.h"
#include "view/state/display_settings.h"
#include "view/state/level_map.h"
#include "view/state/pixel_map.h"
#include "view/state/rectangle.h"
#include "view/state/selection.h"

namespace sonavel {

enum class TickSize { kMinor, kMajor };

struct TimeTick {
    std::int64_t frame = 0;
    int x = 0;
    TickSize size = TickSize::kMinor;

    bool operator==(const TimeTick&) const = default;
};

// A label stands right of its major tick, from `x` on.
struct TimeLabel {
    std::int64_t frame = 0;
    int x = 0;
    std::string text;
};

struct HorizontalRulerRequest {
    Rectangle area;  // the waveform's left edge to the right end of the ruler
    PixelMap map;
    std::uint32_t samplesPerSecond = 0;
    StatusFormat format = StatusFormat::kTime;
    std::int64_t cursor = 0;
    Selection selection;
};

// Where the cursor and the ends of the selection are marked; nothing where they are out of sight.
struct HorizontalRuler {
    std::vector<TimeTick> ticks;    // from left to right, within the area and the sound
    std::vector<TimeLabel> labels;  // never touching; the first may begin left of the area
    std::optional<int> cursorX;
    std::optional<int> selectionStartX;
    std::optional<int> selectionEndX;
};

HorizontalRuler LayOutHorizontalRuler(const HorizontalRulerRequest& request,
                                      const TextWidth& textWidth);

struct VerticalRulerRequest {
    Rectangle area;
    std::span<const Rectangle> lanes;  // from top to bottom
    ScrollState vertical;
    std::int64_t fullScale = 0;
    int labelHeight = 0;  // the rows that a label needs for itself
    int labelAbove = 6;   // its top above its tick
};

struct LevelTick {
    int y = 0;          // client coordinates; the tick is 3 pixels long from the ruler's left edge
    int percent = 0;    // -100 .. 100
    std::string label;  // empty without one; labels never touch
    int labelX = 0;     // left and top of the label
    int labelY = 0;
};

// The ticks beside all lanes, from top to bottom. In a low lane fewer of them are labelled, at even
// distances from the centre.
std::vector<LevelTick> LayOutVerticalRuler(const VerticalRulerRequest& request);

}  // namespace sonavel
