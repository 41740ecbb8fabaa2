// The arithmetic of the play meter: where its two bars lie, how long a level makes them, which
// ticks and labels stand over them, and the texts of a level.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/settings.h"
#include "view/draw/text_width.h"
#include "view/state/rectangle.h"

namespace sonavel {

// The numbers are those of the settings file.
enum class MeterScale { kThirtyDb = 0, kSixtyDb = 1, kNinetyDb = 2, kAbsolute = 3 };

// The dB value at the empty end of a scale; of the absolute one that of the middle scale, which
// only silence needs.
int FloorOf(MeterScale scale);

// A sample value against the value of a full bar, 32768 or 128. A value below every sample, as the
// player reports it where there was nothing to measure, is silence.
struct MeterLevel {
    std::int32_t sample = 0;
    std::int32_t reference = 32768;

    std::int64_t Magnitude() const;
    double Percent() const;  // of the reference
    bool operator==(const MeterLevel&) const = default;
};

// 20 log10 (|sample| / reference), for silence the floor of the scale.
double DecibelsOf(const MeterLevel& level, MeterScale scale);

enum class MeterDirection { kToTheRight, kUpwards };

struct MeterPlaces {
    MeterDirection direction = MeterDirection::kToTheRight;
    Rectangle left;  // of the meters of the two channels
    Rectangle right;

    bool operator==(const MeterPlaces&) const = default;
};

// Side by side or one above the other, as the bar's shape has it.
MeterPlaces LayOutMeters(const Rectangle& bar);

// How many of a meter's `length` pixels are filled, 0 to `length`.
int FilledLength(const MeterLevel& level, MeterScale scale, int length);

struct MeterBand {
    int start = 0;  // pixels from the empty end, [start, end)
    int end = 0;

    bool operator==(const MeterBand&) const = default;
};

// What differs between the pictures of two levels.
MeterBand ChangedBand(int filledBefore, int filledAfter);

// [start, end) of a bar of that direction inside a meter's inner area.
Rectangle BandIn(const Rectangle& inner, MeterDirection direction, const MeterBand& band);

struct MeterTick {
    int place = 0;  // pixels from the empty end
    std::string label;
    Rectangle labelArea;  // empty where the label has no room
};

struct MeterTextSize {
    TextWidth width;
    int lineHeight = 0;
};

// Ten ticks at 0 % to 90 % of the inner area's length. A label stands behind its tick, as seen from
// the empty end, where it lies inside the area and clear of the label before it.
std::vector<MeterTick> LayOutMeterTicks(const Rectangle& inner, MeterDirection direction,
                                        MeterScale scale, const MeterTextSize& text);

// "-6.0dB\n(50.12%)" or "-Inf. dB\n(0.00%)".
std::string MeterReadOut(const MeterLevel& level);
// "-6.0dB ( 50.12% )" or "-Inf. dB ( 0.00% )".
std::string MeterReadOutLine(const MeterLevel& level);
// No read-out is wider.
inline constexpr std::string_view kWidestMeterReadOutLine = "-88.8dB ( 888.88% )";

// A bar with room beside its meters for their read-outs. Without enough room the meters have the
// whole bar and the read-outs are empty.
struct MeterBarPlaces {
    MeterPlaces meters;
    Rectangle leftReadOut;
    Rectangle rightReadOut;

    bool operator==(const MeterBarPlaces&) const = default;
};

enum class MeterReadOuts { kHidden, kWhereTheyFit };

// Read-outs stand right of lying meters in one line, below standing ones in two.
MeterBarPlaces LayOutMeterBar(const Rectangle& bar, MeterReadOuts readOuts,
                              const MeterTextSize& text);

struct MeterSettings {
    MeterScale scale = MeterScale::kSixtyDb;
    int showLabels = 0;

    // A stored 0 gives the first scale and 2 the third; every other number gives the second, so the
    // absolute scale does not come back at the next start, which is intended.
    static MeterSettings Read(const SettingValues& options);
    bool operator==(const MeterSettings&) const = default;
};

}  // namespace sonavel
