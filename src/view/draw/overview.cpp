#include "view/draw/overview.h"

#include <algorithm>
#include <cmath>

#include "view/draw/envelope.h"
#include "view/state/level_map.h"

namespace sonavel {
namespace {

constexpr int kLeastFrameWidth = 5;

SampleExtremes ExtremesOf(const Sound& sound, const BlockExtremes& extremes, std::int64_t start,
                          std::int64_t end) {
    SampleExtremes all;
    for (unsigned channel = 0; channel < extremes.Channels(); ++channel) {
        const SampleExtremes one = end - start < BlockExtremes::kFramesPerBlock
                                       ? ReadExtremes(sound, channel, start, end)
                                       : extremes.Over(channel, start, end);
        all = channel == 0 ? one
                           : SampleExtremes{std::max(all.maximum, one.maximum),
                                            std::min(all.minimum, one.minimum)};
    }
    return all;
}

double VirtualPerPixel(const PixelMap& view, int width) {
    return static_cast<double>(view.VirtualWidth()) / std::max(width, 1);
}

}  // namespace

std::vector<OverviewColumn> OverviewColumns(const Sound& sound, const BlockExtremes& extremes,
                                            int width, int height) {
    std::vector<OverviewColumn> columns;
    const std::int64_t frames = sound.GetFrameCount();
    if (frames < 1 || width < 1 || height < 1) return columns;
    columns.reserve(static_cast<std::size_t>(width));
    const LevelMap levels(ScrollState{0, height, kWholeRangePage, 0}.Clamped(),
                          FullScaleOf(sound.GetBits()), height);
    for (std::int64_t x = 0; x < width; ++x) {
        const std::int64_t start = x * frames / width;
        const std::int64_t end = std::max((x + 1) * frames / width, start + 1);
        const SampleExtremes loud = ExtremesOf(sound, extremes, start, end);
        const int top = std::clamp(levels.DrawnY(loud.maximum), 0, height - 1);
        const int bottom = std::clamp(levels.DrawnY(loud.minimum) + 1, top + 1, height);
        columns.push_back({top, bottom});
    }
    return columns;
}

int OverviewX(std::int64_t frame, std::int64_t frameCount, int width) {
    if (frameCount < 1) return 0;
    return static_cast<int>(std::clamp<std::int64_t>(frame, 0, frameCount) * width / frameCount);
}

OverviewFrame FrameOfOverview(const PixelMap& view, int shownWidth, int width) {
    if (!view.Usable() || width < 1) return {};
    const double scale = VirtualPerPixel(view, width);
    const auto pixel = [&](std::int64_t virtualX) {
        const double x = std::round(static_cast<double>(virtualX) / scale);
        return static_cast<int>(std::clamp(x, 0.0, double{1} * width));
    };
    OverviewFrame frame{pixel(view.Position()), pixel(view.Position() + shownWidth)};
    const int least = std::min(kLeastFrameWidth, width);
    const int missing = least - (frame.right - frame.left);
    if (missing > 0) {
        frame.left = std::clamp(frame.left - missing / 2, 0, width - least);
        frame.right = frame.left + least;
    }
    return frame;
}

std::optional<std::int64_t> OverviewDrag::Press(const PixelMap& view, int shownWidth, int width,
                                                int x) {
    if (!view.Usable() || width < 1) return std::nullopt;
    const OverviewFrame frame = FrameOfOverview(view, shownWidth, width);
    if (x >= frame.left && x < frame.right) {
        grip_ = x * VirtualPerPixel(view, width) - static_cast<double>(view.Position());
        return std::nullopt;
    }
    grip_ = shownWidth / 2.0;
    return Move(view, width, x);
}

std::optional<std::int64_t> OverviewDrag::Move(const PixelMap& view, int width, int x) {
    if (!grip_ || !view.Usable()) return std::nullopt;
    return std::llround(x * VirtualPerPixel(view, width) - *grip_);
}

}  // namespace sonavel
