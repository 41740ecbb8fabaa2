#include "spatial/spatializer.h"

#include <cmath>
#include <random>

#include "document/document_fixture.h"
#include "spatial/hrir_table.h"
#include "spatial/presets.h"

namespace sonavel::testing {
namespace {

class SpatializerTest : public DocumentTest {
  protected:
    std::unique_ptr<CSoundDoc> MakeNoise(const Format& format, std::uint32_t frames, int greatest) {
        std::mt19937 random(frames);
        std::uniform_int_distribution<int> value(-greatest, greatest);
        auto document = MakeDocument(format, Bytes(frames * format.channels * format.bits / 8));
        for (std::uint32_t i = 0; i < frames; ++i)
            for (unsigned channel = 0; channel < format.channels; ++channel)
                document->Sound().SetSample(channel, i, value(random));
        return document;
    }

    static double Convolved(const CWave& source, std::uint32_t start, std::uint32_t frame,
                            int index) {
        const auto taps = HrirTable::Get().Response(index);
        double sum = 0;
        for (std::uint32_t k = 0; k < taps.size() && k <= frame; ++k)
            sum += taps[k] * source.GetSample(0, start + frame - k);
        return sum;
    }
};

TEST_F(SpatializerTest, RendersTheFirstChannelOfTheRangeAndConvertsTheRest) {
    const auto source = MakeNoise({2, 16, 44100}, 5000, 4000);
    const auto document = MakeNoise({2, 16, 44100}, 5000, 4000);
    document->Sound().Markers().Add(1234, "Here", 10);
    ASSERT_TRUE(SpatializePositional(
        {*document, 1000, 3500, spatial_title::kSystemPositional, SpatialOutcome::kApply},
        {1.2f, 0, 0}));
    const CWave& sound = document->Sound();
    for (std::uint32_t i = 0; i < 2500; ++i) {
        ASSERT_NEAR(sound.GetSample(0, 1000 + i), Convolved(source->Sound(), 1000, i, 141) / 2,
                    1.1);
        ASSERT_NEAR(sound.GetSample(1, 1000 + i), Convolved(source->Sound(), 1000, i, 159) / 2,
                    1.1);
    }
    EXPECT_EQ(sound.GetSample(1, 999), source->Sound().GetSample(1, 999));
    EXPECT_EQ(sound.GetSample(0, 3500), source->Sound().GetSample(0, 3500));
    EXPECT_EQ(sound.Markers().All().front().position, 1234u);
    EXPECT_EQ(progress_.titles.back(), "Progress System Positional Sound");
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), BytesOf(source->Sound()));
}

TEST_F(SpatializerTest, MakesAnEightBitMonoSound16BitStereo) {
    const auto source = MakeNoise({1, 8, 44100}, 3000, 40);
    const auto document = MakeNoise({1, 8, 44100}, 3000, 40);
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {0, 0.6f, 0}));
    EXPECT_EQ(document->Sound().GetBits(), 16u);
    EXPECT_EQ(document->Sound().GetChannels(), 2u);
    ASSERT_EQ(document->Sound().GetFrameCount(), 3000u);
    for (std::uint32_t i = 0; i < 3000; ++i)
        ASSERT_NEAR(document->Sound().GetSample(0, i),
                    Convolved(source->Sound(), 0, i, 132) * 258.00787, 2);
}

TEST_F(SpatializerTest, BringsPeaksDownToFullScaleAndLeavesLowerOnes) {
    for (const int greatest : {32000, 3000}) {
        const auto document = MakeNoise({1, 16, 44100}, 20000, greatest);
        ASSERT_TRUE(
            SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {-0.6f, 0, 0}));
        int peak = 0;
        for (std::uint32_t i = 0; i < 20000; ++i)
            peak = std::max(peak, std::abs(document->Sound().GetSample(0, i)));
        if (greatest == 32000) {
            EXPECT_NEAR(peak, 32767, 1);
        } else {
            EXPECT_LT(peak, 32000);
        }
    }
}

TEST_F(SpatializerTest, CancelledRunsEndInSilence) {
    const auto document = MakeNoise({1, 16, 44100}, 10000, 20000);
    progress_.cancelAtPoll = 2;
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {0, 1, 0}));
    ASSERT_EQ(document->Sound().GetFrameCount(), 10000u);
    EXPECT_NE(document->Sound().GetSample(0, 3 * 768 - 1), 0);
    for (std::uint32_t i = 3 * 768; i < 10000; ++i) ASSERT_EQ(document->Sound().GetSample(0, i), 0);
}

TEST_F(SpatializerTest, ASourceThatStaysEqualsAFixedOne) {
    const auto fixed = MakeNoise({1, 16, 44100}, 8000, 8000);
    const auto moving = MakeNoise({1, 16, 44100}, 8000, 8000);
    const SourcePosition path[] = {{0.9f, 0.9f, 0}, {0.9f, 0.9f, 0}};
    ASSERT_TRUE(SpatializePositional({*fixed, 0, 0, "", SpatialOutcome::kApply}, path[0]));
    ASSERT_TRUE(SpatializeMoving({*moving, 0, 0, "", SpatialOutcome::kApply}, path));
    for (std::uint32_t i = 0; i < 8000; ++i)
        ASSERT_NEAR(fixed->Sound().GetSample(0, i), moving->Sound().GetSample(0, i), 1);
}

TEST_F(SpatializerTest, GainGlidesWhileASourceRecedes) {
    // Straight ahead all the way, so that the responses stay and only the gain moves.
    const auto source = MakeNoise({1, 16, 44100}, 7680, 8000);
    const auto document = MakeNoise({1, 16, 44100}, 7680, 8000);
    const SourcePosition path[] = {{0, 0.6f, 0}, {0, 6, 0}};
    ASSERT_TRUE(SpatializeMoving({*document, 0, 0, "", SpatialOutcome::kApply}, path));
    double former = 1;
    for (std::uint32_t i = 0; i < 7680; ++i) {
        const std::uint32_t block = i / 768;
        const double gain = 0.6 / (0.6 + 5.4 * block / 10);
        const double before = block ? 0.6 / (0.6 + 5.4 * (block - 1) / 10) : former;
        const double up = i % 768 / 768.0;
        ASSERT_NEAR(document->Sound().GetSample(0, i),
                    Convolved(source->Sound(), 0, i, 132) * (gain * up + before * (1 - up)), 2)
            << i;
    }
}

TEST_F(SpatializerTest, PreviewsWithoutTouchingTheSound) {
    const auto document = MakeNoise({2, 16, 44100}, 3000, 8000);
    const Bytes before = BytesOf(document->Sound());
    ASSERT_TRUE(
        SpatializePositional({*document, 0, 1500, "", SpatialOutcome::kPreview}, {0, 1, 0}));
    EXPECT_EQ(BytesOf(document->Sound()), before);
    EXPECT_EQ(document->Preview().GetFrameCount(), 1500u);
    EXPECT_EQ(document->Preview().GetChannels(), 2u);
}

class PresetTest : public DocumentTest {};

TEST_F(PresetTest, StoresNumbersInColumnsOfFour) {
    ProfileFile file = programFolder_.Profile("Usersound.ini");
    ASSERT_TRUE(SaveUserPreset(file, "Two points", {{10, -20, 5}, {0, 0, 100}}));
    ProfileFile system = programFolder_.Profile("Systemsound.ini");
    ASSERT_TRUE(SaveSystemPreset(system, "Left", {6, 51}));
    const auto textOf = [](const std::filesystem::path& path) {
        std::ifstream in(path);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    const std::string user = textOf(file.Path());
    EXPECT_NE(user.find("[Two points]"), std::string::npos);
    EXPECT_NE(user.find("point Count=  2"), std::string::npos) << user;
    EXPECT_NE(user.find("Points=10  -20 5   0   0   100 "), std::string::npos) << user;
    EXPECT_NE(textOf(system.Path()).find("Points=6   51  "), std::string::npos);
    EXPECT_EQ(LoadUserPreset(file, "Two points"),
              (std::vector<UserPoint>{{10, -20, 5}, {0, 0, 100}}));
    EXPECT_EQ(LoadSystemPreset(system, "Left"), (SystemPreset{6, 51}));
    EXPECT_EQ(LoadSystemPreset(system, "None"), SystemPreset{});
}

TEST_F(PresetTest, ReadsShortAndOverlongLists) {
    ProfileFile file = programFolder_.Profile("Usersound.ini");
    file.SetString("short", "point Count", "  3");
    file.SetString("short", "Points", "1   2   3   4   ");
    EXPECT_EQ(LoadUserPreset(file, "short"),
              (std::vector<UserPoint>{{1, 2, 3}, {4, 0, 0}, {0, 0, 0}}));

    const std::vector<UserPoint> many(200, UserPoint{100, -99, 7});
    ASSERT_TRUE(SaveUserPreset(file, "long", many));
    const std::vector<UserPoint> read = LoadUserPreset(file, "long");
    ASSERT_EQ(read.size(), 167u);
    EXPECT_EQ(read[165], many[0]);
    EXPECT_EQ(read[166], (UserPoint{100, -99, 0}));
}

TEST_F(PresetTest, DeletesAllButTheFirst) {
    ProfileFile file = programFolder_.Profile("Systemsound.ini");
    for (const char* name : {"One", "Two", "Three"}) SaveSystemPreset(file, name, {1, 2});
    EXPECT_EQ(PresetNames(file), (std::vector<std::string>{"One", "Two", "Three"}));
    EXPECT_FALSE(CanDeletePreset(-1));
    EXPECT_FALSE(CanDeletePreset(0));
    EXPECT_TRUE(CanDeletePreset(1));
    ASSERT_TRUE(DeletePreset(file, "Two"));
    EXPECT_EQ(PresetNames(file), (std::vector<std::string>{"One", "Three"}));
    EXPECT_EQ(SystemDeleteQuestion("Two"), " \"Two\"Delete the preset?");
    EXPECT_EQ(UserDeleteQuestion("Two"), " \"Two\"Will you delete the preset?");
}

}  // namespace
}  // namespace sonavel::testing
