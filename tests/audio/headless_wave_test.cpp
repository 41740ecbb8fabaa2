#include <gtest/gtest.h>

#include <chrono>

#include "audio/player_fixture.h"
#include "platform/headless/headless_wave_devices.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

using Clock = std::chrono::steady_clock;
using HeadlessWaveTest = PlayerTest;

TEST_F(HeadlessWaveTest, WhatIsPlayedCanBeOpenedAsAFile) {
    const TemporaryFolder folder;
    const auto path = folder / "played.wav";
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked, path);
    CWavePlayer source(prompts, progress, headless);
    source.SetPlaybackBlockFrames(128);
    for (const unsigned bits : {8u, 16u}) {
        MakeSound(source, 2, bits, 128 * 40);
        ASSERT_TRUE(source.Play(0));
        headless.PumpUntilIdle();
        EXPECT_TRUE(source.IsStopped());
        CWave played(prompts, progress);
        ASSERT_TRUE(played.Open(path, WavOpenMode::kReadAll));
        EXPECT_EQ(played.GetFormat(), source.GetFormat());
        EXPECT_TRUE(std::ranges::equal(played.Bytes(), source.Bytes()));
    }
}

TEST_F(HeadlessWaveTest, FloatsArePlayedIntoAFileOfFloats) {
    const TemporaryFolder folder;
    const auto path = folder / "played.wav";
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked, path);
    CWavePlayer source(prompts, progress, headless);
    source.SetPlaybackBlockFrames(128);
    ASSERT_TRUE(source.Create(1, 32, 8000, 128));
    for (std::uint32_t i = 0; i < 128; ++i) source.SetSample(0, i, static_cast<int>(i) * 1000);
    ASSERT_TRUE(source.Play(0));
    headless.PumpUntilIdle();
    const auto file = ReadFileBytes(path);
    ASSERT_EQ(file.size(), 44u + 128 * 4);
    EXPECT_EQ(file[20], 3);   // floats
    EXPECT_EQ(file[34], 32);  // bits
    EXPECT_TRUE(std::equal(file.begin() + 44, file.end(), source.Bytes().begin()));
}

TEST_F(HeadlessWaveTest, AFileThatCannotBeWrittenIsADeviceError) {
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked, "/nonexistent/played.wav");
    CWavePlayer source(prompts, progress, headless);
    ASSERT_TRUE(source.Create(1, 8, 8000, 1000));
    EXPECT_FALSE(source.Play(0));
    EXPECT_EQ(prompts.messages.size(), 1u);
}

TEST_F(HeadlessWaveTest, RealTimeTakesTheSoundsOwnTime) {
    HeadlessWaveDevices headless(WavePace::kRealTime);
    CWavePlayer source(prompts, progress, headless);
    source.SetPlaybackBlockFrames(128);
    ASSERT_TRUE(source.Create(2, 16, 12800, 1280));
    const auto begin = Clock::now();
    ASSERT_TRUE(source.Play(0));
    ASSERT_TRUE(source.Pause());
    EXPECT_FALSE(headless.Pump());
    ASSERT_TRUE(source.Pause());
    headless.PumpUntilIdle();
    EXPECT_TRUE(source.IsStopped());
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(100));
    EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(HeadlessWaveTest, ADeviceThatIsNotOpenTakesNoBlocks) {
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked);
    WaveBlock block;
    const auto output = headless.CreateOut();
    const auto input = headless.CreateIn();
    for (const WaveResult result :
         {output->Prepare(block), output->Write(block), output->Unprepare(block),
          input->Prepare(block), input->Add(block), input->Unprepare(block)})
        EXPECT_EQ(result, kWaveInvalidHandle);
}

TEST_F(HeadlessWaveTest, InputsHearSilence) {
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked);
    CWavePlayer target(prompts, progress, headless);
    target.SetRecordBlockFrames(128);
    for (const unsigned bits : {8u, 16u}) {
        ASSERT_TRUE(target.Create(1, bits, 8000, 0));
        ASSERT_TRUE(target.StartRecording());
        for (int i = 0; i < 25; ++i) EXPECT_TRUE(headless.Pump());
        ASSERT_TRUE(target.StopRecording(0));
        EXPECT_FALSE(headless.Pump());
        ASSERT_EQ(target.GetFrameCount(), 25u * 128);
        for (std::uint32_t i = 0; i < 25 * 128; ++i) ASSERT_EQ(target.GetSample(0, i), 0);
    }
}

TEST_F(HeadlessWaveTest, APlayerMayGoWhileItPlays) {
    HeadlessWaveDevices headless(WavePace::kAsFastAsAsked);
    {
        CWavePlayer source(prompts, progress, headless);
        ASSERT_TRUE(source.Create(1, 8, 8000, 100000));
        ASSERT_TRUE(source.Play(0));
        EXPECT_TRUE(headless.Pump());
    }
    EXPECT_FALSE(headless.Pump());
}

}  // namespace
}  // namespace sonavel
