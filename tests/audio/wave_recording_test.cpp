#include "audio/player_fixture.h"
#include "support/address_space_limit.h"

namespace sonavel {
namespace {

class RecordingTest : public PlayerTest {
  protected:
    Bytes SoundBytes() const { return {player.Bytes().begin(), player.Bytes().end()}; }

    static Bytes Joined(Bytes first, const Bytes& second, const Bytes& third) {
        first.insert(first.end(), second.begin(), second.end());
        first.insert(first.end(), third.begin(), third.end());
        return first;
    }
};

TEST_F(RecordingTest, IntoAnEmptySoundYieldsExactlyWhatCame) {
    const struct {
        unsigned channels, bits;
        std::size_t frames;
    } cases[] = {{1, 8, 128 * 25}, {2, 8, 1000}, {1, 16, 127}, {2, 16, 128 * 30 + 77}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.frames);
        ASSERT_TRUE(player.Create(c.channels, c.bits, 44100, 0));
        player.SetModified(false);
        ASSERT_TRUE(player.StartRecording());
        EXPECT_TRUE(player.IsRecording());
        EXPECT_EQ(in.format.channels, c.channels);
        EXPECT_EQ(in.format.bitsPerSample, c.bits);
        const Bytes arriving = Pattern(c.frames * c.channels * c.bits / 8, 7);
        // In portions that do not match the blocks.
        for (std::size_t i = 0; i < arriving.size(); i += 500 * c.channels)
            in.Arrive(std::span(arriving).subspan(
                i, std::min<std::size_t>(500 * c.channels, arriving.size() - i)));
        EXPECT_TRUE(player.Bytes().empty());
        EXPECT_TRUE(player.StopRecording(0));
        EXPECT_EQ(SoundBytes(), arriving);
        EXPECT_TRUE(player.IsStopped());
        EXPECT_TRUE(player.GetModified());
        EXPECT_FALSE(in.open);
    }
}

TEST_F(RecordingTest, IsInsertedAtTheCursorAndLeavesTheMarkersAlone) {
    const Bytes arriving = Pattern(128 * 4 * 3, 99);
    for (const std::uint32_t cursor : {0u, 333u, 1000u, 5000u}) {
        SCOPED_TRACE(cursor);
        MakeSound(2, 16, 1000);
        player.Markers().Add(0, "start", 0);
        player.Markers().Add(333, "here", 10);
        player.Markers().Add(999, "end", 0);
        const MarkerList markers = player.Markers();
        ASSERT_TRUE(player.StartRecording());
        in.Arrive(arriving);
        ASSERT_TRUE(player.StopRecording(cursor));
        const auto at = sound.begin() + std::min(cursor, 1000u) * 4;
        EXPECT_EQ(SoundBytes(), Joined({sound.begin(), at}, arriving, {at, sound.end()}));
        EXPECT_EQ(player.Markers(), markers);
    }
}

TEST_F(RecordingTest, WithNothingRecordedChangesNothing) {
    MakeSound(1, 8, 1000);
    player.SetModified(false);
    EXPECT_FALSE(player.StopRecording(5));
    ASSERT_TRUE(player.StartRecording());
    EXPECT_FALSE(player.StopRecording(5));
    EXPECT_EQ(SoundBytes(), sound);
    EXPECT_FALSE(player.GetModified());
    EXPECT_FALSE(in.open);
    EXPECT_TRUE(progress.titles.empty());
}

TEST_F(RecordingTest, ReportsTimeCountsAndPeaksForEveryBlock) {
    ASSERT_TRUE(player.Create(2, 16, 128, 0));
    ASSERT_TRUE(player.StartRecording());
    Bytes arriving(128 * 4 * 2);
    arriving[1] = 0x80;           // left -32768 in the first block
    arriving[128 * 4 + 6] = 100;  // right 100 in the second
    in.Arrive(arriving);
    EXPECT_EQ(observer.recordTexts,
              (std::vector<std::string>{"(Recording)00:00:01.000 / 128 Samples / 512 Bytes",
                                        "(Recording)00:00:02.000 / 256 Samples / 1024 Bytes"}));
    EXPECT_EQ(observer.peaks,
              (std::vector<std::pair<std::int32_t, std::int32_t>>{{32768, 0}, {0, 100}}));
    EXPECT_EQ(player.GetRecordedFrames(), 256u);
    ASSERT_TRUE(player.StopRecording(0));
    EXPECT_EQ(observer.states.back(), "(Stopped) ");
    EXPECT_EQ(observer.peaks.back(), std::pair(0, 0));
}

TEST_F(RecordingTest, ShowsItsProgress) {
    ASSERT_TRUE(player.Create(1, 8, 8000, 0));
    ASSERT_TRUE(player.StartRecording());
    in.Arrive(Pattern(128 * 3));
    ASSERT_TRUE(player.StopRecording(0));
    EXPECT_EQ(progress.titles, std::vector<std::string>{"Recorded data ready"});
    EXPECT_EQ(progress.positions, (std::vector<int>{0, 33, 67, 100}));
    EXPECT_EQ(progress.openWindows, 0);
    // Many blocks show each position once.
    progress.positions.clear();
    ASSERT_TRUE(player.StartRecording());
    for (int i = 0; i < 250; ++i) in.Arrive(Pattern(128));
    ASSERT_TRUE(player.StopRecording(0));
    EXPECT_EQ(progress.positions.size(), 101u);
    EXPECT_EQ(std::ranges::adjacent_find(progress.positions, std::ranges::greater_equal()),
              progress.positions.end());
}

TEST_F(RecordingTest, TheRingStaysFullForAsLongAsItTakes) {
    ASSERT_TRUE(player.Create(1, 8, 8000, 0));
    ASSERT_TRUE(player.StartRecording());
    Bytes all;
    for (unsigned i = 0; i < 500; ++i) {
        const Bytes arriving = Pattern(128 * 7, i);
        in.Arrive(arriving);
        all.insert(all.end(), arriving.begin(), arriving.end());
        ASSERT_EQ(in.queue.size(), 10u);
    }
    ASSERT_TRUE(player.StopRecording(0));
    EXPECT_EQ(SoundBytes(), all);
}

TEST_F(RecordingTest, DeviceErrorsAreShownAndLeaveThePlayerStopped) {
    MakeSound(1, 8, 1000);
    player.SetRecordDevice(kNoWaveDevice);
    EXPECT_FALSE(player.StartRecording());
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(in.calls.empty());
    player.SetRecordDevice(kDefaultWaveDevice);
    for (const char* call : {"open", "prepare", "add", "start"}) {
        SCOPED_TRACE(call);
        prompts.messages.clear();
        in.failures = {{call, 6}};
        EXPECT_FALSE(player.StartRecording());
        EXPECT_TRUE(player.IsStopped());
        EXPECT_FALSE(in.open);
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"no device driver present"});
    }
}

TEST_F(RecordingTest, ALostDeviceEndsTheRecordingAndItsTakeIsKept) {
    const struct {
        const char* name;
        bool observed;
        std::uint32_t cursor;  // where an observer wants the take; nobody else knows of one
    } cases[] = {{"by the observer", true, 400}, {"by the player itself", false, 0}};
    const Bytes arriving = Pattern(128 * 3 + 50, 3);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        MakeSound(1, 8, 1000);
        prompts.messages.clear();
        observer = NotingObserver();
        bool keptBeforeTheError = false;
        observer.onRecordingEnded = [&] {
            if (!c.observed) return;
            EXPECT_TRUE(player.StopRecording(c.cursor));
            keptBeforeTheError = prompts.messages.empty();
            player.ReportRecordingEnd();
        };
        ASSERT_TRUE(player.StartRecording());
        in.Arrive(arriving);
        EXPECT_EQ(observer.recordingEnds, 0);
        in.Lose(kWaveNoDriver);
        EXPECT_EQ(observer.recordingEnds, 1);
        EXPECT_TRUE(player.IsStopped());
        EXPECT_FALSE(in.open);
        const auto at = sound.begin() + c.cursor;
        EXPECT_EQ(SoundBytes(), Joined({sound.begin(), at}, arriving, {at, sound.end()}));
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"no device driver present"});
        EXPECT_EQ(keptBeforeTheError, c.observed);
        EXPECT_EQ(observer.peaks.back(), std::pair(0, 0));
        player.ReportRecordingEnd();
        EXPECT_EQ(prompts.messages.size(), 1u) << "an error is told once";
    }
}

TEST_F(RecordingTest, ErrorsAtTheEndAreToldOnceAndTheTakeIsKept) {
    const Bytes arriving = Pattern(300);
    for (const char* call : {"stop", "reset", "close"}) {
        SCOPED_TRACE(call);
        ASSERT_TRUE(player.Create(1, 8, 8000, 0));
        prompts.messages.clear();
        ASSERT_TRUE(player.StartRecording());
        in.Arrive(arriving);
        in.failures = {{call, 5}};
        EXPECT_TRUE(player.StopRecording(0));
        EXPECT_EQ(SoundBytes(), arriving);
        player.ReportRecordingEnd();
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"device handle is invalid"});
        in.failures.clear();
    }
    prompts.messages.clear();
    ASSERT_TRUE(player.StartRecording());
    EXPECT_FALSE(player.StopRecording(0));
    player.ReportRecordingEnd();
    EXPECT_TRUE(prompts.messages.empty()) << "an error of the recording before";
}

TEST_F(RecordingTest, LostSoundIsCountedInTheTextAndMarked) {
    MakeSound(2, 16, 1000);
    player.Markers().Add(7, "own", 0);
    ASSERT_TRUE(player.StartRecording());
    in.DropSound();  // before the first sound: missing from nothing
    in.Arrive(Pattern(200 * 4));
    EXPECT_EQ(observer.recordTexts.back(), "(Recording)00:00:00.016 / 128 Samples / 512 Bytes");
    in.DropSound();
    in.Arrive(Pattern(128 * 4));
    EXPECT_EQ(observer.recordTexts.back(),
              "(Recording)00:00:00.041 / 328 Samples / 1312 Bytes, 1 gap");
    in.DropSound();
    in.Arrive(Pattern(128 * 4));
    EXPECT_EQ(observer.recordTexts.back(),
              "(Recording)00:00:00.057 / 456 Samples / 1824 Bytes, 2 gaps");
    ASSERT_TRUE(player.StopRecording(100));
    ASSERT_EQ(player.Markers().Count(), 3u);
    EXPECT_EQ(player.Markers().All()[0].position, 7u);
    for (const std::size_t i : {1u, 2u}) {
        EXPECT_EQ(player.Markers().All()[i].name, "Gap");
        EXPECT_EQ(player.Markers().All()[i].position, 100 + 200 + (i - 1) * 128);
    }
    EXPECT_EQ(player.GetFrameCount(), 1456u);
}

// As much of the take as has room is kept, and the person is told why it ends.
TEST_F(RecordingTest, EndsAtTheGreatestSizeOfASound) {
    const struct {
        unsigned channels, bits;
        std::uint32_t room;  // in frames, more than a block
    } cases[] = {{2, 16, 128 + 40}, {1, 8, 128 + 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.room);
        const std::size_t frameBytes = c.channels * c.bits / 8;
        const auto greatestFrames = static_cast<std::uint32_t>(kMaxSoundBytes / frameBytes);
        prompts.messages.clear();
        observer.recordingEnds = 0;
        // Memory that nobody has written costs nothing.
        ASSERT_TRUE(player.Create(c.channels, c.bits, 44100, greatestFrames - c.room));
        // At the end, so that nothing is moved.
        observer.onRecordingEnded = [&] {
            EXPECT_TRUE(player.StopRecording(player.GetFrameCount()));
            player.ReportRecordingEnd();
        };
        ASSERT_TRUE(player.StartRecording());
        const Bytes arriving = Pattern(128 * frameBytes * 5, 1);
        const auto first = std::span(arriving).first(128 * frameBytes);
        in.Arrive(first);
        EXPECT_TRUE(player.IsRecording());
        in.Arrive(std::span(arriving).subspan(first.size()));
        EXPECT_TRUE(player.IsStopped());
        EXPECT_EQ(observer.recordingEnds, 1);
        EXPECT_EQ(player.GetFrameCount(), greatestFrames);
        const auto kept = player.Bytes().last(c.room * frameBytes);
        EXPECT_TRUE(std::ranges::equal(kept, std::span(arriving).first(kept.size())));
        ASSERT_EQ(prompts.messages.size(), 1u);
        EXPECT_NE(prompts.messages[0].find("2,147,483,647 bytes"), std::string::npos);
    }
}

// A sound that grew meanwhile leaves less room than there was at the start.
TEST_F(RecordingTest, AGapRightBehindWhatIsKeptOfATakeIsNotMarked) {
    constexpr auto kGreatestFrames = static_cast<std::uint32_t>(kMaxSoundBytes);
    ASSERT_TRUE(player.Create(1, 8, 8000, 0));
    ASSERT_TRUE(player.StartRecording());
    const Bytes arriving = Pattern(128);
    for (int block = 0; block < 4; ++block) {
        if (block > 0) in.DropSound();
        in.Arrive(arriving);
    }
    ASSERT_TRUE(player.GrowWithSilence(kGreatestFrames - 256));
    EXPECT_TRUE(player.StopRecording(kGreatestFrames));
    EXPECT_EQ(player.GetFrameCount(), kGreatestFrames);
    ASSERT_EQ(player.Markers().Count(), 1u);
    EXPECT_EQ(player.Markers().All()[0].position, kGreatestFrames - 128);
}

#ifndef __SANITIZE_ADDRESS__

TEST_F(RecordingTest, WhatFitsIntoTheMemoryIsKept) {
    constexpr std::size_t kTake = 12 << 20;
    constexpr std::size_t kRoom = 5 << 20;
    ASSERT_TRUE(player.Create(1, 8, 8000, 0));
    player.SetRecordBlockFrames(32767);
    ASSERT_TRUE(player.StartRecording());
    const Bytes arriving = Pattern(kTake);
    for (std::size_t i = 0; i < kTake; i += 32768) in.Arrive(std::span(arriving).subspan(i, 32768));
    bool kept = false;
    {
        const AddressSpaceLimit limit(kRoom);
        kept = player.StopRecording(0);
    }
    EXPECT_TRUE(kept);
    EXPECT_GT(player.GetDataSize(), kRoom * 3 / 4);
    EXPECT_LT(player.GetDataSize(), kTake);
    EXPECT_TRUE(
        std::ranges::equal(player.Bytes(), std::span(arriving).first(player.GetDataSize())));
    player.ReportRecordingEnd();
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"memory allocation error"});
}

TEST_F(RecordingTest, ATakeThatFindsNoMoreMemoryEndsAndTheNextOneGoesOn) {
    constexpr std::size_t kBlock = 32767 * 4;
    ASSERT_TRUE(player.Create(2, 16, 8000, 0));
    player.SetRecordBlockFrames(32767);
    ASSERT_TRUE(player.StartRecording());
    const Bytes arriving = Pattern(kBlock);
    in.calls.reserve(10000);  // the fake needs memory, too
    {
        const AddressSpaceLimit limit(4 << 20);
        for (int i = 0; i < 500 && observer.recordingEnds == 0; ++i) in.Arrive(arriving);
    }
    EXPECT_EQ(observer.recordingEnds, 1);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"memory allocation error"});
    prompts.messages.clear();
    ASSERT_TRUE(player.StartRecording());
    in.Arrive(arriving);
    EXPECT_TRUE(player.IsRecording());
    EXPECT_TRUE(player.StopRecording(0));
    player.ReportRecordingEnd();
    EXPECT_TRUE(prompts.messages.empty());
}

#endif

TEST_F(RecordingTest, PlayingAndRecordingExcludeEachOther) {
    MakeSound(1, 8, 5000);
    ASSERT_TRUE(player.Play(0));
    ASSERT_TRUE(player.StartRecording());
    EXPECT_FALSE(out.open);
    out.calls.clear();
    EXPECT_FALSE(player.StartRecording());
    EXPECT_FALSE(player.Play(0));
    EXPECT_FALSE(player.PlayRange(0, 100));
    EXPECT_FALSE(player.PlaySkip(0, 1000, 10, 20));
    EXPECT_FALSE(player.Pause());
    player.Stop(CWavePlayer::StopReport::kShow);
    EXPECT_TRUE(player.IsRecording());
    EXPECT_TRUE(out.calls.empty());
}

}  // namespace
}  // namespace sonavel
