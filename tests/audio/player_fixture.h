// A player on a fake device, and an observer that writes down what it is told.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "audio/wave_player.h"
#include "support/fake_progress.h"
#include "support/fake_wave_devices.h"
#include "support/recording_prompts.h"

namespace sonavel {

class NotingObserver : public PlayerObserver {
  public:
    void OnPlayPosition(std::uint64_t position, std::uint64_t total) override {
        positions.push_back(position);
        totals.push_back(total);
    }
    void OnPlayState(std::string_view text, std::uint32_t frame) override {
        states.emplace_back(text);
        frames.push_back(frame);
        if (onState) onState(text);
    }
    void OnPeaks(std::int32_t left, std::int32_t right) override {
        peaks.emplace_back(left, right);
    }
    void OnStopped() override { ++stops; }
    void OnRecorded(std::string_view text) override { recordTexts.emplace_back(text); }
    void OnRecordingEnded() override {
        ++recordingEnds;
        if (onRecordingEnded) onRecordingEnded();
    }

    std::vector<std::uint32_t> positions;
    std::vector<std::uint32_t> totals;
    std::vector<std::string> states;
    std::vector<std::uint32_t> frames;
    std::vector<std::pair<std::int32_t, std::int32_t>> peaks;
    std::vector<std::string> recordTexts;
    int stops = 0;
    int recordingEnds = 0;
    std::function<void(std::string_view)> onState;
    std::function<void()> onRecordingEnded;
};

using Bytes = std::vector<std::uint8_t>;

class PlayerTest : public ::testing::Test {
  protected:
    static constexpr std::uint32_t kBlockFrames = 128;

    PlayerTest() {
        player.SetObserver(&observer);
        player.SetPlaybackBlockFrames(kBlockFrames);
        player.SetRecordBlockFrames(kBlockFrames);
    }

    // Bytes in which every place of a few thousand differs from its neighbours.
    static Bytes Pattern(std::size_t size, unsigned seed = 0) {
        Bytes bytes(size);
        for (std::size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<std::uint8_t>((i * 167 + i / 251 + seed) % 256);
        return bytes;
    }

    void MakeSound(unsigned channels, unsigned bits, std::uint32_t frames) {
        MakeSound(player, channels, bits, frames);
    }
    void MakeSound(CWavePlayer& wave, unsigned channels, unsigned bits, std::uint32_t frames) {
        ASSERT_TRUE(wave.Create(channels, bits, 8000, frames));
        sound = Pattern(wave.GetDataSize());
        std::ranges::copy(sound, wave.MutableBytes().begin());
    }

    // Lets the device play until the player has closed it or a great many blocks were heard.
    void HearToEnd() {
        for (int i = 0; i < 1000 && out.open && !out.paused; ++i) out.Hear();
    }

    RecordingPrompts prompts;
    FakeProgress progress;
    FakeWaveDevices devices;
    FakeWaveOut& out = devices.Out();
    FakeWaveIn& in = devices.In();
    NotingObserver observer;
    CWavePlayer player{prompts, progress, devices};
    Bytes sound;
};

}  // namespace sonavel
