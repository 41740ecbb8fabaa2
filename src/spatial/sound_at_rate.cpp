#include "spatial/sound_at_rate.h"

#include <algorithm>
#include <vector>

#include "libraries/resampler.h"
#include "platform/failure_texts.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

constexpr float kUnitsOfFullScale = 32768;

}  // namespace

Result<Sound> FirstChannelAtRate(const Sound& sound, std::uint32_t framesPerSecond) {
    constexpr std::uint32_t kPiece = 65536;
    Resampler resampler(1, sound.GetSamplesPerSecond(), framesPerSecond);
    std::vector<float> resampled;
    std::vector<float> piece;
    const float scale = (sound.GetBits() == 8 ? kEightBitScale : 1) / kUnitsOfFullScale;
    for (std::uint32_t first = 0; first < sound.GetFrameCount(); first += kPiece) {
        piece.resize(std::min(kPiece, sound.GetFrameCount() - first));
        ReadChannel(sound, 0, first, piece, EightBitReading::kFull);
        for (float& value : piece) value *= scale;
        if (!resampler.Add(piece, resampled)) return Failed(failure::kMemory);
    }
    if (!resampler.Finish(resampled)) return Failed(failure::kMemory);
    Sound result;
    if (resampled.size() > kMostSceneFrames) return Failed(kSceneTooLong);
    const auto frames = static_cast<std::uint32_t>(resampled.size());
    if (!result.Create(1, 32, framesPerSecond, frames)) return Failed(failure::kMemory);
    for (float& value : resampled) value *= kUnitsOfFullScale;
    WriteInterleaved(result, 0, resampled);
    return result;
}

}  // namespace sonavel
