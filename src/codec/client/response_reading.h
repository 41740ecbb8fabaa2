// Reads the responses of a SOFA file through the codec program.
#pragma once

#include <filesystem>

#include "codec/client/codec_setup.h"
#include "platform/outcome.h"
#include "sound/sound_codecs.h"
#include "spatial/measured_responses.h"

namespace sonavel {

// Of values that make sense alone: finite, at rates from 8000 to 384000, silent in no direction.
Result<MeasuredResponses> ReadResponsesWithHelper(const CodecSetup& setup,
                                                  const std::filesystem::path& path,
                                                  CodecWatcher& watcher);

}  // namespace sonavel
