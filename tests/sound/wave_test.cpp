#include <random>
#include <tuple>

#include "sound/sample_types.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

TEST_F(WaveTest, ReadsAndStoresEveryByteValueWithInvertedPolarity) {
    Fill(1, 8, 8000, FileBytes(256));
    for (int byte = 0; byte < 256; ++byte) {
        const auto frame = static_cast<std::uint32_t>(byte);
        wave.MutableBytes()[frame] = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(wave.GetSample(0, frame), 128 - byte);
        wave.MutableBytes()[frame] = 77;
        wave.SetSample(0, frame, 128 - byte);
        EXPECT_EQ(wave.Bytes()[frame], byte);
    }
}

TEST_F(WaveTest, FindsSixteenBitSamplesOfBothChannels) {
    Fill(2, 16, 44100, {0x01, 0x80, 0xFF, 0x7F, 0xFE, 0xFF, 0x34, 0x12});
    EXPECT_EQ(wave.GetSample(0, 0), -32767);
    EXPECT_EQ(wave.GetSample(1, 0), 32767);
    EXPECT_EQ(wave.GetSample(0, 1), -2);
    EXPECT_EQ(wave.GetSample(1, 1), 0x1234);
    wave.SetSample(1, 0, 0x1ABCD);
    wave.SetSample(0, 1, -32768);
    EXPECT_EQ(SoundBytes(wave), (FileBytes{0x01, 0x80, 0xCD, 0xAB, 0x00, 0x80, 0x34, 0x12}));
}

TEST_F(WaveTest, NeverReachesBeyondItsData) {
    // The second sample has only its low byte.
    Fill(1, 16, 8000, FileBytes(3, 0x81));
    EXPECT_EQ(wave.GetFrameCount(), 1u);
    EXPECT_EQ(wave.GetSample(0, 1), 0x81);
    EXPECT_EQ(wave.GetSample(0, 2), 0);
    EXPECT_EQ(wave.GetSample(0, 0xFFFFFFFF), 0);
    wave.SetSample(0, 1, 0x7777);
    wave.SetSample(0, 0xFFFFFFFF, 1);
    EXPECT_EQ(SoundBytes(wave), FileBytes(3, 0x81));
}

TEST_F(WaveTest, ComputesItsFigures) {
    EXPECT_EQ(wave.GetDuration(), 0) << "no sound at all";
    Fill(2, 16, 44100, Pattern(22050 * 4));
    EXPECT_EQ(wave.GetFormat().averageBytesPerSecond, 176400u);
    EXPECT_DOUBLE_EQ(wave.GetDuration(), 0.5);
    wave.SetRate(11025);
    EXPECT_DOUBLE_EQ(wave.GetDuration(), 2);
    EXPECT_EQ(wave.GetFrameCount(), 22050u);
}

TEST_F(WaveTest, MarkersAreSetAndRemovedByTheirIds) {
    Fill(1, 8, 8000, FileBytes(100));
    EXPECT_EQ(wave.AddMarker(10, "", 0), 1u);
    EXPECT_EQ(wave.AddMarker(20, "here", 5), 2u);
    EXPECT_TRUE(wave.SetMarker(2, 40, "", 7));
    const Marker& set = *wave.Markers().Find(2);
    EXPECT_EQ(std::tie(set.position, set.sampleOffset, set.name, set.length),
              std::make_tuple(40u, 40u, "here", 7u));
    EXPECT_EQ(wave.GetMarkerBefore(39), 10u);
    EXPECT_TRUE(wave.RemoveMarker(1));
    EXPECT_FALSE(wave.RemoveMarker(1) || wave.SetMarker(1, 0, "gone", 0));
    EXPECT_EQ(wave.GetMarkerBefore(39), 0u);
    EXPECT_EQ(wave.GetMarkerAfter(39), 40u);
    EXPECT_EQ(wave.GetMarkerAfter(40), 100u) << "the end of the sound";
}

TEST_F(WaveTest, KnowsTheSpanOfEachWidth) {
    Fill(1, 16, 8000, {});
    const std::pair<unsigned, std::uint32_t> cases[] = {{0, 0xFFFF}, {8, 0xFF},        {16, 0xFFFF},
                                                        {24, 0xFF},  {32, 0xFFFFFFFF}, {7, 0xFF}};
    for (const auto& [bits, span] : cases) EXPECT_EQ(wave.GetMaxValue(bits), span) << bits;
}

TEST_F(WaveTest, KeepsTheOldSoundWhenANewOneIsTooLarge) {
    Fill(2, 16, 8000, Pattern(40));
    EXPECT_FALSE(wave.Create(2, 16, 8000, 0x20000000));
    EXPECT_FALSE(wave.GrowWithSilence(0x20000000));
    EXPECT_EQ(SoundBytes(wave), Pattern(40));
    EXPECT_EQ(wave.GetChannels(), 2u);
    EXPECT_FALSE(wave.GetModified());
}

TEST_F(WaveTest, GrowsWithSilenceOfItsWidth) {
    Fill(1, 8, 8000, {1, 2});
    EXPECT_TRUE(wave.GrowWithSilence(1));
    EXPECT_FALSE(wave.GetModified());
    EXPECT_TRUE(wave.GrowWithSilence(4));
    EXPECT_TRUE(wave.GetModified());
    EXPECT_EQ(SoundBytes(wave), (FileBytes{1, 2, 128, 128}));
    Fill(2, 16, 8000, {1, 2, 3, 4});
    EXPECT_TRUE(wave.GrowWithSilence(2));
    EXPECT_EQ(SoundBytes(wave), (FileBytes{1, 2, 3, 4, 0, 0, 0, 0}));
}

TEST_F(WaveTest, EditsLikeAPlainVectorOfBytes) {
    std::mt19937 random(20260);
    for (const auto& [channels, bits] : {std::pair{1u, 8u}, {2u, 8u}, {1u, 16u}, {2u, 16u}}) {
        const unsigned align = channels * bits / 8;
        FileBytes model = Pattern(50 * align);
        Fill(channels, bits, 8000, model);
        for (int step = 0; step < 200; ++step) {
            const auto frames = static_cast<std::uint32_t>(model.size() / align);
            const auto at = static_cast<std::uint32_t>(random() % (frames + 1));
            const auto count = static_cast<std::uint32_t>(random() % 20);
            const auto start = model.begin() + at * align;
            if (random() % 2) {
                FileBytes bytes = Pattern(count * align);
                ASSERT_TRUE(wave.InsertFrames(at, bytes));
                model.insert(start, bytes.begin(), bytes.end());
            } else {
                const std::uint32_t end = std::min(at + count, frames);
                EXPECT_EQ(wave.RemoveFrames(at, at + count), end > at);
                model.erase(start, model.begin() + end * align);
            }
            ASSERT_EQ(SoundBytes(wave), model);
        }
    }
}

TEST_F(WaveTest, ShowsTheTextsOfDeviceErrors) {
    for (const unsigned code : {257, 2, 20, 21, 0}) wave.ReportDeviceError(code);
    const std::string last = "드라이버가 DriverCallback 함수를 호출 하지 않습니다.";
    EXPECT_EQ(prompts.messages,
              (std::vector<std::string>{"디바이스 ID 범위를 초과하였습니다.", last, last, last}))
        << "257 has no text";
    EXPECT_EQ(wave.LastError(), last);
}

}  // namespace
}  // namespace sonavel
