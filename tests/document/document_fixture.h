// A document on fakes, and sounds whose every frame tells its place.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "document/edit_operations.h"
#include "document/sound_doc.h"
#include "platform/headless/memory_clipboard.h"
#include "support/fake_progress.h"
#include "support/fake_wave_devices.h"
#include "support/recording_prompts.h"
#include "support/test_files.h"

namespace sonavel::testing {

using Bytes = std::vector<std::uint8_t>;

struct Format {
    unsigned channels = 1;
    unsigned bits = 16;
    std::uint32_t rate = 8000;
};

inline constexpr Format kFormats[] = {{1, 8}, {2, 8}, {1, 16}, {2, 16}};

inline std::string NameOf(const Format& format) {
    return std::to_string(format.bits) + " bits, " + std::to_string(format.channels) + " channels";
}

// Of a sound or a clip.
template <class Samples>
Bytes BytesOf(const Samples& samples) {
    return {samples.Bytes().begin(), samples.Bytes().end()};
}

// Bytes that differ from place to place and, by the seed, from sound to sound.
inline Bytes PatternBytes(std::size_t count, unsigned seed) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<std::uint8_t>((i * 37 + seed * 101) ^ (i >> 3));
    return bytes;
}

inline Sound MakeSound(const Format& format, const Bytes& bytes) {
    SoundBuffer samples;
    EXPECT_TRUE(samples.AllocBuffer(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), samples.Data());
    return {MakeSoundFormat(format.channels, format.bits, format.rate), std::move(samples)};
}

inline ClipRecord MakeClip(const Format& format, const Bytes& bytes) {
    return {MakeSound(format, bytes), true};
}

struct NotingObserver : DocumentObserver {
    std::vector<std::uint32_t> changes;
    int titles = 0;

    void OnSoundChanged(std::uint32_t frame) override { changes.push_back(frame); }
    void OnTitleOrModifiedChanged() override { ++titles; }
};

// A clipboard that some other program may be holding.
struct TestClipboard : MemoryClipboard {
    bool taken = false;
    bool SetImage(std::vector<std::uint8_t> image) override {
        return !taken && MemoryClipboard::SetImage(std::move(image));
    }
};

class DocumentTest : public ::testing::Test {
  protected:
    DocumentTest() { WriteOptions("SAVE UNDO REDO INFOMATION=1\n"); }

    void WriteOptions(const std::string& general, const std::string& wave = {}) {
        std::ofstream(folder_ / "Options.ini") << "[__SOUND_GENERAL_OPTIONS]\n"
                                               << general << "[__SOUND_WAVE_OPTIONS]\n"
                                               << wave;
    }
    HostServices Services() { return {prompts_, progress_, clipboard_, devices_, programFolder_}; }
    std::unique_ptr<CSoundDoc> MakeDocument() { return std::make_unique<CSoundDoc>(Services()); }
    std::unique_ptr<CSoundDoc> MakeDocument(const Format& format, const Bytes& bytes) {
        auto document = MakeDocument();
        document->Sound().Adopt(MakeSound(format, bytes));
        return document;
    }

    // A document of random samples up to `greatest` of 16 bits, the same for the same arguments.
    std::unique_ptr<CSoundDoc> MakeNoise(const Format& format, std::uint32_t frames,
                                         int greatest = 32767) {
        std::mt19937 random(frames + format.bits + format.channels);
        std::uniform_int_distribution<int> word(-greatest, greatest);
        auto document = MakeDocument(format, Bytes(frames * format.channels * format.bits / 8));
        CWave& sound = document->Sound();
        for (std::uint32_t i = 0; i < frames; ++i)
            for (unsigned channel = 0; channel < format.channels; ++channel)
                sound.SetSample(channel, i, format.bits == 8 ? word(random) >> 8 : word(random));
        return document;
    }
    static int PeakOf(const CWave& sound) {
        int peak = 0;
        for (std::uint32_t i = 0; i < sound.GetFrameCount(); ++i)
            for (unsigned channel = 0; channel < sound.GetChannels(); ++channel)
                peak = std::max(peak, std::abs(sound.GetSample(channel, i)));
        return peak;
    }

    TemporaryFolder folder_;
    ProgramFolder programFolder_{folder_.Path()};
    RecordingPrompts prompts_;
    FakeProgress progress_;
    TestClipboard clipboard_;
    FakeWaveDevices devices_;
};

}  // namespace sonavel::testing
