// The sound of a view in another format: rate, bits and channels as one edit, and what comes of it
// said beforehand.
#pragma once

#include <cstdint>

#include "platform/outcome.h"
#include "platform/user_prompts.h"
#include "sound/rounding.h"
#include "sound/sound.h"
#include "view/sound_view.h"

namespace sonavel {

struct FormatChange {
    enum class Rate : std::uint8_t {
        kResampled,  // the sound stays as it is
        kNewSpeed,   // the frames stay, and play faster or slower
    };

    std::uint32_t samplesPerSecond = 44100;
    Rate rate = Rate::kResampled;
    unsigned bits = 16;
    Rounding rounding = Rounding::kDithered;
    unsigned channels = 2;
    ChannelChoice choice = ChannelChoice::kBothOrMix;
};

// Of a sound, as it is or as it will be.
struct FormatOutlook {
    std::uint32_t samplesPerSecond = 0;
    unsigned bits = 0;
    unsigned channels = 0;
    std::uint32_t frames = 0;
    std::uint64_t bytes = 0;

    double Seconds() const {
        return samplesPerSecond > 0 ? static_cast<double>(frames) / samplesPerSecond : 0;
    }
    bool operator==(const FormatOutlook&) const = default;
};

// The change that changes nothing.
FormatChange FormatOf(const Sound& sound);
FormatOutlook PresentOutlook(const Sound& sound);
// What the sound would become; fails where it cannot become that.
Result<FormatOutlook> OutlookOf(const Sound& sound, const FormatChange& change);

// One undo step, none where nothing changes. Resampling shows its progress; a cancel leaves the
// sound as it was. Markers, selection and cursor keep their places in what is heard.
Outcome ConvertView(CSoundView& view, const FormatChange& change);

}  // namespace sonavel
