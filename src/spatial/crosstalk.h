// Cross Talk: makes a sound for headphones right for two loudspeakers.
#pragma once

#include <cstdint>

#include "document/sound_doc.h"
#include "spatial/listener.h"

namespace sonavel {

inline constexpr double kLeastSpeakerAngle = 3;
inline constexpr double kGreatestSpeakerAngle = 90;

// Filters the selection, or the whole sound without one, for loudspeakers at plus and minus `angle`
// degrees; one undo step. The format stays; a peak beyond full scale is brought down to it. Fails,
// and does nothing, for a mono or an empty sound, without memory, or when an undo step was refused.
Outcome CancelCrosstalk(CSoundDoc& document, std::uint32_t selectionStart,
                        std::uint32_t selectionEnd, double angle, Listener& listener);

}  // namespace sonavel
