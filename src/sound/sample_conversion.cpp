#include "sound/sample_conversion.h"

#include <cstddef>

namespace sonavel {
namespace {

template <class Sample, class Left, class Right>
void Spread(std::span<const Sample> from, std::span<Sample> to, Left left, Right right) {
    const Sample* source = from.data();
    Sample* target = to.data();
    for (std::size_t i = 0; i < from.size(); ++i) {
        target[2 * i] = left(source[i]);
        target[2 * i + 1] = right(source[i]);
    }
}

template <class Sample>
void SpreadAs(std::span<const Sample> from, std::span<Sample> to, ChannelChoice choice) {
    const auto same = [](Sample sample) { return sample; };
    const auto zero = [](Sample) { return Sample{0}; };
    if (choice == ChannelChoice::kLeft) return Spread(from, to, same, zero);
    if (choice == ChannelChoice::kRight) return Spread(from, to, zero, same);
    Spread(from, to, same, same);
}

template <class Sample, class Merge>
void Fold(std::span<const Sample> from, std::span<Sample> to, Merge merge) {
    const Sample* source = from.data();
    Sample* target = to.data();
    for (std::size_t i = 0; i < to.size(); ++i)
        target[i] = static_cast<Sample>(merge(source[2 * i], source[2 * i + 1]));
}

template <class Sample>
void FoldAs(std::span<const Sample> from, std::span<Sample> to, ChannelChoice choice) {
    if (choice == ChannelChoice::kLeft) return Fold(from, to, [](int left, int) { return left; });
    if (choice == ChannelChoice::kRight)
        return Fold(from, to, [](int, int right) { return right; });
    Fold(from, to, [](int left, int right) { return (left + right) / 2; });
}

}  // namespace

void WidenSamples(std::span<const std::uint8_t> from, std::span<std::int16_t> to) {
    for (std::size_t i = 0; i < from.size(); ++i)
        to[i] = static_cast<std::int16_t>(static_cast<std::uint16_t>((128u - from[i]) << 8));
}

void NarrowSamples(std::span<const std::int16_t> from, std::span<std::uint8_t> to) {
    for (std::size_t i = 0; i < to.size(); ++i)
        to[i] = static_cast<std::uint8_t>(128u - (static_cast<std::uint16_t>(from[i]) >> 8));
}

void SpreadToStereo(std::span<const std::uint8_t> from, std::span<std::uint8_t> to,
                    ChannelChoice choice) {
    SpreadAs(from, to, choice);
}

void SpreadToStereo(std::span<const std::int16_t> from, std::span<std::int16_t> to,
                    ChannelChoice choice) {
    SpreadAs(from, to, choice);
}

void FoldToMono(std::span<const std::uint8_t> from, std::span<std::uint8_t> to,
                ChannelChoice choice) {
    FoldAs(from, to, choice);
}

void FoldToMono(std::span<const std::int16_t> from, std::span<std::int16_t> to,
                ChannelChoice choice) {
    FoldAs(from, to, choice);
}

}  // namespace sonavel
