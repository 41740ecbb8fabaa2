// The sound of a document at another sample rate.
#pragma once

#include <cstdint>

#include "document/sound_doc.h"
#include "platform/outcome.h"
#include "view/sound_view.h"

namespace sonavel {

inline constexpr std::uint32_t kLeastResampledRate = 1000;
inline constexpr std::uint32_t kGreatestResampledRate = 768000;

// The same sound with another rate and as many frames as that takes; markers keep their times. One
// edit; none when the sound has the rate already. A cancel leaves the sound as it was.
Outcome ResampleSound(CSoundDoc& document, std::uint32_t samplesPerSecond);

// Likewise; selection and cursor keep their times.
Outcome ResampleView(CSoundView& view, std::uint32_t samplesPerSecond);

// Where a frame goes when `from` frames a second become `to`: the nearest one.
std::uint32_t ResampledFrame(std::uint32_t frame, std::uint32_t from, std::uint32_t to);

}  // namespace sonavel
