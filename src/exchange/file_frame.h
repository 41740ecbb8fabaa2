// The bytes of a WAV, RF64, AIFF or AU file around its samples: head, markers, tags and chunks, as
// other programs expect them.
#pragma once

#include <cstdint>
#include <vector>

#include "exchange/sample_packing.h"
#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"

namespace sonavel {

// The file is `before`, the samples of all frames, `behind`.
struct FileFrame {
    std::vector<std::uint8_t> before;
    std::vector<std::uint8_t> behind;
    FileSamples samples;
};

// Of the request its depth, rate, channels and frames count; tags are those of the extras.
//
// RIFF with right sizes and pad bytes: "fmt ", "fact" with floats, the chunks that came before the
// sound, the sound, "cue ", "adtl" with "ltxt" before "labl", "INFO", the chunks that came behind
// the sound. A file beyond 4 GiB becomes RF64, and one that is asked for as that.
Result<FileFrame> FrameWav(const EncodeRequest& request, const SoundExtras& extras);
// AIFF, or AIFC where the samples are floats. Fails beyond 4 GiB.
Result<FileFrame> FrameAiff(const EncodeRequest& request, const SoundExtras& extras);
Result<FileFrame> FrameAu(const EncodeRequest& request, const SoundExtras& extras);

}  // namespace sonavel
