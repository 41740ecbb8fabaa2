// Ranges played live by threads of their own, on a device whose clock is the test.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "audio/live_player.h"
#include "live_fixture.h"
#include "platform/latest_value.h"
#include "support/fake_wave_devices.h"
#include "support/patience.h"

namespace sonavel::testing {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kBlock = 256;

class SineMaker : public LiveMaker {
  public:
    void Set(const SineSetting& sine) { sines_.Give(sine); }

    LiveRange Range() const override { return {kFrames, kRate}; }
    std::unique_ptr<LiveRenderer> MakeUntouched() override { return Sine({}); }
    std::unique_ptr<LiveRenderer> MakeLatest() override {
        const SineSetting* const sine = sines_.Take();
        if (!sine) return nullptr;
        std::this_thread::sleep_for(slowness.load());
        return Sine(*sine);
    }

    std::atomic<std::chrono::milliseconds> slowness{0ms};

  private:
    LatestValue<SineSetting> sines_;
};

class LivePlayerTest : public ::testing::Test {
  protected:
    LivePlayerTest() {
        auto owned = std::make_unique<SineMaker>();
        maker = owned.get();
        player = std::make_unique<LivePlayer>(std::move(owned), devices);
    }

    void Set(const SineSetting& sine) {
        maker->Set(sine);
        player->MakeAnew();
    }
    WaveResult Start() {
        return player->Start(3, [this] { ++losses; });
    }
    // Blocks that are asked for as the device's clock has it.
    std::vector<float> Hear(std::size_t blocks) {
        std::vector<float> all;
        for (; blocks > 0; --blocks) {
            const std::vector<float> block = devices.frameOut->Hear(kBlock);
            all.insert(all.end(), block.begin(), block.end());
            std::this_thread::sleep_for(6ms);
        }
        return all;
    }
    // Waits until sound comes, and lets it be as far ahead as it gets.
    void AwaitSound() {
        const auto end = Clock::now() + kPatience;
        while (player->HeardFrame() == 0 && Clock::now() < end) Hear(1);
        std::this_thread::sleep_for(20ms);
    }

    FakeWaveDevices devices;
    SineMaker* maker = nullptr;
    std::unique_ptr<LivePlayer> player;
    int losses = 0;
};

TEST_F(LivePlayerTest, PlaysTheRangeInOneGoAndKnowsWhatIsHeard) {
    Set({});
    ASSERT_EQ(Start(), kWaveSuccess);
    EXPECT_EQ(devices.frameOut->deviceId, 3);
    EXPECT_EQ(devices.frameOut->framesPerSecond, kRate);
    AwaitSound();
    const std::uint32_t first = player->HeardFrame();
    const std::vector<float> heard = Hear(20);
    for (std::uint32_t i = 0; i < heard.size() / 2; ++i)
        ASSERT_EQ(heard[2 * i], SineAt({}, first + i)) << i;
    EXPECT_EQ(player->MissedFrames(), 0u);
    EXPECT_EQ(player->HeardFrame(), first + 20 * kBlock);
    devices.frameOut->Hear(1, 1000);
    EXPECT_EQ(player->HeardFrame(), first + 20 * kBlock + 1 - 1000) << "the latency counts";
}

// What is rendered already is heard first; then comes the change.
TEST_F(LivePlayerTest, AChangeIsHeardBehindWhatIsRenderedAhead) {
    Set({0.5, 100, 0});
    ASSERT_EQ(Start(), kWaveSuccess);
    AwaitSound();
    EXPECT_LE(player->AheadFrames() * 1000 / kRate, 30u);
    Set({0, 100, 0});
    std::this_thread::sleep_for(50ms);
    const std::vector<float> heard = Hear(20);
    std::size_t last = 0;
    for (std::size_t i = 0; i < heard.size(); i += 2)
        if (heard[i] != 0) last = i / 2;
    EXPECT_LE(last, player->AheadFrames() + LiveLoop::PieceFramesAt(kRate));
    EXPECT_GT(last, 0u);
}

// Making may take long, playing goes on: the last setting is what is heard in the end.
TEST_F(LivePlayerTest, SettingsThatAreMadeSlowlyLeaveNoGap) {
    Set({});
    ASSERT_EQ(Start(), kWaveSuccess);
    AwaitSound();
    maker->slowness = 60ms;
    std::vector<float> heard;
    for (int i = 1; i <= 40; ++i) {
        Set({0.5 + 0.005 * i, 100, 0});
        const std::vector<float> some = Hear(1);
        heard.insert(heard.end(), some.begin(), some.end());
    }
    EXPECT_EQ(player->MissedFrames(), 0u);
    EXPECT_LE(GreatestBend(heard), 1.1 * 0.7 * std::pow(2 * std::numbers::pi / 100, 2));
    maker->slowness = 0ms;
    std::this_thread::sleep_for(150ms);
    Hear(10);
    const std::uint32_t at = player->HeardFrame();
    EXPECT_NEAR(Hear(1)[0], SineAt({0.7, 100, 0}, at), 1e-6);
}

TEST_F(LivePlayerTest, PeaksAreOfBothSidesAndOfWhatWasPlayedSince) {
    Set({0.8, 100, 0});
    ASSERT_EQ(Start(), kWaveSuccess);
    AwaitSound();
    player->TakePeaks();
    Hear(3);
    const LivePeaks peaks = player->TakePeaks();
    EXPECT_NEAR(peaks.left, 0.8, 0.002);
    EXPECT_NEAR(peaks.right, 0.4, 0.002);
    EXPECT_EQ(player->TakePeaks().left, 0);
}

TEST_F(LivePlayerTest, ADeviceThatAsksForMuchAtOnceIsServedAfterTheFirstTime) {
    Set({});
    ASSERT_EQ(Start(), kWaveSuccess);
    AwaitSound();
    devices.frameOut->Hear(4096);
    std::this_thread::sleep_for(50ms);
    const std::uint64_t missed = player->MissedFrames();
    devices.frameOut->Hear(4096);
    EXPECT_EQ(player->MissedFrames(), missed);
}

TEST_F(LivePlayerTest, WithoutASettingThereIsSilenceAndNoStepForward) {
    ASSERT_EQ(Start(), kWaveSuccess);
    for (const float value : Hear(3)) ASSERT_EQ(value, 0);
    EXPECT_EQ(player->HeardFrame(), 0u);
    EXPECT_EQ(player->MissedFrames(), 0u);
}

TEST_F(LivePlayerTest, StopsAtAnyTimeAndNeverAsksItsSourceAgain) {
    Set({});
    ASSERT_EQ(Start(), kWaveSuccess);
    EXPECT_EQ(Start(), kWaveAllocated);
    AwaitSound();
    player->Stop();
    EXPECT_FALSE(player->IsPlaying());
    EXPECT_FALSE(devices.frameOut->IsOpen());
    player->Stop();
}

TEST_F(LivePlayerTest, ADeviceThatCannotBeHadOrIsLostIsTold) {
    devices.frameOut->failure = kWaveNoDriver;
    EXPECT_EQ(Start(), kWaveNoDriver);
    EXPECT_FALSE(player->IsPlaying());
    devices.frameOut->failure = kWaveSuccess;
    Set({});
    ASSERT_EQ(Start(), kWaveSuccess);
    devices.frameOut->Lose(kWaveNoAnswer);
    EXPECT_EQ(losses, 1);
    EXPECT_EQ(player->Loss(), kWaveNoAnswer);
}

// A value that one thread gives and another one takes is never a mixture of two.
TEST(LatestValue, WholeValuesAreTakenAndTheLastOneAlways) {
    struct Many {
        std::vector<int> numbers = std::vector<int>(50, 0);
    };
    constexpr int kLast = 20000;
    LatestValue<Many> value;
    std::thread giver([&] {
        for (int i = 1; i <= kLast; ++i) value.Give({std::vector<int>(50, i)});
    });
    int seen = 0;
    while (seen < kLast) {
        const Many* const many = value.Take();
        if (!many) continue;
        ASSERT_EQ(many->numbers, std::vector<int>(50, many->numbers[0]));
        ASSERT_GT(many->numbers[0], seen) << "an old one came again";
        seen = many->numbers[0];
    }
    giver.join();
    EXPECT_EQ(value.Take(), nullptr);
}

}  // namespace
}  // namespace sonavel::testing
