#include "effects/range_extremes.h"

#include <algorithm>
#include <span>

#include "sound/sample_scan.h"
#include "sound/typed_samples.h"

namespace sonavel {
namespace {

template <class Stored>
SampleExtremes Scan(std::span<const Stored> samples) {
    if (samples.empty()) return {};
    // As one run: which channel a sample belongs to does not matter.
    const auto found = ScanStored(samples.data(), samples.size(), 1);
    // Bytes count down while the samples that they stand for count up.
    const auto [least, greatest] =
        std::minmax({SampleValue(found.minimum[0]), SampleValue(found.maximum[0])});
    return {greatest, least};
}

}  // namespace

SampleExtremes ExtremesOf(const CWave& sound, FrameRange range) {
    const std::span<const std::uint8_t> bytes =
        sound.Bytes().subspan(std::size_t{range.start} * sound.GetBlockAlign(),
                              std::size_t{range.Frames()} * sound.GetBlockAlign());
    return sound.GetBits() == 8 ? Scan(bytes) : Scan(Words(bytes));
}

}  // namespace sonavel
