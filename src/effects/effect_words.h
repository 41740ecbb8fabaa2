// An effect with its values as a command of a script, and groups of parameters as the words of one.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "effects/effect_runner.h"
#include "effects/effect_table.h"

namespace sonavel {

// Neighbours of the same key, from `index` on, are one word: a list with a value for each of them.
std::span<const EffectParameter> ParametersOfKey(std::span<const EffectParameter> parameters,
                                                 std::size_t index);

// The command that applies it; nothing where its values have more decimals than a script takes.
std::optional<std::string> CommandOf(const Effect& effect, std::span<const double> values,
                                     Applying applying);

// Tells one profile from another; 0 for none.
std::uint64_t MarkOf(const std::optional<NoiseProfile>& profile);

}  // namespace sonavel
