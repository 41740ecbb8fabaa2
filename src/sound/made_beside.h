// A sound that is computed from another one in one go: a large one beside the calling thread, which
// shows a progress window meanwhile.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "sound/sound.h"

namespace sonavel {

// Less is done before a window could be read.
inline constexpr std::uint64_t kProgressFromBytes = std::uint64_t{16} << 20;

// `make` gives the sound out of `bytes` bytes that nobody changes meanwhile; it throws nothing.
// Cancelled when the person has, as soon as it has ended.
using SoundMaker = std::function<Result<Sound>()>;
Result<Sound> MadeBeside(ProgressFactory& factory, std::uint64_t bytes, const SoundMaker& make);

}  // namespace sonavel
