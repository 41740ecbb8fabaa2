// Times as a person types them: "1:02:03.5", "17:21.5", "62.5s", "250ms", "441000#", and with a
// sign in front places that are counted from where one stands.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace sonavel {

// What a number means that has neither a unit behind it nor a colon in it.
enum class BareNumber { kFrames, kSeconds };

enum class TimeFrom { kStart, kHere };

struct TypedTime {
    std::int64_t frames = 0;  // rounded to the nearest; negative only with kHere
    TimeFrom from = TimeFrom::kStart;

    bool operator==(const TypedTime&) const = default;
};

// Blanks around the whole are allowed, and either minus sign. Nothing when any character has no
// meaning, when minutes or seconds behind a colon reach 60, when frames have a fraction, or when
// the time passes 2^40 frames.
std::optional<TypedTime> ParseTime(std::string_view text, std::uint32_t samplesPerSecond,
                                   BareNumber bare);

}  // namespace sonavel
