// The output that asks for its frames, on a sound library that fails and loses its devices.
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <thread>

#include "fake_portaudio.h"
#include "platform/portaudio/portaudio_frame_out.h"
#include "test_loop.h"

namespace sonavel {
namespace {

// Counts what it is asked for.
class CountingSupply : public FrameSupply {
  public:
    void Pull(std::span<float> pairs, std::uint32_t) override {
        ++pulls;
        std::iota(pairs.begin(), pairs.end(), 1.0f);
    }
    int pulls = 0;
};

class FrameOutTest : public ::testing::Test {
  protected:
    FrameOutTest() {
        library_.Reset();
        library_.outputFrameBytes = 2 * sizeof(float);
    }
    ~FrameOutTest() override {
        library_.outputFrameBytes = 1;
        EXPECT_EQ(library_.OpenStreams(), 0) << "a stream was left open";
    }

    WaveResult Open() {
        return out_.Open(kDefaultWaveDevice, 44100, supply_, [this] { ++losses_; });
    }
    std::vector<float> Heard() {
        const auto bytes = library_.CallBack({}).bytes;
        std::vector<float> floats(bytes.size() / sizeof(float));
        std::memcpy(floats.data(), bytes.data(), bytes.size());
        return floats;
    }

    FakePortAudio& library_ = FakePortAudio::Get();
    TestLoop loop_;
    std::shared_ptr<PortAudioSession> session_ = std::make_shared<PortAudioSession>(
        [this](std::function<void()> task) { loop_.Post(std::move(task)); });
    CountingSupply supply_;
    int losses_ = 0;
    PortAudioFrameOut out_{session_};
};

TEST_F(FrameOutTest, AsksItsSupplyForStereoFramesWhileItIsOpen) {
    EXPECT_EQ(out_.Close(), kWaveInvalidHandle);
    ASSERT_EQ(Open(), kWaveSuccess);
    EXPECT_EQ(Open(), kWaveAllocated);
    std::vector<float> wanted(20);
    std::iota(wanted.begin(), wanted.end(), 1.0f);
    EXPECT_EQ(Heard(), wanted);
    EXPECT_EQ(supply_.pulls, 1);
    EXPECT_EQ(out_.Close(), kWaveSuccess);
    ASSERT_EQ(Open(), kWaveSuccess);
    EXPECT_EQ(Heard(), wanted);
    EXPECT_EQ(out_.Close(), kWaveSuccess);
    EXPECT_EQ(out_.Loss(), kWaveSuccess);
}

TEST_F(FrameOutTest, ADeviceThatFailsLeavesNothingOpen) {
    for (const char* call : {"Pa_Initialize", "Pa_OpenStream", "Pa_StartStream"}) {
        library_.Reset();
        library_.Fail(call, paDeviceUnavailable);
        EXPECT_EQ(Open(), kWaveAllocated) << call;
        EXPECT_EQ(library_.OpenStreams(), 0) << call;
        session_->End();
    }
}

TEST_F(FrameOutTest, AStreamThatFinishesUnaskedIsToldAsLost) {
    ASSERT_EQ(Open(), kWaveSuccess);
    library_.Finish();
    ASSERT_TRUE(loop_.RunOne());
    EXPECT_EQ(losses_, 1);
    EXPECT_EQ(out_.Loss(), kWaveNoDriver);
    EXPECT_EQ(out_.Close(), kWaveSuccess);
    while (session_->HasCallsLeft()) std::this_thread::yield();
}

}  // namespace
}  // namespace sonavel
