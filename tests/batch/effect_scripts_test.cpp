// The effects of daily work as a script calls them: ranges, markers, times, what is refused.
#include <gtest/gtest.h>

#include "batch/batch_tool_fixture.h"

namespace sonavel::batch {
namespace {

class EffectScriptsTest : public BatchToolTest {
  protected:
    // 16 bits at 8000 Hz: 100, 200, ... 800.
    EffectScriptsTest() {
        FileBytes data;
        for (int sample = 100; sample <= 800; sample += 100) {
            data.push_back(static_cast<std::uint8_t>(sample & 0xFF));
            data.push_back(static_cast<std::uint8_t>(sample >> 8));
        }
        WriteFileBytes(folder_ / "a.wav", WavBytes({.bits = 16, .blockAlign = 2, .data = data}));
    }
};

TEST_F(EffectScriptsTest, EachWorksOnItsRange) {
    ExpectOutput("open @/a.wav; select 2 5; invert; samples 1 5; undo; reverse; samples 1 5; undo",
                 "1 200\n2 -300\n3 -400\n4 -500\n5 600\n1 200\n2 500\n3 400\n4 300\n5 600\n");
    ExpectOutput(
        "open @/a.wav; select 2 5; fade-in; samples 1 5; fade-out curve=smooth; samples 2 3",
        "1 200\n2 0\n3 200\n4 500\n5 600\n2 0\n3 100\n4 0\n");
    ExpectOutput("open @/a.wav; select 6 8; mute; samples 5 9; undo; normalise peak=0; samples 5 9",
                 "5 600\n6 0\n7 0\n5 600\n6 28672\n7 32767\n");
    ExpectOutput("open @/a.wav; select 0 2; remove-offset; samples 0 3", "0 -50\n1 50\n2 300\n");
}

TEST_F(EffectScriptsTest, MarkersFollowWhatIsCutInsertedAndScaled) {
    ExpectOutput(
        "open @/a.wav; marker-add 1; marker-add 4 name=in; marker-add 7; select 3 6; crop; "
        "markers; samples 0 9",
        "marker 2 position=1 length=0 name=\"in\"\n0 400\n1 500\n2 600\n");
}

TEST_F(EffectScriptsTest, SilenceIsAsLongAsItsTimeSays) {
    ExpectOutput(
        "open @/a.wav; marker-add 4 name=m; cursor 2; insert-silence 0.5ms; samples 1 6; "
        "markers; undo; select 1 7; insert-silence 1; samples 0 9",
        "1 200\n2 0\n3 0\n4 0\n5 0\n6 300\n"
        "marker 1 position=8 length=0 name=\"m\"\n"
        "0 100\n1 0\n2 800\n");
    EXPECT_EQ(Run("open @/a.wav; insert-silence 1.5x").status, 2);
    EXPECT_EQ(Run("open @/a.wav; insert-silence 0").status, 1);
}

TEST_F(EffectScriptsTest, ASoundAtAnotherRateKeepsItsTimes) {
    ExpectOutput(
        "new rate=8000 channels=2 bits=16; insert-silence 1s; marker-add 4000 length=2000; "
        "select 2000 6000; resample 48000; info; markers; undo; select 0 0; tempo 200; markers",
        "document 1 title=\"Sound1\" rate=48000 channels=2 bits=16 frames=48000 "
        "bytes=192000 duration=1.000000 modified=1 selection=12000..36000 cursor=48000 "
        "markers=1\n"
        "marker 1 position=24000 length=12000 name=\"Marker 1\"\n"
        "marker 1 position=2000 length=1000 name=\"Marker 1\"\n");
}

TEST_F(EffectScriptsTest, WhatCannotBeDoneSaysWhy) {
    ExpectOutput(
        "open @/a.wav; try noise-reduce; try noise-profile; try normalise loudness=-16; mute; "
        "try normalise; select 3 3; try crop; loudness",
        "failed: No noise has been learned yet.\n"
        "failed: Noise is learned from at least 1024 frames.\n"
        "failed: The range has no loudness: it is shorter than 0.4 seconds, or a pause.\n"
        "failed: The range is silent: there is nothing to normalise.\n"
        "failed: Nothing is selected.\n"
        "loudness integrated=-inf range=0.0 true-peak=-inf sample-peak=-inf\n");
}

}  // namespace
}  // namespace sonavel::batch
