// The clip that was last read from the clipboard. There is one record for the whole program: the
// application owns it and hands it to whatever copies and pastes.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "sound/pcm_format.h"
#include "sound/sound_buffer.h"
#include "sound/wave.h"

namespace sonavel {

struct ClipRecord {
    bool present = false;
    PcmFormat format;    // always one that the editor can hold when present
    SoundBuffer buffer;  // whole frames

    std::uint32_t DataSize() const { return static_cast<std::uint32_t>(buffer.Size()); }
    std::uint32_t GetFrameCount() const;
    double GetDuration() const;  // seconds
    std::span<const std::uint8_t> Bytes() const { return buffer.Bytes(); }
    // The clip as a sound of its own, without markers; nothing when the memory cannot be had.
    std::optional<SoundCopy> CopySound() const;
};

}  // namespace sonavel
