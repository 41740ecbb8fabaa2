#include "view/draw/rulers.h"

#include <algorithm>
#include <climits>

#include "view/draw/time_steps.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

constexpr int kLabelOffset = 3;  // pixels from a major tick to its label
constexpr int kLabelGap = 6;     // least distance between two labels
constexpr int kLeastTickDistance = 4;
constexpr int kLevelLabelRight = 5;  // of the ruler's left edge

// Room for any label of the ruler: the longest one, in the widest digits.
int WidestLabel(const TimeSteps& steps, const TextWidth& textWidth) {
    std::string text = steps.Label(steps.LastUnit());
    int width = textWidth(text);
    for (const char digit : {'0', '8'}) {
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }, digit);
        width = std::max(width, textWidth(text));
    }
    return width;
}

class RulerLayout {
  public:
    RulerLayout(const HorizontalRulerRequest& request, const TextWidth& textWidth)
        : request_(request),
          textWidth_(textWidth),
          steps_(request.format, request.samplesPerSecond, request.map),
          major_(steps_.LeastStep(WidestLabel(steps_, textWidth) + kLabelOffset + kLabelGap)),
          minor_(steps_.Subdivision(major_, kLeastTickDistance)) {}

    // The labels of a major tick left of the area may still reach into it.
    void LayOut(HorizontalRuler& ruler) {
        const std::int64_t first = steps_.UnitAt(request_.map.NearestFrameAt(0));
        std::int64_t unit = std::max<std::int64_t>(first / major_ - 1, 0) * major_;
        for (; steps_.FrameOf(unit) <= request_.map.FrameCount(); unit += minor_) {
            const std::int64_t x = request_.map.X(steps_.FrameOf(unit));
            if (x >= request_.area.Width()) return;
            AddTick(unit, x, ruler);
            if (unit % major_ == 0) AddLabel(unit, x, ruler);
        }
    }

  private:
    void AddTick(std::int64_t unit, std::int64_t x, HorizontalRuler& ruler) const {
        if (x < 0) return;
        const TickSize size = unit % major_ == 0 ? TickSize::kMajor : TickSize::kMinor;
        ruler.ticks.push_back(
            {steps_.FrameOf(unit), request_.area.left + static_cast<int>(x), size});
    }

    void AddLabel(std::int64_t unit, std::int64_t x, HorizontalRuler& ruler) {
        const std::string text = steps_.Label(unit);
        const std::int64_t left = x + kLabelOffset;
        const std::int64_t right = left + textWidth_(text);
        if (right <= 0 || left <= labelsEnd_) return;
        labelsEnd_ = right;
        ruler.labels.push_back(
            {steps_.FrameOf(unit), request_.area.left + static_cast<int>(left), text});
    }

    const HorizontalRulerRequest& request_;
    const TextWidth& textWidth_;
    TimeSteps steps_;
    std::int64_t major_;
    std::int64_t minor_;
    std::int64_t labelsEnd_ = INT64_MIN;
};

std::optional<int> VisibleX(const HorizontalRulerRequest& request, std::int64_t frame) {
    const std::int64_t x = request.map.X(frame);
    if (x < 0 || x >= request.area.Width()) return std::nullopt;
    return request.area.left + static_cast<int>(x);
}

struct LevelDivisions {
    int count = 10;  // of the half scale
    int percent = 10;
};

LevelDivisions DivisionsAt(double zoom) {
    if (zoom >= 15) return {100, 1};
    if (zoom >= 10) return {50, 2};
    if (zoom >= 5) return {20, 5};
    return {10, 10};
}

std::int64_t LevelOf(int tick, const LevelDivisions& divisions, const LevelMap& levels) {
    return tick * (levels.FullScale() / 2) / divisions.count;
}

// Every so many ticks, counted from the centre, carry a label: every other one where there is room.
int LabelStride(const LevelDivisions& divisions, const LevelMap& levels, int labelHeight) {
    const std::int64_t halfScale = levels.Y(0) - levels.Y(levels.FullScale() / 2);
    for (const int stride : {2, 4, 10, 20, 50, 100})
        // A row more, since truncation moves ticks by up to one.
        if (halfScale * stride / divisions.count > labelHeight) return stride;
    return divisions.count + 1;  // the centre alone
}

class LevelRulerLayout {
  public:
    explicit LevelRulerLayout(const VerticalRulerRequest& request) : request_(request) {}

    void AddLane(const Rectangle& lane) {
        const LevelMap levels(request_.vertical, request_.fullScale, lane.Height());
        const LevelDivisions divisions = DivisionsAt(levels.Zoom());
        const int stride = LabelStride(divisions, levels, request_.labelHeight);
        for (int i = divisions.count; i >= -divisions.count; --i) {
            const std::int64_t y = levels.Y(LevelOf(i, divisions, levels));
            if (y < 0 || y >= lane.Height()) continue;
            AddTick(lane.top + static_cast<int>(y), i * divisions.percent);
            if (i % stride == 0) LabelLastTick();
        }
    }

    std::vector<LevelTick> Ticks() && { return std::move(ticks_); }

  private:
    void AddTick(int y, int percent) {
        LevelTick tick;
        tick.y = y;
        tick.percent = percent;
        tick.labelX = request_.area.left + kLevelLabelRight;
        tick.labelY = y - request_.labelAbove;
        ticks_.push_back(std::move(tick));
    }

    // The lowest label of a lane may reach into the next one.
    void LabelLastTick() {
        LevelTick& tick = ticks_.back();
        if (tick.labelY < labelsEnd_) return;
        labelsEnd_ = tick.labelY + request_.labelHeight;
        tick.label = std::to_string(tick.percent);
    }

    const VerticalRulerRequest& request_;
    std::vector<LevelTick> ticks_;
    int labelsEnd_ = INT_MIN;
};

}  // namespace

HorizontalRuler LayOutHorizontalRuler(const HorizontalRulerRequest& request,
                                      const TextWidth& textWidth) {
    HorizontalRuler ruler;
    if (!request.map.Usable() || request.area.Empty()) return ruler;
    RulerLayout(request, textWidth).LayOut(ruler);
    ruler.cursorX = VisibleX(request, request.cursor);
    if (!request.selection.IsEmpty()) {
        ruler.selectionStartX = VisibleX(request, request.selection.start);
        ruler.selectionEndX = VisibleX(request, request.selection.end);
    }
    return ruler;
}

std::vector<LevelTick> LayOutVerticalRuler(const VerticalRulerRequest& request) {
    LevelRulerLayout layout(request);
    for (const Rectangle& lane : request.lanes) layout.AddLane(lane);
    return std::move(layout).Ticks();
}

}  // namespace sonavel
