// Encodes a file through the codec program.
#pragma once

#include <filesystem>

#include "codec/client/codec_setup.h"
#include "platform/outcome.h"
#include "sound/sound_codecs.h"

namespace sonavel {

// Writes over the file at `path`, which is one of our own making.
Outcome EncodeWithHelper(const CodecSetup& setup, const std::filesystem::path& path,
                         const EncodeRequest& request, FrameSource& source);

}  // namespace sonavel
