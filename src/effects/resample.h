// The sound of a document at another sample rate.
#pragma once

#include <cstdint>

#include "document/sound_doc.h"
#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "view/sound_view.h"

namespace sonavel {

inline constexpr std::uint32_t kLeastResampledRate = 1000;
inline constexpr std::uint32_t kGreatestResampledRate = 768000;

// How many frames the sound has at that rate; fails where there is no such rate or it would have
// too many.
Result<std::uint32_t> FramesWhenResampled(const Sound& sound, std::uint32_t samplesPerSecond);
// Another sound with that rate, with the bits and channels of the first; markers keep their times.
// Fails as above, for want of memory, or when the person cancels.
Result<Sound> Resampled(const Sound& sound, std::uint32_t samplesPerSecond,
                        ProgressWindow& progress);

// The same sound with another rate and as many frames as that takes; markers keep their times. One
// edit; none when the sound has the rate already. A cancel leaves the sound as it was.
Outcome ResampleSound(CSoundDoc& document, std::uint32_t samplesPerSecond);

// Likewise; selection and cursor keep their times.
Outcome ResampleView(CSoundView& view, std::uint32_t samplesPerSecond);

// Behind a change of the rate from `before`: puts selection and cursor, which counted frames of
// that rate, at the times that they had.
void KeepPlaces(CSoundView& view, const Selection& at, std::uint32_t cursor, std::uint32_t before);

// Where a frame goes when `from` frames a second become `to`: the nearest one.
std::uint32_t ResampledFrame(std::uint32_t frame, std::uint32_t from, std::uint32_t to);

}  // namespace sonavel
