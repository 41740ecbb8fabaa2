#include "audio/wave_player.h"

#include "audio/player_fixture.h"

namespace sonavel {
namespace {

// What must be heard of a range: its bytes, then its last sample up to a whole number of blocks.
Bytes PaddedRange(const Bytes& sound, std::size_t start, std::size_t end, std::size_t blockBytes,
                  std::size_t bytesPerSample) {
    Bytes heard(sound.begin() + start, sound.begin() + end);
    while (heard.size() % blockBytes != 0)
        heard.push_back(
            sound[end - bytesPerSample + (heard.size() - (end - start)) % bytesPerSample]);
    return heard;
}

struct Layout {
    unsigned channels;
    unsigned bits;
};

class PlayerLayoutTest : public PlayerTest, public ::testing::WithParamInterface<Layout> {
  protected:
    unsigned BytesPerSample() const { return GetParam().bits / 8; }
    unsigned Align() const { return GetParam().channels * BytesPerSample(); }
    std::size_t BlockBytes() const { return std::size_t{kBlockFrames} * Align(); }
};

INSTANTIATE_TEST_SUITE_P(Layouts, PlayerLayoutTest,
                         ::testing::Values(Layout{1, 8}, Layout{2, 8}, Layout{1, 16}, Layout{2, 16},
                                           Layout{1, 32}, Layout{2, 32}));

TEST_P(PlayerLayoutTest, RangesAreHeardByteForByteAndPaddedWithTheLastSample) {
    MakeSound(GetParam().channels, GetParam().bits, 5000);
    const struct {
        std::uint32_t startFrame, endFrame;
    } ranges[] = {{0, 5000}, {0, 128 * 12}, {17, 18}, {100, 100 + 129}, {4990, 5000}, {1, 4999}};
    for (const auto& [startFrame, endFrame] : ranges) {
        SCOPED_TRACE(startFrame);
        out.played.clear();
        ASSERT_TRUE(player.PlayRange(startFrame * Align(), endFrame * Align()));
        EXPECT_EQ(out.format.channels, GetParam().channels);
        EXPECT_EQ(out.format.bitsPerSample, GetParam().bits);
        EXPECT_EQ(out.format.samplesPerSecond, 8000u);
        HearToEnd();
        EXPECT_FALSE(out.open);
        EXPECT_TRUE(player.IsStopped());
        for (const Bytes& block : out.played) EXPECT_EQ(block.size(), BlockBytes());
        EXPECT_EQ(out.AllPlayed(), PaddedRange(sound, startFrame * Align(), endFrame * Align(),
                                               BlockBytes(), BytesPerSample()));
    }
    EXPECT_EQ(std::ranges::count(out.calls, "unprepare"), std::ranges::count(out.calls, "write"));
}

TEST_P(PlayerLayoutTest, LoopingRepeatsTheRangeUntilStop) {
    MakeSound(GetParam().channels, GetParam().bits, 1000);
    const std::uint32_t start = 10 * Align();
    const std::uint32_t end = 310 * Align();
    player.SetLooping(true);
    ASSERT_TRUE(player.PlayRange(start, end));
    out.Hear(7);
    for (int i = 0; i < 20; ++i) out.Hear();
    const Bytes once = PaddedRange(sound, start, end, BlockBytes(), BytesPerSample());
    Bytes expected;
    for (int i = 0; i < 9; ++i) expected.insert(expected.end(), once.begin(), once.end());
    EXPECT_EQ(out.AllPlayed(), expected);
    EXPECT_TRUE(player.IsPlaying());
    player.Stop(CWavePlayer::StopReport::kShow);
    EXPECT_FALSE(player.IsLooping());
    EXPECT_FALSE(out.open);
}

TEST_P(PlayerLayoutTest, SkippedRegionsAreLeftOutFromTheFirstBlockInsideThem) {
    MakeSound(GetParam().channels, GetParam().bits, 3000);
    const auto block = static_cast<std::uint32_t>(BlockBytes());
    // The region begins at the third block's start, or a little before it, inside the second.
    for (const std::uint32_t before : {0u, 4u}) {
        SCOPED_TRACE(before);
        out.played.clear();
        const std::uint32_t skipEnd = 1000 * Align();
        ASSERT_TRUE(player.PlaySkip(0, 2000 * Align(), 2 * block - before, skipEnd));
        HearToEnd();
        Bytes expected(sound.begin(), sound.begin() + 2 * block);
        const Bytes rest =
            PaddedRange(sound, skipEnd + BytesPerSample(), 2000 * Align(), block, BytesPerSample());
        expected.insert(expected.end(), rest.begin(), rest.end());
        EXPECT_EQ(out.AllPlayed(), expected);
    }
}

TEST_F(PlayerTest, ASkippedRegionAtTheEndOrBehindTheLastBlockStartEndsThePlaying) {
    MakeSound(1, 16, 1000);
    ASSERT_TRUE(player.PlaySkip(0, 2000, 256, 2000));
    HearToEnd();
    EXPECT_EQ(out.AllPlayed(), Bytes(sound.begin(), sound.begin() + 256));
    EXPECT_TRUE(player.IsStopped());
    // The next playback knows nothing of the region.
    out.played.clear();
    ASSERT_TRUE(player.PlayRange(0, 768));
    HearToEnd();
    EXPECT_EQ(out.AllPlayed(), Bytes(sound.begin(), sound.begin() + 768));
    // One that begins with the range is left out at once.
    out.played.clear();
    ASSERT_TRUE(player.PlaySkip(256, 1280, 256, 510));
    HearToEnd();
    EXPECT_EQ(out.AllPlayed(), Bytes(sound.begin() + 512, sound.begin() + 1280));
}

TEST_F(PlayerTest, ARangeThatEndsInsideASampleGoesOnWithWhatItCopiedLast) {
    MakeSound(1, 16, 1000);
    const struct {
        std::uint32_t end;
        std::size_t whole, repeated;
    } cases[] = {{255, 254, 252}, {257, 256, 255}};
    for (const auto& c : cases) {
        out.played.clear();
        ASSERT_TRUE(player.PlayRange(0, c.end));
        HearToEnd();
        const Bytes heard = out.AllPlayed();
        ASSERT_EQ(heard.size(), (c.end + 255) / 256 * 256);
        for (std::size_t i = 0; i < heard.size(); ++i)
            ASSERT_EQ(heard[i], sound[i < c.whole ? i : c.repeated + i % 2]) << c.end << ' ' << i;
    }
}

TEST_F(PlayerTest, ImpossibleStartsOpenNoDevice) {
    EXPECT_FALSE(player.Play(0));
    EXPECT_FALSE(player.PlayRange(0, 100));
    MakeSound(1, 8, 1000);
    const struct {
        std::uint32_t start, end, skipStart, skipEnd;
    } refused[] = {{100, 900, 50, 200},
                   {100, 900, 200, 901},
                   {100, 100, 100, 100},
                   {900, 100, 500, 600},
                   {100, 2000, 200, 1500}};
    for (const auto& c : refused)
        EXPECT_FALSE(player.PlaySkip(c.start, c.end, c.skipStart, c.skipEnd));
    player.SetPlaybackDevice(kNoWaveDevice);
    EXPECT_FALSE(player.Play(0));
    EXPECT_TRUE(out.calls.empty());
    EXPECT_TRUE(prompts.messages.empty());
    EXPECT_TRUE(player.IsStopped());
}

TEST_F(PlayerTest, EmptyRangesStopAtOnceEvenWhileLooping) {
    MakeSound(1, 8, 1000);
    player.SetLooping(true);
    EXPECT_FALSE(player.PlayRange(500, 500));
    EXPECT_FALSE(player.PlayRange(5000, 6000));
    EXPECT_TRUE(player.IsStopped());
    EXPECT_FALSE(out.open);
    EXPECT_TRUE(out.played.empty());
}

TEST_F(PlayerTest, SettingsOutsideTheirRangesAreIgnored) {
    MakeSound(1, 8, 1000);
    for (const int frames : {127, 32768, 0, -1}) player.SetPlaybackBlockFrames(frames);
    for (const int id : {-3, 257}) player.SetPlaybackDevice(id);
    ASSERT_TRUE(player.Play(0));
    EXPECT_EQ(out.deviceId, kDefaultWaveDevice);
    EXPECT_EQ(out.queue.front()->data.size(), kBlockFrames);
    player.SetPlaybackBlockFrames(32767);
    player.SetPlaybackDevice(256);
    ASSERT_TRUE(player.Play(0));
    EXPECT_EQ(out.deviceId, 256);
    EXPECT_EQ(out.queue.front()->data.size(), 32767u);
}

TEST_F(PlayerTest, BlocksComeBackInTheOrderInWhichTheyWereQueued) {
    MakeSound(1, 8, 5000);
    ASSERT_TRUE(player.Play(0));
    const std::vector<WaveBlock*> queued(out.queue.begin(), out.queue.end());
    // A block that is done before an older one has to wait for it.
    queued[1]->done = true;
    out.Notify();
    EXPECT_EQ(out.queue.size(), 10u);
    queued[0]->done = true;
    out.queue.erase(out.queue.begin(), out.queue.begin() + 2);
    out.Notify();
    ASSERT_EQ(out.queue.size(), 10u);
    EXPECT_EQ(out.queue[8], queued[0]);
    EXPECT_EQ(out.queue[9], queued[1]);
    EXPECT_EQ(out.queue[8]->data, Bytes(sound.begin() + 10 * 128, sound.begin() + 11 * 128));
}

TEST_F(PlayerTest, PositionsAreThoseOfTheBlockBeingHeard) {
    MakeSound(1, 16, 128 * 12 + 5);
    const std::uint32_t total = player.GetDataSize();
    ASSERT_TRUE(player.Play(512));
    HearToEnd();
    std::vector<std::uint32_t> expected;
    for (std::uint32_t start = 512; start < total; start += 256) expected.push_back(start);
    expected.push_back(total);
    EXPECT_EQ(observer.positions, expected);
    EXPECT_EQ(observer.totals, std::vector<std::uint32_t>(expected.size(), total));
    EXPECT_EQ(observer.states.front(), "(Playing) ");
    EXPECT_EQ(observer.frames.front(), 256u + 10 * 128);
    EXPECT_EQ(observer.states.back(), "(Stopped) ");
    EXPECT_EQ(observer.frames.back(), player.GetFrameCount());
    EXPECT_EQ(observer.stops, 1);
}

TEST_F(PlayerTest, PeaksCoverTheBlockSizeTakenAsBytes) {
    ASSERT_TRUE(player.Create(2, 16, 8000, 1000));
    std::ranges::fill(player.MutableBytes(), std::uint8_t{0});
    // 128 bytes are 32 stereo frames.
    player.SetSample(0, 31, -32768);
    player.SetSample(1, 5, 700);
    player.SetSample(1, 32, 9999);
    player.SetSample(0, 128 + 32, 9999);
    ASSERT_TRUE(player.Play(0));
    EXPECT_EQ(observer.peaks.back(), std::pair(32768, 700));
    out.Hear();
    EXPECT_EQ(observer.peaks.back(), std::pair(0, 0));
    ASSERT_TRUE(player.PlayRange(31 * 4, 32 * 4));
    EXPECT_EQ(observer.peaks.back(), std::pair(32768, 0));

    ASSERT_TRUE(player.Create(1, 8, 8000, 1000));
    std::ranges::fill(player.MutableBytes(), std::uint8_t{128});
    player.SetSample(0, 127, -127);
    player.SetSample(0, 128, 128);
    ASSERT_TRUE(player.Play(0));
    EXPECT_EQ(observer.peaks.back(), std::pair(127, 127));
    player.Stop(CWavePlayer::StopReport::kShow);
    EXPECT_EQ(observer.peaks.back(), std::pair(0, 0));
}

TEST_F(PlayerTest, PauseAndResume) {
    MakeSound(1, 8, 5000);
    EXPECT_FALSE(player.Pause());
    const std::function<bool()> resumes[] = {[&] { return player.Pause(); },
                                             [&] { return player.Play(3000); },
                                             [&] { return player.PlayRange(3000, 4000); }};
    for (const auto& resume : resumes) {
        out.played.clear();
        ASSERT_TRUE(player.Play(0));
        out.Hear(3);
        ASSERT_TRUE(player.Pause());
        EXPECT_TRUE(player.IsPaused());
        EXPECT_TRUE(out.paused);
        EXPECT_EQ(observer.states.back(), "(Pausing) ");
        ASSERT_TRUE(resume());
        EXPECT_TRUE(player.IsPlaying());
        EXPECT_FALSE(out.paused);
        EXPECT_EQ(observer.states.back(), "(Playing) ");
        out.Hear(2);
        EXPECT_EQ(out.AllPlayed(), Bytes(sound.begin(), sound.begin() + 5 * 128));
        player.Stop(CWavePlayer::StopReport::kSilent);
    }
}

TEST_F(PlayerTest, BlocksThatComeBackDuringAPauseAreTakenAtTheResume) {
    MakeSound(1, 8, 300);
    ASSERT_TRUE(player.Play(0));
    out.HearSilently(3);
    ASSERT_TRUE(player.Pause());
    out.Notify();
    EXPECT_TRUE(player.IsPaused());
    ASSERT_TRUE(player.Pause());
    EXPECT_TRUE(player.IsStopped());
    EXPECT_FALSE(out.open);
}

TEST_F(PlayerTest, StopInEveryState) {
    using enum CWavePlayer::StopReport;
    MakeSound(1, 8, 5000);
    player.SetLooping(true);
    player.Stop(kShow);
    EXPECT_FALSE(player.IsLooping());
    EXPECT_TRUE(out.calls.empty());
    EXPECT_TRUE(observer.states.empty());
    std::vector<std::string> expected(12, "unprepare");
    expected.front() = "reset";
    expected.back() = "close";
    for (const bool paused : {false, true}) {
        for (const auto report : {kSilent, kShow}) {
            ASSERT_TRUE(player.Play(0));
            if (paused) player.Pause();
            observer = NotingObserver();
            out.calls.clear();
            player.Stop(report);
            EXPECT_EQ(out.calls, expected);
            EXPECT_TRUE(player.IsStopped());
            EXPECT_EQ(observer.stops, 1);
            const std::size_t reports = report == kShow;
            EXPECT_EQ(observer.states, std::vector<std::string>(reports, "(Stopped) "));
            EXPECT_EQ(observer.positions, std::vector<std::uint32_t>(reports, 5000));
        }
    }
}

TEST_F(PlayerTest, StartingWhilePlayingEndsTheOldPlaybackAndKeepsLooping) {
    MakeSound(1, 8, 5000);
    player.SetLooping(true);
    ASSERT_TRUE(player.Play(0));
    const struct {
        std::function<bool()> start;
        std::uint32_t startByte;
    } starts[] = {{[&] { return player.PlayRange(1000, 1128); }, 1000},
                  {[&] { return player.Play(3000); }, 3000}};
    for (const auto& [start, startByte] : starts) {
        observer = NotingObserver();
        out.calls.clear();
        ASSERT_TRUE(start());
        EXPECT_TRUE(player.IsLooping());
        EXPECT_EQ(observer.positions, (std::vector<std::uint32_t>{5000, startByte}));
        EXPECT_EQ(observer.states, (std::vector<std::string>{"(Stopped) ", "(Playing) "}));
        EXPECT_EQ(observer.stops, 1);
        EXPECT_EQ(std::ranges::count(out.calls, "close"), 1);
        EXPECT_EQ(out.queue.front()->data[0], sound[startByte]);
    }
    ASSERT_TRUE(player.PlaySkip(0, 1000, 200, 300));
    EXPECT_FALSE(player.IsLooping());
}

TEST_F(PlayerTest, ADialogTakesThePositionsInTheObserversPlace) {
    MakeSound(1, 8, 5000);
    NotingObserver dialog;
    player.SetPositionObserver(&dialog);
    ASSERT_TRUE(player.Play(0));
    player.SetPositionObserver(nullptr);
    out.Hear();
    EXPECT_EQ(dialog.positions, std::vector<std::uint32_t>{0});
    EXPECT_TRUE(dialog.states.empty());
    EXPECT_EQ(observer.positions, std::vector<std::uint32_t>{128});
    EXPECT_EQ(observer.peaks.size(), 2u);
}

TEST_F(PlayerTest, DeviceErrorsAreShownAndLeaveThePlayerStopped) {
    const std::tuple<const char*, std::uint32_t> cases[] = {
        {"open", 5000},
        {"pause", 5000},
        {"prepare", 5000},
        {"write", 5000},
        {"restart", 5000},
        // Nothing is left to play when the first block fails.
        {"prepare", 10},
        {"write", 10}};
    for (const auto& [call, frames] : cases) {
        SCOPED_TRACE(::testing::Message() << call << ' ' << frames);
        MakeSound(1, 8, frames);
        prompts.messages.clear();
        out.failures = {{call, 4}};
        EXPECT_FALSE(player.Play(0));
        EXPECT_TRUE(player.IsStopped());
        EXPECT_FALSE(out.open);
        EXPECT_EQ(prompts.messages, std::vector<std::string>{"device already allocated"});
        EXPECT_TRUE(out.queue.empty());
    }
    MakeSound(1, 8, 5000);
    prompts.messages.clear();
    out.failures = {{"close", 5}};
    EXPECT_TRUE(player.Play(0));
    player.Stop(CWavePlayer::StopReport::kShow);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"device handle is invalid"});
    EXPECT_TRUE(player.IsStopped());
}

TEST_F(PlayerTest, ALostDeviceEndsThePlayingWithOneErrorAndTheNextStartOpensItAnew) {
    const struct {
        const char* name;
        std::function<void()> lose;
        const char* error = "no device driver present";
    } cases[] = {
        {"while playing", [&] { out.Lose(kWaveNoDriver); }},
        {"while looping",
         [&] {
             player.SetLooping(true);
             out.Lose(kWaveNoDriver);
         }},
        {"while paused",
         [&] {
             player.Pause();
             out.Lose(kWaveNoDriver);
         }},
        {"hanging", [&] { out.Lose(kWaveNoAnswer); },
         "드라이버가 DriverCallback 함수를 호출 하지 않습니다."},
        {"before anyone is told, at the next block",
         [&] {
             out.failures = {{"restart", kWaveNoDriver}};
             out.Hear();
         }},
        {"before anyone is told, at the resume",
         [&] {
             player.Pause();
             out.failures = {{"restart", kWaveNoDriver}};
             player.Pause();
         }},
        {"with an error also when it is closed",
         [&] {
             out.failures = {{"close", 5}};
             out.Lose(kWaveNoDriver);
         }},
    };
    MakeSound(1, 8, 5000);
    player.SetModified(false);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        prompts.messages.clear();
        ASSERT_TRUE(player.Play(0));
        out.Hear();
        observer = NotingObserver();
        c.lose();
        EXPECT_TRUE(player.IsStopped());
        EXPECT_FALSE(player.IsLooping());
        EXPECT_FALSE(out.open);
        EXPECT_EQ(prompts.messages, std::vector<std::string>{c.error});
        EXPECT_EQ(observer.states.back(), "(Stopped) ");
        EXPECT_EQ(observer.peaks.back(), std::pair(0, 0));
        EXPECT_EQ(observer.stops, 1);
        EXPECT_FALSE(player.GetModified());
        out.failures.clear();
        ASSERT_TRUE(player.Play(0));
        player.Stop(CWavePlayer::StopReport::kSilent);
    }
}

TEST_F(PlayerTest, ADeviceThatHangsAtItsEndIsNotAskedAgainAtOnce) {
    MakeSound(1, 8, 5000);
    ASSERT_TRUE(player.Play(0));
    out.failures = {{"close", kWaveNoAnswer}};
    EXPECT_FALSE(player.Play(0));
    EXPECT_TRUE(player.IsStopped());
    EXPECT_EQ(std::ranges::count(out.calls, "open"), 1);
    EXPECT_EQ(prompts.messages.size(), 1u);
    EXPECT_TRUE(player.Play(0));
}

TEST_F(PlayerTest, ASoundThatShrinksWhilePlayingEndsThere) {
    for (const std::uint32_t frames : {1500u, 3u, 0u}) {
        SCOPED_TRACE(frames);
        MakeSound(1, 16, 5000);
        player.SetLooping(frames == 0);
        ASSERT_TRUE(player.Play(0));
        ASSERT_TRUE(player.Create(1, 16, 8000, frames));
        HearToEnd();
        EXPECT_TRUE(player.IsStopped());
    }
}

TEST_F(PlayerTest, AnObserverMayStopAndStartFromItsReports) {
    MakeSound(1, 8, 5000);
    observer.onState = [&](std::string_view text) {
        if (text == "(Playing) ") player.Stop(CWavePlayer::StopReport::kShow);
    };
    EXPECT_FALSE(player.Play(0));
    EXPECT_FALSE(out.open);
    int starts = 0;
    observer.onState = [&](std::string_view text) {
        if (text == "(Stopped) " && ++starts < 3) player.PlayRange(0, 128);
    };
    ASSERT_TRUE(player.PlayRange(0, 128));
    out.played.clear();
    HearToEnd();
    EXPECT_EQ(out.played.size(), 3u);
    EXPECT_TRUE(player.IsStopped());
}

TEST_F(PlayerTest, APlayerThatIsDestroyedClosesItsDeviceWithoutAWord) {
    {
        CWavePlayer other(prompts, progress, devices);
        other.SetObserver(&observer);
        ASSERT_TRUE(other.Create(1, 8, 8000, 5000));
        ASSERT_TRUE(other.Play(0));
        observer = NotingObserver();
        devices.Out().failures = {{"close", 5}};
    }
    EXPECT_FALSE(devices.Out().open);
    EXPECT_TRUE(observer.states.empty());
    EXPECT_EQ(observer.stops, 0);
    EXPECT_TRUE(prompts.messages.empty());
}

}  // namespace
}  // namespace sonavel
