// The waveform of one channel as columns of pixels. Drawn in order they are one polyline: from the
// start point to the first column's maximum, down to its minimum, on to the next column's maximum.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sound/sound.h"
#include "view/draw/block_extremes.h"
#include "view/state/pixel_map.h"
#include "view/state/rectangle.h"
#include "view/state/selection.h"

namespace sonavel {

// The line from a column to the next one's maximum has the pen of the column that it comes from;
// the line from the start point has the normal pen.
enum class ColumnPen { kNormal, kSelected };

// In client coordinates. A value above the lane has the y top - 2, one below it the lane's bottom.
struct EnvelopeColumn {
    int x = 0;
    int yMax = 0;
    int yMin = 0;
    ColumnPen pen = ColumnPen::kNormal;

    bool operator==(const EnvelopeColumn&) const = default;
};

// Columns [first, last), counted from the lane's left edge.
struct ColumnRange {
    int first = 0;
    int last = 0;
};

struct EnvelopeRequest {
    const Sound& wave;
    const BlockExtremes& extremes;
    unsigned channel = 0;
    Rectangle lane;
    ScrollState horizontal;
    ScrollState vertical;
    Selection selection;
};

enum class LineVisibility { kHidden, kShown };

// What is drawn of a lane beside its columns, in client coordinates.
struct LaneLines {
    int columnCount = 0;  // 0: nothing is drawn, not even the lines
    std::optional<int> endOfSoundX;
    std::optional<int> centreY;
    int centreLeft = 0;
    int centreRight = 0;
    // The polyline starts there and goes to the maximum of the first drawn column, if there is one.
    int startX = 0;
    int startY = 0;
    std::optional<int> firstColumnX;
};

LaneLines LinesOfLane(const EnvelopeRequest& request, LineVisibility centreLine);

// All columns of the lane.
std::vector<EnvelopeColumn> EnvelopeColumns(const EnvelopeRequest& request);
// Those of a strip, and the one before and behind it (where there is one), whose joining lines
// reach into the strip.
std::vector<EnvelopeColumn> EnvelopeColumns(const EnvelopeRequest& request, ColumnRange strip);

// The extremes of the frames [startFrame, endFrame) of a channel, read one by one and no further
// than to the first place at which both signs have reached full scale. Frames behind the end are
// silence.
SampleExtremes ReadExtremes(const Sound& wave, unsigned channel, std::int64_t startFrame,
                            std::int64_t endFrame);

}  // namespace sonavel
