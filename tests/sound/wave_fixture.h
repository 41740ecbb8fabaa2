// A sound with recording services and a folder for its files.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/wave.h"
#include "support/fake_progress.h"
#include "support/recording_prompts.h"
#include "support/sound_files.h"

namespace sonavel {

// A reader or a writer of one kind of file.
using FileAction = bool (*)(const std::filesystem::path&, CWave&);

inline bool OpenWav(const std::filesystem::path& path, CWave& wave) {
    return wave.Open(path, WavOpenMode::kReadAll);
}

inline bool SaveWav(const std::filesystem::path& path, CWave& wave) {
    return wave.Save(path, MarkerSaving::kOn);
}

inline bool OpenAiff(const std::filesystem::path& path, CWave& wave) {
    return wave.Take(ReadAiff(path, wave.FileHost()));
}

inline bool SaveAiff(const std::filesystem::path& path, CWave& wave) {
    return wave.ReportOutcome(WriteAiff(wave, path, MarkerSaving::kOn, wave.FileHost()));
}

inline bool OpenAu(const std::filesystem::path& path, CWave& wave) {
    return wave.Take(ReadAu(path, wave.FileHost()));
}

inline bool SaveAu(const std::filesystem::path& path, CWave& wave) {
    return wave.ReportOutcome(WriteAu(wave, path, MarkerSaving::kOn, wave.FileHost()));
}

class WaveTest : public ::testing::Test {
  protected:
    // Fills the sound by bytes as they lie in memory; the last frame may be cut.
    void Fill(unsigned channels, unsigned bits, std::uint32_t rate, const FileBytes& bytes) {
        SoundBuffer samples;
        ASSERT_TRUE(samples.AllocBuffer(bytes.size()));
        std::ranges::copy(bytes, samples.Data());
        wave.Adopt({MakeSoundFormat(channels, bits, rate), std::move(samples)});
    }

    // Bytes that differ from their neighbours, so that a shift or a swap shows.
    static FileBytes Pattern(std::size_t size) {
        FileBytes bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<std::uint8_t>(i * 37 + i / 256 * 11 + 5);
        return bytes;
    }
    static FileBytes EveryByte() {
        FileBytes bytes(256);
        for (std::size_t i = 0; i < 256; ++i) bytes[i] = static_cast<std::uint8_t>(i);
        return bytes;
    }

    static FileBytes SoundBytes(const CWave& sound) {
        return {sound.Bytes().begin(), sound.Bytes().end()};
    }

    // Whether the sound could be read from a file of these bytes.
    bool Reads(FileAction read, const FileBytes& bytes) {
        WriteFileBytes(folder / "in", bytes);
        return read(folder / "in", wave);
    }
    FileBytes WrittenBy(FileAction write) {
        EXPECT_TRUE(write(folder / "out", wave));
        return ReadFileBytes(folder / "out");
    }

    RecordingPrompts prompts;
    FakeProgress progress;
    CWave wave{prompts, progress};
    TemporaryFolder folder;
};

}  // namespace sonavel
