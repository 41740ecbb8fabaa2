#include "view/draw/grid.h"

#include <algorithm>
#include <cstdio>

namespace sonavel {
namespace {

constexpr int kGapHeight = 20;
constexpr int kGapTickReach = 3;  // pixels on each side of the line
constexpr std::int64_t kLevelUnits = 200;

// Adds the lines of a time grid to a lane, x counted from the lane's left edge.
class TimeLines {
  public:
    TimeLines(const GridRequest& request, const TextWidth& textWidth, Grid& grid)
        : lane_(request.lane),
          withGap_(request.settings.timeLabels != 0),
          gapTop_(request.lane.bottom - request.lane.Height() / 5),
          textWidth_(textWidth),
          grid_(grid) {}

    bool Shows(std::int64_t x) const { return x >= 1 && x < lane_.Width(); }
    bool WithLabels() const { return withGap_; }

    void AddLine(int x) {
        if (x == lastX_) return;  // many lines may share a pixel
        lastX_ = x;
        const int clientX = lane_.left + x;
        if (!withGap_) {
            grid_.lines.push_back({clientX, lane_.top, clientX, lane_.bottom});
        } else if (HasRoomForGap(x)) {
            AddEnd(clientX, lane_.top, gapTop_, gapTop_);
            AddEnd(clientX, gapTop_ + kGapHeight, lane_.bottom, gapTop_ + kGapHeight);
        }
    }

    void AddLabel(int x, const std::string& text) {
        if (!HasRoomForGap(x)) return;
        const int width = textWidth_(text);
        const int left = lane_.left + x - width / 2;
        if (left + width > lane_.right) return;
        grid_.labels.push_back({{left, gapTop_, left + width, gapTop_ + kGapHeight}, text});
    }

  private:
    bool HasRoomForGap(int x) const {
        return gapTop_ > lane_.top && x >= kGapTickReach && x + kGapTickReach < lane_.Width();
    }

    // A piece of a line with the tick that closes the gap; nothing below a lane too low for it.
    void AddEnd(int x, int top, int bottom, int tickY) {
        if (top >= bottom) return;
        grid_.lines.push_back({x, top, x, bottom});
        grid_.lines.push_back({x - kGapTickReach, tickY, x + kGapTickReach, tickY});
    }

    Rectangle lane_;
    bool withGap_;
    int gapTop_;
    const TextWidth& textWidth_;
    Grid& grid_;
    int lastX_ = -1;
};

std::string SecondsLabel(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3f Sec", seconds);
    return text;
}

// How many lines without a label stand between two with one.
std::int64_t UnlabelledLines(const GridRequest& request, double stepSeconds,
                             const TextWidth& textWidth) {
    const PixelMap& map = request.map;
    const double endSeconds = static_cast<double>(map.FrameCount()) / request.rate;
    const std::int64_t width = textWidth(SecondsLabel(endSeconds)) / 2 * 2;
    const double stepFrames = request.rate * static_cast<double>(static_cast<float>(stepSeconds));
    const double inSound = std::min(stepFrames, static_cast<double>(map.FrameCount()));
    const std::int64_t distance = map.VirtualX(static_cast<std::int64_t>(inSound));
    if (distance >= 1) return width / distance;
    // Several lines a pixel: their true distance keeps the labels apart.
    return static_cast<std::int64_t>(static_cast<double>(width * map.FrameCount()) /
                                     (stepFrames * static_cast<double>(map.VirtualWidth())));
}

// The least frame whose virtual x is at least `x`.
std::int64_t FirstFrameAt(std::int64_t x, const PixelMap& map) {
    return (x * map.FrameCount() + map.VirtualWidth() - 1) / map.VirtualWidth();
}

// Calls visit(index, seconds, x) for each line from the lane's left edge to its right one or to the
// end of the sound.
template <typename Visit>
void VisitSpacedLines(const GridRequest& request, double step, Visit visit) {
    const PixelMap& map = request.map;
    const auto firstFrame = static_cast<double>(FirstFrameAt(map.Position() + 1, map));
    const auto endFrame = static_cast<double>(FirstFrameAt(map.VirtualWidth() + 1, map));
    float seconds = 0;
    for (std::int64_t index = 0;; ++index) {
        const double frame = request.rate * static_cast<double>(seconds);
        if (frame >= endFrame) return;
        // An hour of milliseconds may lie left of the waveform, so only what is behind that is
        // worth a division.
        if (frame >= firstFrame) {
            const std::int64_t x = map.X(static_cast<std::int64_t>(frame));
            if (x >= request.lane.Width()) return;
            visit(index, seconds, static_cast<int>(x));
        }
        // The sum is kept in single precision on purpose: the lines drift as its error grows.
        const auto next = static_cast<float>(seconds + step);
        if (next == seconds) return;
        seconds = next;
    }
}

void AddSpacedLines(const GridRequest& request, const TextWidth& textWidth, TimeLines& lines) {
    if (request.settings.widthSpacingMs <= 0 || request.rate == 0) return;
    const double step = request.settings.widthSpacingMs * 0.001;
    const std::int64_t unlabelled =
        lines.WithLabels() ? UnlabelledLines(request, step, textWidth) : 0;
    VisitSpacedLines(request, step, [&](std::int64_t index, float seconds, int x) {
        lines.AddLine(x);
        if (lines.WithLabels() && index % (unlabelled + 1) == 0) {
            lines.AddLabel(x, SecondsLabel(seconds));
        }
    });
}

void AddRulerLines(const GridRequest& request, const TextWidth& textWidth, TimeLines& lines) {
    HorizontalRulerRequest rulerRequest;
    rulerRequest.area = request.lane;
    rulerRequest.map = request.map;
    rulerRequest.samplesPerSecond = request.rate;
    rulerRequest.format = request.format;
    const HorizontalRuler ruler = LayOutHorizontalRuler(rulerRequest, textWidth);
    for (const TimeTick& tick : ruler.ticks) {
        const int x = tick.x - request.lane.left;
        if (tick.size == TickSize::kMajor && lines.Shows(x)) lines.AddLine(x);
    }
    if (!lines.WithLabels()) return;
    for (const TimeLabel& label : ruler.labels) {
        const std::int64_t x = request.map.X(label.frame);
        if (lines.Shows(x)) lines.AddLabel(static_cast<int>(x), label.text);
    }
}

void AddLevelLines(const GridRequest& request, Grid& grid) {
    const std::int64_t spacing = request.settings.heightSpacingPercent;
    if (spacing <= 0) return;
    const Rectangle& lane = request.lane;
    for (std::int64_t k = spacing; k < kLevelUnits; k += spacing) {
        const std::int64_t y =
            request.vertical.Range() * k / kLevelUnits - request.vertical.position;
        if (y < 1 || y >= lane.Height()) continue;
        const int clientY = lane.top + static_cast<int>(y);
        grid.lines.push_back({lane.left, clientY, lane.right, clientY});
    }
}

}  // namespace

Grid LayOutGrid(const GridRequest& request, const TextWidth& textWidth) {
    Grid grid;
    if (!request.map.Usable()) return grid;
    if (request.settings.timeGrid != 0) {
        TimeLines lines(request, textWidth, grid);
        if (request.settings.type == 1) {
            AddRulerLines(request, textWidth, lines);
        } else {
            AddSpacedLines(request, textWidth, lines);
        }
    }
    if (request.settings.levelGrid != 0) AddLevelLines(request, grid);
    return grid;
}

}  // namespace sonavel
