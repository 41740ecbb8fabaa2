#include "spatial/scene_mix.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

#include "platform/failure_texts.h"
#include "sound/pair_buffer.h"
#include "sound/sample_io.h"
#include "spatial/fitting.h"
#include "spatial/sound_at_rate.h"

namespace sonavel {
Outcome SceneMix::Render(const ScenePart& part, const Sound& sound, std::span<float> pairs) {
    const RangeInput input{sound, {0, sound.GetFrameCount()}};
    const auto renderer = MakeRenderer(part.placing, input, listener_);
    if (!renderer) return renderer.Ended();
    const auto progress =
        progress_.CreateProgress("Progress of Sound " + std::to_string(parts_ + 1));
    const RenderedBlocks rendered = RenderBlocks(**renderer, rate_, pairs, *progress);
    return rendered.end == RenderEnd::kWhole ? Done() : Cancelled();
}

Outcome SceneMix::AddAtRate(const ScenePart& part, const Sound& sound) {
    const std::uint64_t end = std::uint64_t{part.start} + sound.GetFrameCount();
    if (end > kMostSceneFrames) return Failed(kSceneTooLong);
    PairBuffer rendered(sound.GetFrameCount());
    if (!rendered.HasMemory()) return Failed(failure::kMemory);
    if (pairs_.size() < 2 * end) pairs_.resize(2 * end);
    if (Outcome outcome = Render(part, sound, rendered.Pairs()); !outcome) return outcome;
    const float scale = sound.GetBits() == 8 ? kEightBitScale : 1;
    const auto gain = static_cast<float>(scale * std::pow(10, part.gain / 20));
    float* to = pairs_.data() + std::size_t{2} * part.start;
    for (const float value : rendered.Pairs()) *to++ += gain * value;
    ++parts_;
    return Done();
}

Outcome SceneMix::Add(const ScenePart& part) try {
    if (part.sound.GetFrameCount() == 0) return Failed("The sound is empty.");
    const bool hasFloats = part.sound.GetBits() == 32;
    Outcome added = Done();
    if (part.sound.GetSamplesPerSecond() == rate_) {
        added = AddAtRate(part, part.sound);
    } else {
        const Result<Sound> resampled = FirstChannelAtRate(part.sound, rate_);
        added = resampled ? AddAtRate(part, *resampled) : resampled.Ended();
    }
    if (added && hasFloats) hasFloats_ = true;
    return added;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<Sound> SceneMix::Finish() {
    Sound sound;
    const auto frames = static_cast<std::uint32_t>(pairs_.size() / 2);
    if (!sound.Create(2, hasFloats_ ? 32 : 16, rate_, frames)) return Failed(failure::kMemory);
    Fitting(PeakOf(pairs_), 16).Fit(pairs_);
    WriteInterleaved(sound, 0, pairs_);
    pairs_.clear();
    return sound;
}

}  // namespace sonavel
