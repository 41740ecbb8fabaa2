// Decodes a file through the program ffmpeg, run like the codec program: by its path, as a child
// with limits.
#pragma once

#include <filesystem>

#include "codec/client/codec_setup.h"
#include "codec/decode_extent.h"
#include "platform/outcome.h"
#include "sound/sound_codecs.h"

namespace sonavel {

Result<DecodedSound> DecodeWithFfmpeg(const CodecSetup& setup, const std::filesystem::path& path,
                                      DecodeExtent extent, FrameSink& sink);

}  // namespace sonavel
