#include "view/rulers.h"

#include <algorithm>

#include "view/status_texts.h"
#include "view/time_steps.h"

namespace sonavel {
namespace {

constexpr int kLabelOffset = 3;  // pixels from a major tick to its label
constexpr int kLabelGap = 6;     // least distance between two labels
constexpr int kLeastTickDistance = 4;
constexpr int kLevelLabelRight = 5;  // of the ruler's left edge
constexpr int kLevelLabelAbove = 6;  // above its tick

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

std::vector<LevelTick> LayOutVerticalRuler(const Rectangle& ruler, const LevelMap& levels) {
    std::vector<LevelTick> ticks;
    const LevelDivisions divisions = DivisionsAt(levels.Zoom());
    for (int i = divisions.count; i >= -divisions.count; --i) {
        const std::int64_t value = i * (levels.FullScale() / 2) / divisions.count;
        const std::int64_t y = levels.Y(value);
        if (y < 0 || y >= ruler.Height()) continue;
        LevelTick tick;
        tick.y = ruler.top + static_cast<int>(y);
        tick.percent = i * divisions.percent;
        if (i % 2 == 0) tick.label = std::to_string(tick.percent);
        tick.labelX = ruler.left + kLevelLabelRight;
        tick.labelY = tick.y - kLevelLabelAbove;
        ticks.push_back(std::move(tick));
    }
    return ticks;
}

}  // namespace sonavel
