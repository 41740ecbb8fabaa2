// Outputs and inputs on a sound library that hangs, fails and loses its devices.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <numeric>
#include <optional>
#include <thread>

#include "fake_portaudio.h"
#include "platform/portaudio/portaudio_session.h"
#include "platform/portaudio/portaudio_wave_in.h"
#include "platform/portaudio/portaudio_wave_out.h"
#include "support/patience.h"
#include "test_loop.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

constexpr auto kAnswer = 100ms;
// Less than waiting for one answer takes.
constexpr auto kAtOnce = 50ms;

class DeviceSessionTest : public ::testing::Test {
  protected:
    static constexpr WaveFormat kMono8{1, 8000, 8};

    DeviceSessionTest() {
        library.Reset();
        for (WaveBlock& block : blocks) {
            block.data.resize(10);
            std::iota(block.data.begin(), block.data.end(), std::uint8_t{1});
        }
    }
    ~DeviceSessionTest() override {
        library.Release();
        Wait([&] { return !session->HasCallsLeft(); });
        EXPECT_EQ(library.OpenStreams(), 0) << "a stream was left open";
    }

    template <class Condition>
    static bool Wait(Condition condition) {
        const auto end = Clock::now() + kPatience;
        while (!condition() && Clock::now() < end) std::this_thread::sleep_for(1ms);
        return condition();
    }
    template <class Call>
    static Clock::duration TimeOf(Call call) {
        const auto begin = Clock::now();
        call();
        return Clock::now() - begin;
    }

    WaveResult Open(WaveDevice& device) {
        return device.Open(kDefaultWaveDevice, kMono8, [this] { ++notifications; });
    }
    // As a player does; the first error.
    WaveResult Play(PortAudioWaveOut& out) {
        WaveResult result = Open(out);
        if (result == kWaveSuccess) result = out.Pause();
        for (WaveBlock& block : blocks) {
            if (result == kWaveSuccess) result = out.Write(block);
        }
        return result == kWaveSuccess ? out.Restart() : result;
    }

    FakePortAudio& library = FakePortAudio::Get();
    TestLoop loop;
    std::array<WaveBlock, 3> blocks;
    int notifications = 0;
    DeviceTimes times{kAnswer, {5ms, 20, 20}};
    std::shared_ptr<PortAudioSession> session = std::make_shared<PortAudioSession>(
        [this](std::function<void()> task) { loop.Post(std::move(task)); }, times);
};

TEST_F(DeviceSessionTest, ACallThatHangsCountsAsALossInTimeAndComesBackHarmless) {
    const struct {
        const char* call;
        bool holdsTheLibrary;
        WaveResult played, closed;
        Clock::duration next;  // how long the next call takes at most
    } cases[] = {
        {"Pa_Initialize", true, kWaveNoAnswer, kWaveInvalidHandle, kAtOnce},
        {"Pa_OpenStream", true, kWaveNoAnswer, kWaveInvalidHandle, kAtOnce},
        {"Pa_StartStream", false, kWaveNoAnswer, kWaveSuccess, kAtOnce},
        {"Pa_AbortStream", false, kWaveSuccess, kWaveNoAnswer, kAtOnce},
        {"Pa_CloseStream", true, kWaveSuccess, kWaveNoAnswer, 2 * kAnswer},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.call);
        session = std::make_shared<PortAudioSession>(
            [this](std::function<void()> task) { loop.Post(std::move(task)); }, times);
        library.Reset();
        PortAudioWaveOut out(session);
        library.Hang(c.call);
        EXPECT_LT(TimeOf([&] {
                      EXPECT_EQ(Play(out), c.played);
                      EXPECT_EQ(out.Reset(),
                                c.closed == kWaveInvalidHandle ? kWaveInvalidHandle : kWaveSuccess);
                      for (const WaveBlock& block : blocks)
                          EXPECT_TRUE(block.done || c.closed == kWaveInvalidHandle);
                      EXPECT_EQ(out.Close(), c.closed);
                  }),
                  2 * kAnswer);
        EXPECT_TRUE(session->HasCallsLeft());

        // What is asked next waits for no call that is known to hang, and works beside one that
        // concerns another stream alone.
        PortAudioWaveOut next(session);
        WaveResult opened = kWaveSuccess;
        const auto time = TimeOf([&] { opened = Open(next); });
        EXPECT_EQ(opened, c.holdsTheLibrary ? kWaveNoAnswer : kWaveSuccess);
        EXPECT_LT(time, c.next);

        library.Release();
        ASSERT_TRUE(Wait([&] { return !session->HasCallsLeft(); }));
        EXPECT_EQ(next.Close(), opened == kWaveSuccess ? kWaveSuccess : kWaveInvalidHandle);
        EXPECT_EQ(library.OpenStreams(), 0);
        EXPECT_EQ(Play(out), kWaveSuccess);
        EXPECT_EQ(out.Loss(), kWaveSuccess);
        EXPECT_EQ(out.Close(), kWaveSuccess);
    }
}

TEST_F(DeviceSessionTest, AStreamThatFinishesUnaskedIsLostAndNeverStartedAgain) {
    for (const bool paused : {false, true}) {
        SCOPED_TRACE(paused);
        library.Reset();
        notifications = 0;
        PortAudioWaveOut out(session);
        ASSERT_EQ(Play(out), kWaveSuccess);
        EXPECT_EQ(library.CallBack({}).bytes, blocks[0].data);
        if (paused) out.Pause();
        EXPECT_EQ(out.Loss(), kWaveSuccess);
        const int before = notifications;
        library.Finish();
        while (notifications == before) ASSERT_TRUE(loop.RunOne());
        EXPECT_EQ(out.Loss(), kWaveNoDriver);
        EXPECT_EQ(out.Restart(), kWaveNoDriver);
        EXPECT_EQ(library.CountOf("Pa_StartStream"), 1);
        // The end of what is lost is not waited for.
        library.Hang("Pa_AbortStream");
        EXPECT_LT(TimeOf([&] { EXPECT_EQ(out.Close(), kWaveSuccess); }), kAtOnce);
        for (const WaveBlock& block : blocks) EXPECT_TRUE(block.done);
        library.Release();
        ASSERT_TRUE(Wait([&] { return library.OpenStreams() == 0; }));
        // The next one finds the devices of now.
        ASSERT_TRUE(Wait([&] { return !session->HasCallsLeft(); }));
        const int listings = library.CountOf("Pa_Initialize");
        EXPECT_EQ(Play(out), kWaveSuccess);
        EXPECT_EQ(library.CountOf("Pa_Initialize"), listings + 1);
        EXPECT_EQ(out.Close(), kWaveSuccess) << "a stream that was stopped is not lost";
    }
}

TEST_F(DeviceSessionTest, ADeviceThatCallsBackNoMoreIsLost) {
    PortAudioWaveIn in(session);
    ASSERT_EQ(Open(in), kWaveSuccess);
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(in.Loss(), kWaveSuccess) << "one that was not started need not call";
    ASSERT_EQ(in.Start(), kWaveSuccess);
    for (int i = 0; i < 40; ++i) {
        library.CallBack(Bytes(5, 7));
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_EQ(in.Loss(), kWaveSuccess);
    EXPECT_TRUE(Wait([&] { return in.Loss() == kWaveNoAnswer; }));
    while (notifications == 0) ASSERT_TRUE(loop.RunOne());
    EXPECT_EQ(in.Close(), kWaveSuccess);
}

TEST_F(DeviceSessionTest, BlocksBelongToTheirOwnerAgainAfterAResetWhateverTheStreamDoes) {
    PortAudioWaveOut out(session);
    ASSERT_EQ(Play(out), kWaveSuccess);
    EXPECT_EQ(library.CallBack({}).bytes, blocks[0].data);
    ASSERT_EQ(out.Reset(), kWaveSuccess);
    for (const WaveBlock& block : blocks) EXPECT_TRUE(block.done);
    const FakePortAudio::Heard heard = library.CallBack({});
    EXPECT_EQ(heard.bytes, Bytes(10, 128));
    EXPECT_EQ(heard.result, paContinue);

    // Also in the middle of a callback.
    std::atomic<bool> ended{false};
    std::thread card([&] {
        while (!ended) library.CallBack({});
    });
    for (std::uint8_t i = 0; i < 100; ++i) {
        for (WaveBlock& block : blocks) ASSERT_EQ(out.Write(block), kWaveSuccess);
        ASSERT_EQ(out.Restart(), kWaveSuccess);
        ASSERT_EQ(out.Reset(), kWaveSuccess);
        for (WaveBlock& block : blocks) std::ranges::fill(block.data, i);
    }
    ended = true;
    card.join();
    EXPECT_EQ(out.Close(), kWaveSuccess);
}

TEST_F(DeviceSessionTest, LostInputIsMarkedWhereItIsMissing) {
    PortAudioWaveIn in(session);
    ASSERT_EQ(Open(in), kWaveSuccess);
    for (WaveBlock& block : blocks) ASSERT_EQ(in.Add(block), kWaveSuccess);
    ASSERT_EQ(in.Start(), kWaveSuccess);
    library.CallBack(Bytes(4, 1));
    library.CallBack(Bytes(5, 2), paInputOverflow);
    EXPECT_TRUE(blocks[0].done);
    EXPECT_EQ(blocks[0].recordedBytes, 4u);
    ASSERT_EQ(in.Stop(), kWaveSuccess);
    EXPECT_TRUE(blocks[1].done);
    EXPECT_TRUE(blocks[1].afterGap);
    EXPECT_EQ(blocks[1].recordedBytes, 5u);
    library.CallBack(Bytes(5, 3));
    EXPECT_EQ(in.Reset(), kWaveSuccess);
    EXPECT_EQ(blocks[2].recordedBytes, 0u);
    EXPECT_EQ(in.Close(), kWaveSuccess);
}

TEST_F(DeviceSessionTest, AStartThatFindsNoDeviceListsThemAnew) {
    library.SetDevices(0);
    PortAudioWaveOut out(session);
    EXPECT_FALSE(session->Devices(StreamDirection::kOutput).hasDefault);
    EXPECT_EQ(Play(out), kWaveNoDriver);
    EXPECT_EQ(out.Open(3, kMono8, {}), kWaveBadDeviceId);
    library.SetDevices(1);
    EXPECT_EQ(Play(out), kWaveSuccess);

    // Under an open stream the library must not end.
    const int listings = library.CountOf("Pa_Initialize");
    library.SetDevices(2);
    session->ListAnew();
    EXPECT_EQ(session->Devices(StreamDirection::kInput).devices.size(), 1u);
    PortAudioWaveIn in(session);
    EXPECT_EQ(in.Open(1, kMono8, {}), kWaveBadDeviceId);
    EXPECT_EQ(library.CountOf("Pa_Initialize"), listings);
    EXPECT_EQ(out.Close(), kWaveSuccess);
    session->ListAnew();
    const WaveDeviceList list = session->Devices(StreamDirection::kInput);
    EXPECT_EQ(list.devices.size(), 2u);
    EXPECT_TRUE(list.hasDefault);

    // A device that is listed and whose server has gone.
    library.Fail("Pa_OpenStream", paBadIODeviceCombination);
    EXPECT_EQ(Play(out), kWaveNoDriver);
    library.Fail("Pa_OpenStream", paNoError);
    // One that opens and does not start.
    library.Fail("Pa_StartStream", paUnanticipatedHostError);
    EXPECT_EQ(Play(out), kWaveNotEnabled);
    EXPECT_EQ(out.Close(), kWaveSuccess);
    library.Fail("Pa_StartStream", paNoError);
    const int before = library.CountOf("Pa_Initialize");
    EXPECT_EQ(Play(out), kWaveSuccess);
    EXPECT_EQ(library.CountOf("Pa_Initialize"), before + 1);
    EXPECT_EQ(out.Close(), kWaveSuccess);
    // The list of before stays while the library hangs.
    library.Hang("Pa_Initialize");
    session->ListAnew();
    EXPECT_LT(
        TimeOf([&] { EXPECT_EQ(session->Devices(StreamDirection::kInput).devices.size(), 2u); }),
        kAtOnce);
}

TEST_F(DeviceSessionTest, TheEndWaitsForNoCallThatHangs) {
    PortAudioWaveOut out(session);
    ASSERT_EQ(Play(out), kWaveSuccess);
    library.Hang("Pa_AbortStream");
    EXPECT_EQ(out.Close(), kWaveNoAnswer);
    EXPECT_LT(TimeOf([&] { session->End(); }), kAtOnce);
    EXPECT_TRUE(session->HasCallsLeft());
    EXPECT_EQ(library.CountOf("Pa_Terminate"), 0) << "it would close the stream that hangs";
    library.Release();
    ASSERT_TRUE(Wait([&] { return !session->HasCallsLeft(); }));
    session->End();
    EXPECT_EQ(library.CountOf("Pa_Terminate"), 1);
}

}  // namespace
}  // namespace sonavel
