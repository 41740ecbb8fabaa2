// Conversions of blocks of samples between types of samples and channel counts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "platform/user_prompts.h"
#include "sound/sample_types.h"

namespace sonavel {

// One whole number. It takes the other type's scale and wraps around in its bits: byte b becomes
// the word (128 - b) * 256, which is -32768 for b = 0, and a word the byte 128 - its high byte.
template <class From, class To>
typename To::Stored Rescaled(typename From::Stored sample) {
    if constexpr (!kHoldsWholeNumbers<To>)
        return static_cast<typename To::Stored>(From::ValueOf(sample)) / From::kHalfScale;
    else if constexpr (From::kBits < To::kBits)
        return To::StoredOf(From::ValueOf(sample) << (To::kBits - From::kBits));
    else
        return To::StoredOf(From::ValueOf(sample) >> (From::kBits - To::kBits));
}

// As many as both hold, to whole numbers from whole numbers alone.
template <class From, class To>
void ConvertSamples(std::span<const typename From::Stored> from,
                    std::span<typename To::Stored> to) {
    static_assert(kHoldsWholeNumbers<From> || !kHoldsWholeNumbers<To>);
    const std::size_t count = std::min(from.size(), to.size());
    if constexpr (kHoldsWholeNumbers<From>) {
        const typename From::Stored* source = from.data();
        typename To::Stored* target = to.data();
        for (std::size_t i = 0; i < count; ++i) target[i] = Rescaled<From, To>(source[i]);
    } else {
        std::ranges::copy(from.first(count), to.begin());
    }
}

// `to` holds two samples for each of `from`. A channel that the choice leaves out holds zeros, also
// with 8-bit samples, whose silence is 128.
template <class Stored>
void SpreadToStereo(std::span<const Stored> from, std::span<Stored> to, ChannelChoice choice) {
    const auto spread = [&](auto left, auto right) {
        const Stored* source = from.data();
        Stored* target = to.data();
        for (std::size_t i = 0; i < from.size(); ++i) {
            target[2 * i] = left(source[i]);
            target[2 * i + 1] = right(source[i]);
        }
    };
    const auto same = [](Stored sample) { return sample; };
    const auto zero = [](Stored) { return Stored{0}; };
    if (choice == ChannelChoice::kLeft) return spread(same, zero);
    if (choice == ChannelChoice::kRight) return spread(zero, same);
    spread(same, same);
}

// `from` holds two samples for each of `to`. The mean of two words is truncated toward zero, that
// of two bytes downward.
template <class Stored>
void FoldToMono(std::span<const Stored> from, std::span<Stored> to, ChannelChoice choice) {
    const auto fold = [&](auto merge) {
        const Stored* source = from.data();
        Stored* target = to.data();
        for (std::size_t i = 0; i < to.size(); ++i)
            target[i] = static_cast<Stored>(merge(source[2 * i], source[2 * i + 1]));
    };
    if (choice == ChannelChoice::kLeft) return fold([](auto left, auto) { return left; });
    if (choice == ChannelChoice::kRight) return fold([](auto, auto right) { return right; });
    fold([](auto left, auto right) { return (left + right) / 2; });
}

}  // namespace sonavel
