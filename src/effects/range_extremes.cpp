#include "effects/range_extremes.h"

#include <span>

namespace sonavel {

SampleExtremes ExtremesOf(const Sound& sound, FrameRange range) {
    const std::span<const std::uint8_t> bytes =
        sound.Bytes().subspan(std::size_t{range.start} * sound.GetBlockAlign(),
                              std::size_t{range.Frames()} * sound.GetBlockAlign());
    if (bytes.empty()) return {};
    return VisitSampleType(sound.GetBits(), [&](auto type) {
        // As one run: which channel a sample belongs to does not matter.
        const auto found = ScanStored(SamplesOf<decltype(type)>(bytes), 1);
        return LevelsOf<decltype(type)>(found, 0);
    });
}

}  // namespace sonavel
