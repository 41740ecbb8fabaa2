#include "view/draw/envelope.h"

#include <algorithm>
#include <span>

#include "sound/sample_scan.h"
#include "view/state/level_map.h"

namespace sonavel {
namespace {

constexpr SampleExtremes kNothingRead{-INT32_MAX, INT32_MAX};

SampleExtremes Joined(const SampleExtremes& a, const SampleExtremes& b) {
    return {std::max(a.maximum, b.maximum), std::min(a.minimum, b.minimum)};
}

// One channel of interleaved stored samples.
template <class Type>
struct ChannelRun {
    std::span<const typename Type::Stored> samples;
    unsigned channels = 1;
    unsigned channel = 0;

    std::int64_t Frames() const { return static_cast<std::int64_t>(samples.size()) / channels; }
    std::int32_t Level(std::int64_t frame) const {
        return Type::LevelOf(samples[static_cast<std::size_t>(frame) * channels + channel]);
    }
};

template <class Type>
SampleExtremes ReadAll(const ChannelRun<Type>& run, std::int64_t start, std::int64_t end) {
    const auto first = static_cast<std::size_t>(start) * run.channels;
    const auto count = static_cast<std::size_t>(end - start) * run.channels;
    const auto stored = ScanStored(run.samples.subspan(first, count), run.channels);
    return LevelsOf<Type>(stored, run.channel);
}

// Stops at full scale on both sides, which may leave a still larger value unread.
template <class Type>
SampleExtremes ReadUntilFullScale(const ChannelRun<Type>& run, std::int64_t start, std::int64_t end,
                                  std::int32_t half) {
    SampleExtremes extremes = kNothingRead;
    for (std::int64_t frame = start; frame < end; ++frame) {
        const std::int32_t level = run.Level(frame);
        extremes = Joined(extremes, {level, level});
        if (extremes.maximum >= half && -extremes.minimum >= half) break;
    }
    return extremes;
}

template <class Type>
SampleExtremes ReadRun(const ChannelRun<Type>& run, std::int64_t start, std::int64_t end,
                       std::int32_t half) {
    const std::int64_t inside = std::min(end, run.Frames());
    SampleExtremes extremes = kNothingRead;
    if (start < inside) {
        extremes = ReadAll(run, start, inside);
        // Only where the stop would have come can it matter where it came.
        if (extremes.maximum >= half && -extremes.minimum >= half) {
            extremes = ReadUntilFullScale(run, start, inside, half);
        }
    }
    return end > std::max(start, inside) ? Joined(extremes, {0, 0}) : extremes;
}

// The columns of one lane, with what all of them share.
class LaneColumns {
  public:
    LaneColumns(const EnvelopeRequest& request, int columnCount)
        : request_(request),
          columnCount_(columnCount),
          map_(request.wave.GetFrameCount(), request.horizontal),
          levels_(request.vertical, FullScaleOf(request.wave.GetBits()), request.lane.Height()) {}

    // Where the virtual width exceeds the sound, only the last of the columns that show the same
    // frame is drawn.
    bool IsDrawn(int x) const { return map_.FrameAt(x) != map_.FrameAt(x + 1); }

    EnvelopeColumn At(int x) const {
        const std::int64_t start = map_.FrameAt(x);
        const std::int64_t end = map_.FrameAt(x + 1);
        const SampleExtremes extremes = Extremes(start, end);
        const int top = request_.lane.top;
        return {request_.lane.left + x, top + levels_.DrawnY(extremes.maximum),
                top + levels_.DrawnY(extremes.minimum), Pen(start, end)};
    }

    std::optional<int> FirstDrawnX() const {
        for (int x = 0; x < columnCount_; ++x)
            if (IsDrawn(x)) return request_.lane.left + x;
        return std::nullopt;
    }

    void Append(ColumnRange range, std::vector<EnvelopeColumn>& columns) const {
        for (int x = range.first; x < range.last; ++x) {
            if (IsDrawn(x)) columns.push_back(At(x));
        }
    }

    ColumnRange WithNeighbours(ColumnRange strip) const {
        strip.first = std::clamp(strip.first, 0, columnCount_);
        strip.last = std::clamp(strip.last, strip.first, columnCount_);
        const auto drawn = [this](int x) { return IsDrawn(x); };
        if (strip.first > 0) --strip.first;
        while (strip.first > 0 && !drawn(strip.first)) --strip.first;
        while (strip.last < columnCount_ && !drawn(strip.last)) ++strip.last;
        strip.last = std::min(strip.last + 1, columnCount_);
        return strip;
    }

  private:
    SampleExtremes Extremes(std::int64_t start, std::int64_t end) const {
        if (end - start < BlockExtremes::kFramesPerBlock) {
            return ReadExtremes(request_.wave, request_.channel, start, end);
        }
        return request_.extremes.Over(request_.channel, start, end);
    }

    // A column that the selection touches only in part is drawn as unselected.
    ColumnPen Pen(std::int64_t start, std::int64_t end) const {
        const Selection& selection = request_.selection;
        const bool outside = selection.IsEmpty() || start < selection.start || end > selection.end;
        return outside ? ColumnPen::kNormal : ColumnPen::kSelected;
    }

    const EnvelopeRequest& request_;
    int columnCount_;
    PixelMap map_;
    LevelMap levels_;
};

int ColumnCount(const EnvelopeRequest& request) {
    const std::int64_t frames = request.wave.GetFrameCount();
    if (frames < 1 || request.horizontal.maximum <= 0) return 0;
    // The lane's width counts here, not the virtual width: a short sound zoomed beyond one frame a
    // pixel ends where it would end without that zoom.
    return static_cast<int>(std::min<std::int64_t>(std::max(request.lane.Width(), 0), frames));
}

}  // namespace

LaneLines LinesOfLane(const EnvelopeRequest& request, LineVisibility centreLine) {
    LaneLines lines;
    lines.columnCount = ColumnCount(request);
    if (lines.columnCount == 0) return lines;
    const Rectangle& lane = request.lane;
    const int end = lane.left + lines.columnCount;
    if (lines.columnCount < lane.Width()) lines.endOfSoundX = end;
    lines.startX = lane.left;
    lines.startY = (lane.top + lane.bottom) / 2;
    lines.firstColumnX = LaneColumns(request, lines.columnCount).FirstDrawnX();
    lines.centreLeft = lane.left;
    lines.centreRight = end;
    const LevelMap levels(request.vertical, FullScaleOf(request.wave.GetBits()), lane.Height());
    const std::int64_t y = levels.CentreY();
    if (centreLine == LineVisibility::kShown && y >= 0 && y < lane.Height()) {
        lines.centreY = lane.top + static_cast<int>(y);
    }
    return lines;
}

std::vector<EnvelopeColumn> EnvelopeColumns(const EnvelopeRequest& request) {
    return EnvelopeColumns(request, {0, ColumnCount(request)});
}

std::vector<EnvelopeColumn> EnvelopeColumns(const EnvelopeRequest& request, ColumnRange strip) {
    std::vector<EnvelopeColumn> columns;
    const int count = ColumnCount(request);
    if (count == 0) return columns;
    const LaneColumns lane(request, count);
    const ColumnRange range = lane.WithNeighbours(strip);
    columns.reserve(static_cast<std::size_t>(range.last - range.first));
    lane.Append(range, columns);
    return columns;
}

SampleExtremes ReadExtremes(const Sound& wave, unsigned channel, std::int64_t startFrame,
                            std::int64_t endFrame) {
    const unsigned channels = std::max(wave.GetChannels(), 1u);
    const auto half = static_cast<std::int32_t>(FullScaleOf(wave.GetBits()) / 2 - 1);
    return VisitSampleType(wave.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const ChannelRun<Type> run{SamplesOf<Type>(wave.Bytes()), channels, channel};
        return ReadRun(run, startFrame, endFrame, half);
    });
}

}  // namespace sonavel
