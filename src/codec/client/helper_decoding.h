// Decodes a file through the codec program.
#pragma once

#include <filesystem>

#include "codec/client/codec_setup.h"
#include "codec/decode_extent.h"
#include "platform/outcome.h"
#include "sound/sound_codecs.h"

namespace sonavel {

struct HelperAnswer {
    Result<DecodedSound> result;
    // Whether another decoder may know the file: the sink has then been told nothing.
    enum class Elsewhere { kNo, kMayTry } elsewhere = Elsewhere::kNo;
};

HelperAnswer DecodeWithHelper(const CodecSetup& setup, const std::filesystem::path& path,
                              DecodeExtent extent, FrameSink& sink);

}  // namespace sonavel
