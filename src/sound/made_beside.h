// A sound that is computed from another one: a large one beside the calling thread, which shows in
// a progress window how far it is.
#pragma once

#include <cstdint>
#include <functional>

#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "sound/sample_pieces.h"
#include "sound/sound.h"

namespace sonavel {

// Less is done before a window could be read.
inline constexpr std::uint64_t kProgressFromBytes = std::uint64_t{16} << 20;

// `make` gives the sound out of `bytes` bytes that nobody changes meanwhile, and tells its watch
// about each piece, which stops it when the person cancels; it throws nothing.
using SoundMaker = std::function<Result<Sound>(const PieceWatch& watch)>;
Result<Sound> MadeBeside(ProgressFactory& factory, std::uint64_t bytes, const SoundMaker& make);

}  // namespace sonavel
