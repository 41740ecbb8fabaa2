// A sound with recording services and a folder for its files.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>

#include "sound/wave.h"
#include "support/fake_progress.h"
#include "support/recording_prompts.h"
#include "support/sound_files.h"

namespace sonavel {

class WaveTest : public testing::Test {
  protected:
    // Fills the sound by bytes as they lie in memory.
    void Fill(unsigned channels, unsigned bits, std::uint32_t rate, const FileBytes& bytes) {
        Fill(wave, channels, bits, rate, bytes);
    }
    static void Fill(CWave& sound, unsigned channels, unsigned bits, std::uint32_t rate,
                     const FileBytes& bytes) {
        const auto frames = static_cast<std::uint32_t>(bytes.size() / (bits / 8 * channels));
        ASSERT_TRUE(sound.Create(channels, bits, rate, frames));
        ASSERT_EQ(sound.GetDataSize(), bytes.size());
        if (!bytes.empty()) std::memcpy(sound.MutableBytes().data(), bytes.data(), bytes.size());
    }

    // Bytes that differ from their neighbours, so that a shift or a swap shows.
    static FileBytes Pattern(std::size_t size) {
        FileBytes bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 256 * 11 + 5);
        return bytes;
    }

    static FileBytes SoundBytes(const CWave& sound) {
        return {sound.Bytes().begin(), sound.Bytes().end()};
    }

    RecordingPrompts prompts;
    FakeProgress progress;
    CWave wave{prompts, progress};
    TemporaryFolder folder;
};

}  // namespace sonavel
