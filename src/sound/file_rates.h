// The sample rates that kinds of files know, where they do not take any.
#pragma once

#include <cstdint>
#include <span>

#include "sound/codec_values.h"

namespace sonavel {

// Frames a second, in rising order; none where the kind takes any.
std::span<const std::uint32_t> RatesOfKind(SoundFileKind kind);

// The rate at which a sound of that rate is written: its own where the kind knows it, else the next
// higher one, else the highest.
std::uint32_t WrittenRate(SoundFileKind kind, std::uint32_t rate);

}  // namespace sonavel
