#include "audio/untouched_range.h"

#include <algorithm>

#include "sound/sample_io.h"
#include "sound/sample_types.h"

namespace sonavel {

void UntouchedRange::Render(std::uint32_t first, std::span<float> pairs) {
    const float share = VisitSampleType(
        sound_.GetBits(), [](auto type) { return 1.0f / static_cast<float>(type.kHalfScale); });
    channel_.resize(pairs.size() / 2);
    for (const unsigned slot : {0u, 1u}) {
        ReadChannel(sound_, std::min(slot, sound_.GetChannels() - 1), range_.start + first,
                    channel_, EightBitReading::kFull);
        for (std::size_t i = 0; i < channel_.size(); ++i) pairs[2 * i + slot] = channel_[i] * share;
    }
}

}  // namespace sonavel
