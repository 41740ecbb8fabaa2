#include "meter/meter_scale.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "sound/decibels.h"

namespace sonavel {
namespace {

constexpr std::int32_t kLeastSample = -32768;
constexpr int kTicks = 10;
constexpr int kLabelGap = 2;
constexpr int kReadOutMargin = 6;
// Read-outs may take this part of a bar's length, the rest being the meters'.
constexpr int kReadOutShare = 2;

Rectangle Shrunk(const Rectangle& r, int horizontally, int vertically) {
    return {r.left + horizontally, r.top + vertically, r.right - horizontally,
            r.bottom - vertically};
}

int LengthOf(const Rectangle& r, MeterDirection direction) {
    return direction == MeterDirection::kUpwards ? r.Height() : r.Width();
}

std::string TickLabel(MeterScale scale, int tick) {
    if (scale == MeterScale::kAbsolute) return std::to_string(10 * tick) + "%";
    const int floor = FloorOf(scale);
    return std::to_string(floor - floor / 10 * tick) + " ";
}

// Behind the tick, and in the middle across the meter.
Rectangle LabelArea(const Rectangle& inner, MeterDirection direction, int place, int width,
                    int height) {
    if (direction == MeterDirection::kUpwards) {
        const int left = inner.left + (inner.Width() - width) / 2;
        const int bottom = inner.bottom - place - 1;
        return {left, bottom - height, left + width, bottom};
    }
    const int left = inner.left + place + kLabelGap;
    const int top = inner.top + (inner.Height() - height) / 2;
    return {left, top, left + width, top + height};
}

bool Contains(const Rectangle& outer, const Rectangle& inner) {
    return outer.Intersected(inner) == inner;
}

std::string ReadOut(const MeterLevel& level, const char* pattern, const char* silent) {
    if (level.Magnitude() == 0) return silent;
    char text[64];
    std::snprintf(text, sizeof text, pattern, DecibelsOf(level, MeterScale::kAbsolute),
                  level.Percent());
    return text;
}

MeterBarPlaces WithReadOutsRight(const Rectangle& bar, int width) {
    Rectangle meters = bar;
    meters.right -= width;
    MeterBarPlaces places{LayOutMeters(meters), {}, {}};
    const auto beside = [&](const Rectangle& meter) {
        return Rectangle{meters.right, meter.top, bar.right, meter.bottom};
    };
    places.leftReadOut = beside(places.meters.left);
    places.rightReadOut = beside(places.meters.right);
    return places;
}

MeterBarPlaces WithReadOutsBelow(const Rectangle& bar, int height) {
    Rectangle meters = bar;
    meters.bottom -= height;
    MeterBarPlaces places{LayOutMeters(meters), {}, {}};
    const int middle = (bar.left + bar.right) / 2;
    places.leftReadOut = {bar.left, meters.bottom, middle, bar.bottom};
    places.rightReadOut = {middle, meters.bottom, bar.right, bar.bottom};
    return places;
}

}  // namespace

int FloorOf(MeterScale scale) {
    if (scale == MeterScale::kThirtyDb) return -30;
    return scale == MeterScale::kNinetyDb ? -90 : -60;
}

std::int64_t MeterLevel::Magnitude() const {
    if (sample < kLeastSample) return 0;
    return std::abs(std::int64_t{sample});
}

double MeterLevel::Percent() const {
    return reference > 0 ? static_cast<double>(Magnitude()) * 100 / reference : 0;
}

double DecibelsOf(const MeterLevel& level, MeterScale scale) {
    return LevelInDecibels(static_cast<double>(level.Magnitude()), level.reference)
        .value_or(FloorOf(scale));
}

MeterPlaces LayOutMeters(const Rectangle& bar) {
    if (bar.Width() >= bar.Height()) {
        const Rectangle area = Shrunk(bar, 4, 2);
        const int middle = (area.top + area.bottom) / 2;
        return {MeterDirection::kToTheRight,
                Shrunk({area.left, area.top, area.right, middle}, 0, 2),
                Shrunk({area.left, middle, area.right, area.bottom}, 0, 2)};
    }
    const Rectangle area = Shrunk(bar, 2, 4);
    const int middle = (area.left + area.right) / 2;
    return {MeterDirection::kUpwards, Shrunk({area.left, area.top, middle, area.bottom}, 2, 0),
            Shrunk({middle, area.top, area.right, area.bottom}, 2, 0)};
}

int FilledLength(const MeterLevel& level, MeterScale scale, int length) {
    if (length <= 0 || level.reference <= 0) return 0;
    if (scale == MeterScale::kAbsolute)
        return static_cast<int>(
            std::min<std::int64_t>(level.Magnitude() * length / level.reference, length));
    double decibels = DecibelsOf(level, scale);
    // Exactly 0 dB counts as no level, so -32768 empties the bar that 32767 fills: intended.
    if (decibels == 0.0) decibels = FloorOf(scale);
    const double free = std::clamp(decibels / FloorOf(scale), 0.0, 1.0);
    return length - static_cast<int>(length * free);
}

MeterBand ChangedBand(int filledBefore, int filledAfter) {
    return {std::min(filledBefore, filledAfter), std::max(filledBefore, filledAfter)};
}

Rectangle BandIn(const Rectangle& inner, MeterDirection direction, const MeterBand& band) {
    if (direction == MeterDirection::kUpwards)
        return {inner.left, inner.bottom - band.end, inner.right, inner.bottom - band.start};
    return {inner.left + band.start, inner.top, inner.left + band.end, inner.bottom};
}

std::vector<MeterTick> LayOutMeterTicks(const Rectangle& inner, MeterDirection direction,
                                        MeterScale scale, const MeterTextSize& text) {
    std::vector<MeterTick> ticks;
    const int length = std::max(LengthOf(inner, direction), 0);
    Rectangle before;
    for (int i = 0; i < kTicks; ++i) {
        MeterTick tick{length * i / kTicks, TickLabel(scale, i), {}};
        const Rectangle area =
            LabelArea(inner, direction, tick.place, text.width(tick.label), text.lineHeight);
        if (Contains(inner, area) && area.Intersected(before).Empty()) {
            tick.labelArea = area;
            before = area;
        }
        ticks.push_back(std::move(tick));
    }
    return ticks;
}

std::string MeterReadOut(const MeterLevel& level) {
    return ReadOut(level, "%2.1fdB\n(%3.2f%%)", "-Inf. dB\n(0.00%)");
}

std::string MeterReadOutLine(const MeterLevel& level) {
    return ReadOut(level, "%2.1fdB ( %3.2f%% )", "-Inf. dB ( 0.00% )");
}

MeterBarPlaces LayOutMeterBar(const Rectangle& bar, MeterReadOuts readOuts,
                              const MeterTextSize& text) {
    const MeterBarPlaces plain{LayOutMeters(bar), {}, {}};
    if (readOuts == MeterReadOuts::kHidden) return plain;
    if (plain.meters.direction == MeterDirection::kToTheRight) {
        const int width = text.width(kWidestMeterReadOutLine) + kReadOutMargin;
        const bool fits = width * kReadOutShare <= bar.Width() &&
                          text.lineHeight <= plain.meters.left.Height() &&
                          bar.Width() - width >= bar.Height();
        return fits ? WithReadOutsRight(bar, width) : plain;
    }
    const int height = 2 * text.lineHeight + kReadOutMargin;
    const int width = std::max(text.width("-88.8dB"), text.width("(888.88%)"));
    const bool fits = 2 * (width + 2) <= bar.Width() && height * kReadOutShare <= bar.Height() &&
                      bar.Height() - height > bar.Width();
    return fits ? WithReadOutsBelow(bar, height) : plain;
}

MeterSettings MeterSettings::Read(const SettingValues& options) {
    const int scale = RowOf(SettingId::kMeterScale).Effective(options[SettingId::kMeterScale]);
    return {static_cast<MeterScale>(scale), options[SettingId::kMeterLabels]};
}

}  // namespace sonavel
