// A sound of pseudo-random bytes, the same for the same seed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>

#include "sound/wave.h"
#include "support/fake_progress.h"
#include "support/recording_prompts.h"

namespace sonavel {

struct RandomSound {
    RandomSound(unsigned channels, unsigned bits, std::uint32_t frames, std::uint32_t seed = 1)
        : wave(prompts, progress) {
        wave.Create(channels, bits, 44100, frames);
        Scramble(0, frames, seed);
    }

    void Scramble(std::uint32_t startFrame, std::uint32_t endFrame, std::uint32_t seed) {
        std::minstd_rand random(seed);
        const auto bytes = wave.MutableBytes();
        for (std::size_t i = startFrame * wave.GetBlockAlign(); i < endFrame * wave.GetBlockAlign();
             ++i) {
            bytes[i] = static_cast<std::uint8_t>(random() >> 7);
        }
    }

    // Makes peaks rare, so that columns differ.
    void Quieten() {
        for (std::uint32_t frame = 0; frame < wave.GetFrameCount(); ++frame) {
            for (unsigned channel = 0; channel < wave.GetChannels(); ++channel) {
                const auto loudness = static_cast<std::int32_t>(frame * 7919 % 97 + 1);
                wave.SetSample(channel, frame, wave.GetSample(channel, frame) / loudness);
            }
        }
    }

    RecordingPrompts prompts;
    FakeProgress progress;
    CWave wave;
};

}  // namespace sonavel
