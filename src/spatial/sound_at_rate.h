// What a scene hears of a sound that was made at another rate than the scene's.
#pragma once

#include <cstdint>
#include <string_view>

#include "sound/sound.h"

namespace sonavel {

inline constexpr std::uint64_t kMostSceneFrames = kMaxSoundBytes / 4;
inline constexpr std::string_view kSceneTooLong = "The scene is too long to become a stereo sound.";

// Channel 0 as a sound of 32-bit floats. Fails without memory, and when the sound would become too
// long.
Result<Sound> FirstChannelAtRate(const Sound& sound, std::uint32_t framesPerSecond);

}  // namespace sonavel
