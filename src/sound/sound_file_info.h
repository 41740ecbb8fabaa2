// What a sound file says of itself before its samples are read.
#pragma once

#include <cstdint>

#include "sound/pcm_format.h"

namespace sonavel {

struct SoundFileInfo {
    PcmFormat format;  // that of the sound which reading the file gives; need not be editable
    std::uint64_t frames = 0;
};

}  // namespace sonavel
