#include "spatial/spatializer.h"

#include <cmath>

#include "document/document_fixture.h"
#include "spatial/hrir_table.h"
#include "spatial/presets.h"
#include "support/address_space_limit.h"
#include "support/thread_count.h"

namespace sonavel::testing {
namespace {

class SpatializerTest : public DocumentTest {
  protected:
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
    ASSERT_TRUE(
        SpatializePositional({*document, 0, 99, "", SpatialOutcome::kPreview}, {1.2f, 0, 0}));
    ASSERT_TRUE(SpatializePositional(
        {*document, 1000, 3500, spatial_title::kSystemPositional, SpatialOutcome::kApply},
        {1.2f, 0, 0}));
    const CWave& sound = document->Sound();
    EXPECT_TRUE(document->GetModified());
    EXPECT_FALSE(document->Preview().HasData());
    const int responses[] = {141, 159};
    for (const unsigned ear : {0u, 1u})
        for (std::uint32_t i = 0; i < 2500; ++i)
            ASSERT_NEAR(sound.GetSample(ear, 1000 + i),
                        Convolved(source->Sound(), 1000, i, responses[ear]) / 2, 1.1);
    EXPECT_EQ(sound.GetSample(1, 999), source->Sound().GetSample(1, 999));
    EXPECT_EQ(sound.GetSample(0, 3500), source->Sound().GetSample(0, 3500));
    EXPECT_EQ(sound.Markers().All().front().position, 1234u);
    EXPECT_EQ(progress_.titles.back(), "Progress System Positional Sound");
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), BytesOf(source->Sound()));
}

TEST_F(SpatializerTest, IsTakenBackAndDoneAgainExactlyAndKeepsOnlyItsRange) {
    const struct {
        Format format;
        std::uint64_t kept;  // bytes
    } cases[] = {{{2, 16}, 400}, {{2, 8}, 600}, {{1, 16}, 600}};
    for (const auto& c : cases) {
        const auto document = MakeNoise(c.format, 300);
        const Bytes before = BytesOf(document->Sound());
        ASSERT_TRUE(
            SpatializePositional({*document, 50, 150, "", SpatialOutcome::kApply}, {1, 0, 0}));
        const Bytes after = BytesOf(document->Sound());
        EXPECT_EQ(document->History().MemoryBytes(), c.kept);
        ASSERT_TRUE(document->Undo());
        EXPECT_EQ(BytesOf(document->Sound()), before);
        EXPECT_EQ(document->Sound().GetFormat(),
                  MakePcmFormat(c.format.channels, c.format.bits, c.format.rate));
        ASSERT_TRUE(document->Redo());
        EXPECT_EQ(BytesOf(document->Sound()), after);
        EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, c.format.rate));
    }
}

TEST_F(SpatializerTest, MakesAnEightBitMonoSound16BitStereo) {
    const auto source = MakeNoise({1, 8, 44100}, 3000, 10000);
    const auto document = MakeNoise({1, 8, 44100}, 3000, 10000);
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {0, 0.6f, 0}));
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 44100));
    ASSERT_EQ(document->Sound().GetFrameCount(), 3000u);
    for (std::uint32_t i = 0; i < 3000; ++i)
        ASSERT_NEAR(document->Sound().GetSample(0, i),
                    Convolved(source->Sound(), 0, i, 132) * 258.00787, 2);
}

TEST_F(SpatializerTest, AFloatSoundBecomesFloatStereoOfWhatA16BitSoundWouldRound) {
    using Place = Outcome (*)(CSoundDoc&);
    const Place places[] = {
        [](CSoundDoc& document) {
            return SpatializePositional({document, 200, 2800, "", SpatialOutcome::kApply},
                                        {0.5f, 0.6f, 0});
        },
        [](CSoundDoc& document) {
            const SourcePosition path[] = {{1, 1, 0}, {-1, 0.5f, 0.2f}};
            return SpatializeMoving({document, 200, 2800, "", SpatialOutcome::kApply}, path);
        }};
    for (const auto& [channels, place] :
         {std::pair(1u, places[0]), {2u, places[0]}, {1u, places[1]}, {2u, places[1]}}) {
        const auto words = MakeNoise({channels, 16, 44100}, 3000, 8000);
        const auto floats = MakeNoise({channels, 16, 44100}, 3000, 8000);
        ASSERT_TRUE(floats->Sound().ConvertBits(32));
        for (CSoundDoc* document : {words.get(), floats.get()}) ASSERT_TRUE(place(*document));
        EXPECT_EQ(floats->Sound().GetFormat(), MakeSoundFormat(2, 32, 44100));
        ASSERT_EQ(floats->Sound().GetFrameCount(), 3000u);
        for (std::uint32_t i = 0; i < 3000; ++i)
            for (const unsigned ear : {0u, 1u})
                ASSERT_EQ(words->Sound().GetSample(ear, i),
                          static_cast<int>(floats->Sound().GetShare(ear, i) * 32768))
                    << i;
    }
}

TEST_F(SpatializerTest, BringsPeaksDownToFullScaleAndLeavesLowerOnes) {
    const auto peakOf = [&](int greatest, int sign) {
        const auto document = MakeNoise({1, 16, 44100}, 20000, greatest);
        CWave& sound = document->Sound();
        for (std::uint32_t i = 0; i < sound.GetFrameCount(); ++i)
            sound.SetSample(0, i, sign * sound.GetSample(0, i));
        EXPECT_TRUE(
            SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {-0.6f, 0, 0}));
        return PeakOf(sound);
    };
    EXPECT_LT(peakOf(3000, 1), 32000);
    // Whichever sign the loudest sample has.
    for (const int sign : {1, -1}) {
        EXPECT_LE(peakOf(32000, sign), 32767);
        EXPECT_GE(peakOf(32000, sign), 32766);
    }
}

// What the ear nearest to the source hears is louder than the sound itself.
TEST_F(SpatializerTest, HoldsALoudEightBitSoundAtFullScale) {
    constexpr std::uint32_t kFrames = 3000;
    const auto source = MakeNoise({1, 8, 44100}, kFrames);
    const auto document = MakeNoise({1, 8, 44100}, kFrames);
    const SourcePosition left{-0.6f, 0, 0};
    const auto expectHeld = [&](const CWave& sound) {
        std::uint32_t held = 0;
        for (std::uint32_t i = 0; i < kFrames; ++i) {
            const double wanted = Convolved(source->Sound(), 0, i, 159) * 258.00787;
            held += std::abs(wanted) > 32768;
            ASSERT_NEAR(sound.GetSample(0, i), std::clamp(wanted, -32768.0, 32767.0), 2) << i;
        }
        EXPECT_GT(held, 100u);
    };
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kPreview}, left));
    expectHeld(document->Preview());
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, left));
    expectHeld(document->Sound());
}

TEST_F(SpatializerTest, RefusesASoundThatWouldBecomeTooLong) {
    constexpr std::uint32_t kFrames = 1u << 29;
    const auto document = MakeDocument();
    ASSERT_TRUE(document->Sound().Create(1, 8, 44100, kFrames));
    EXPECT_EQ(SpatializePositional({*document, 0, 10, "", SpatialOutcome::kApply}, {0, 1, 0}),
              Failed("The sound is too long to become 16-bit stereo."));
    EXPECT_TRUE(progress_.titles.empty());
    EXPECT_FALSE(document->GetModified() || document->CanUndo());
    EXPECT_TRUE(SpatializePositional({*document, 0, 10, "", SpatialOutcome::kPreview}, {0, 1, 0}));
}

#ifndef __SANITIZE_ADDRESS__

// The whole result does not fit, or the copy for the undo step, or the sound as 16-bit stereo.
TEST_F(SpatializerTest, LackOfMemoryIsAFailureThatChangesNothing) {
    constexpr std::uint32_t kFrames = 1u << 26;
    const auto document = MakeDocument();
    ASSERT_TRUE(document->Sound().Create(1, 8, 44100, kFrames));
    prompts_.answers = {false, false};
    const std::pair<std::uint32_t, std::uint64_t> cases[] = {
        {kFrames, kFrames / 2}, {1000, kFrames / 2}, {1000, std::uint64_t{kFrames} * 7 / 4}};
    for (const auto& [end, room] : cases) {
        const AddressSpaceLimit limit(room);
        EXPECT_NE(SpatializePositional({*document, 0, end, "", SpatialOutcome::kApply}, {0, 1, 0})
                      .Reason(),
                  "");
        EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(1, 8, 44100));
        EXPECT_FALSE(document->CanUndo());
    }
}

#endif

TEST_F(SpatializerTest, AnEmptySoundIsRefused) {
    const auto document = MakeNoise({1, 16, 44100}, 0);
    for (const SpatialOutcome outcome : {SpatialOutcome::kApply, SpatialOutcome::kPreview})
        EXPECT_EQ(SpatializePositional({*document, 0, 0, "", outcome}, {0, 1, 0}),
                  Failed("The sound is empty."));
}

TEST_F(SpatializerTest, ShowsHowFarItIs) {
    const auto document = MakeNoise({1, 16, 44100}, 10000);
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kPreview}, {0, 1, 0}));
    EXPECT_EQ(progress_.positions,
              (std::vector<int>{7, 15, 23, 30, 38, 46, 53, 61, 69, 76, 84, 92, 99, 100}));
}

TEST_F(SpatializerTest, CancelledRunsEndInSilence) {
    const auto document = MakeNoise({1, 16, 44100}, 10000, 20000);
    progress_.cancelAtPoll = 2;
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {0, 1, 0}));
    ASSERT_EQ(document->Sound().GetFrameCount(), 10000u);
    EXPECT_NE(document->Sound().GetSample(0, 3 * 768 - 1), 0);
    for (std::uint32_t i = 3 * 768; i < 10000; ++i) ASSERT_EQ(document->Sound().GetSample(0, i), 0);
}

// Neither a whole run nor what a cancel leaves depends on the number of threads.
TEST_F(SpatializerTest, ThreadsLeaveTheSameSound) {
    const SourcePosition path[] = {{-3, 0.2f, 0}, {0, 0.5f, 1}, {4, 0, -0.5f}};
    for (const std::optional<int> cancelAt : {std::optional<int>(), std::optional<int>(40)})
        for (const bool moves : {false, true}) {
            Bytes alone;
            for (const unsigned threads : {1u, 2u, 5u}) {
                const ThreadCount count(threads);
                const auto document = MakeNoise({1, 8, 22050}, 70001, 100);
                const SpatialTarget target{*document, 500, 69000, "", SpatialOutcome::kApply};
                progress_.polls = 0;
                progress_.cancelAtPoll = cancelAt;
                ASSERT_TRUE(moves ? SpatializeMoving(target, path)
                                  : SpatializePositional(target, path[0]));
                if (threads == 1) alone = BytesOf(document->Sound());
                EXPECT_TRUE(BytesOf(document->Sound()) == alone) << threads << moves;
            }
        }
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
    for (std::uint32_t i = 0; i < 7680; ++i) {
        const std::uint32_t block = i / 768;
        const double gain = 0.6 / (0.6 + 5.4 * block / 10);
        const double before = block ? 0.6 / (0.6 + 5.4 * (block - 1) / 10) : 1;
        const double up = i % 768 / 768.0;
        ASSERT_NEAR(document->Sound().GetSample(0, i),
                    Convolved(source->Sound(), 0, i, 132) * (gain * up + before * (1 - up)), 2)
            << i;
    }
}

struct PathCase {
    SourcePosition from, to;
    int changes;  // of the responses
};

// The moving source block by block, by direct convolution.
TEST_F(SpatializerTest, ResponsesFadeIntoOthersWhereAPathTurnsByMoreThanTenDegrees) {
    constexpr std::uint32_t kFrames = 7680;
    const PathCase cases[] = {
        {{1, 1, 0}, {-1, 1, 0}, 6},             // over 0 degrees
        {{-0.2f, 1, 0}, {0.2f, 1, 0}, 1},       // likewise, 349 to 11 degrees
        {{0.05f, 1, 0}, {0.17f, 1, 0}, 0},      // other entries, but within ten degrees
        {{0, 1.2f, -0.6f}, {0, 0.3f, 1.2f}, 6}  // upwards
    };
    const auto source = MakeNoise({1, 16, 44100}, kFrames, 8000);
    for (const PathCase& c : cases) {
        SCOPED_TRACE(c.from.x);
        const auto document = MakeNoise({1, 16, 44100}, kFrames, 8000);
        const SourcePosition path[] = {c.from, c.to};
        ASSERT_TRUE(SpatializeMoving({*document, 0, 0, "", SpatialOutcome::kApply}, path));
        SourceDirection heard = PositionToDirection(c.from);
        double gainBefore = DistanceGain(c.from);
        int changes = 0;
        for (std::uint32_t block = 0; block < kFrames / 768; ++block) {
            const float t = static_cast<float>(block) / 10;
            const SourcePosition at{(1 - t) * c.from.x + t * c.to.x,
                                    (1 - t) * c.from.y + t * c.to.y,
                                    (1 - t) * c.from.z + t * c.to.z};
            const SourceDirection now = PositionToDirection(at);
            const double turned = std::abs(std::remainder(now.azimuth - heard.azimuth, 360.0));
            const bool kept = turned <= 10 && std::abs(now.elevation - heard.elevation) <= 10;
            const SourceDirection next = kept ? heard : now;
            changes += kept ? 0 : 1;
            const double gain = DistanceGain(at);
            for (std::uint32_t j = 0; j < 768; j += 7) {
                const std::uint32_t i = 768 * block + j;
                const double up = j / 768.0 * gain;
                const double down = (1 - j / 768.0) * gainBefore;
                const auto wanted = [&](int before, int after) {
                    return Convolved(source->Sound(), 0, i, before) * down +
                           Convolved(source->Sound(), 0, i, after) * up;
                };
                ASSERT_NEAR(document->Sound().GetSample(0, i),
                            wanted(heard.leftIndex, next.leftIndex), 2);
                ASSERT_NEAR(document->Sound().GetSample(1, i),
                            wanted(heard.rightIndex, next.rightIndex), 2);
            }
            heard = next;
            gainBefore = gain;
        }
        EXPECT_EQ(changes, c.changes);
    }
}

// When a click reaches a fifth of its peak in a channel, in frames, and its energy there.
std::pair<std::uint32_t, double> Heard(const CWave& sound, unsigned channel) {
    int peak = 0;
    double energy = 0;
    for (std::uint32_t i = 0; i < sound.GetFrameCount(); ++i) {
        peak = std::max(peak, std::abs(sound.GetSample(channel, i)));
        energy += std::pow(sound.GetSample(channel, i), 2);
    }
    std::uint32_t first = 0;
    while (std::abs(sound.GetSample(channel, first)) < peak / 5) ++first;
    return {first, energy};
}

TEST_F(SpatializerTest, AClickAtTheRightIsLouderAndEarlierThere) {
    const auto document = MakeDocument({1, 16, 44100}, Bytes(2 * 600));
    document->Sound().SetSample(0, 10, 30000);
    ASSERT_TRUE(SpatializePositional({*document, 0, 0, "", SpatialOutcome::kApply}, {0.6f, 0, 0}));
    const auto [leftFirst, leftEnergy] = Heard(document->Sound(), 0);
    const auto [rightFirst, rightEnergy] = Heard(document->Sound(), 1);
    // A head delays the far ear by about 0.7 ms, and takes more than 10 dB off.
    EXPECT_NEAR(leftFirst - rightFirst, 0.7e-3 * 44100, 9);
    EXPECT_GT(rightEnergy, 10 * leftEnergy);
}

TEST_F(SpatializerTest, ARangeOfOneFrameChangesThatFrameAlone) {
    const auto source = MakeNoise({1, 16, 44100}, 900, 8000);
    const auto document = MakeNoise({1, 16, 44100}, 900, 8000);
    source->Sound().SetSample(0, 500, 20000);
    document->Sound().SetSample(0, 500, 20000);
    ASSERT_TRUE(
        SpatializePositional({*document, 501, 500, "", SpatialOutcome::kApply}, {0, 0.6f, 0}));
    ASSERT_EQ(document->Sound().GetFrameCount(), 900u);
    for (std::uint32_t i = 0; i < 900; ++i) {
        if (i == 500) continue;
        ASSERT_EQ(document->Sound().GetSample(0, i), source->Sound().GetSample(0, i));
        ASSERT_EQ(document->Sound().GetSample(1, i), source->Sound().GetSample(0, i));
    }
    EXPECT_NEAR(document->Sound().GetSample(1, 500), Convolved(source->Sound(), 500, 0, 132), 1.1);
}

TEST_F(SpatializerTest, PreviewsWithoutTouchingTheSound) {
    const auto document = MakeNoise({2, 16, 44100}, 3000, 8000);
    const Bytes before = BytesOf(document->Sound());
    ASSERT_TRUE(
        SpatializePositional({*document, 0, 1500, "", SpatialOutcome::kPreview}, {0, 1, 0}));
    EXPECT_EQ(BytesOf(document->Sound()), before);
    EXPECT_EQ(document->Preview().GetFrameCount(), 1500u);
    EXPECT_EQ(document->Preview().GetChannels(), 2u);
    EXPECT_TRUE(document->Preview().IsStopped());
    ASSERT_TRUE(
        SpatializePositional({*document, 0, 1500, "", SpatialOutcome::kPlayedPreview}, {0, 1, 0}));
    EXPECT_TRUE(document->Preview().IsPlaying());
}

class PresetTest : public DocumentTest {};

TEST_F(PresetTest, StoresNumbersInColumnsOfFour) {
    ProfileFile file = programFolder_.Profile("Usersound.ini");
    ASSERT_TRUE(SavePreset(file, "Two points", UserPreset{{10, -20, 5}, {0, 0, 100}}));
    ProfileFile system = programFolder_.Profile("Systemsound.ini");
    ASSERT_TRUE(SavePreset(system, "Left", SystemPreset{6, 51}));
    const auto textOf = [](const std::filesystem::path& path) {
        const FileBytes bytes = ReadFileBytes(path);
        return std::string(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(textOf(file.Path()),
              "[Two points]\npoint Count=  2\nPoints=10  -20 5   0   0   100 \n");
    EXPECT_EQ(textOf(system.Path()), "[Left]\nPoints=6   51  \n");
    EXPECT_EQ(LoadPreset<UserPreset>(file.Read(), "Two points"),
              (std::vector<UserPoint>{{10, -20, 5}, {0, 0, 100}}));
    EXPECT_EQ(LoadPreset<SystemPreset>(system.Read(), "Left"), (SystemPreset{6, 51}));
    EXPECT_EQ(LoadPreset<SystemPreset>(system.Read(), "None"), SystemPreset{});
}

TEST_F(PresetTest, ReadsShortAndOverlongLists) {
    ProfileFile file = programFolder_.Profile("Usersound.ini");
    file.SetString("short", "point Count", "  3");
    file.SetString("short", "Points", "1   2   3   4   ");
    EXPECT_EQ(LoadPreset<UserPreset>(file.Read(), "short"),
              (std::vector<UserPoint>{{1, 2, 3}, {4, 0, 0}, {0, 0, 0}}));

    const std::vector<UserPoint> many(200, UserPoint{100, -99, 7});
    ASSERT_TRUE(SavePreset(file, "long", many));
    const std::vector<UserPoint> read = LoadPreset<UserPreset>(file.Read(), "long");
    ASSERT_EQ(read.size(), 167u);
    EXPECT_EQ(read[165], many[0]);
    EXPECT_EQ(read[166], (UserPoint{100, -99, 0}));

    // More numbers than are counted.
    for (const std::size_t counted : {0u, 1u}) {
        file.SetString("long", "point Count", counted ? "  1" : "  0");
        EXPECT_EQ(LoadPreset<UserPreset>(file.Read(), "long"),
                  std::vector<UserPoint>(counted, many[0]));
    }
}

TEST_F(PresetTest, ListsAsManyNamesAsFitTheBufferOfTheirs) {
    const auto nameOf = [](int i) { return std::string(995, 'n') + std::to_string(10000 + i); };
    std::string text;
    for (int i = 0; i < 40; ++i) text += '[' + nameOf(i) + "]\nPoints=1   2   \n";
    const ProfileFile file = programFolder_.Profile("Systemsound.ini");
    WriteFileBytes(file.Path(), sonavel::BytesOf(text));
    const std::vector<std::string> names = LoadPresetNames(file.Read());
    ASSERT_EQ(names.size(), 32u);
    EXPECT_EQ(names.back(), nameOf(31));
}

TEST_F(PresetTest, DeletesAllButTheFirst) {
    ProfileFile file = programFolder_.Profile("Systemsound.ini");
    for (const char* name : {"One", "Two", "Three"}) SavePreset(file, name, SystemPreset{1, 2});
    EXPECT_EQ(LoadPresetNames(file.Read()), (std::vector<std::string>{"One", "Two", "Three"}));
    for (const int index : {-1, 0, 1}) EXPECT_EQ(CanDeletePreset(index), index == 1) << index;
    ASSERT_TRUE(DeletePreset(file, "Two"));
    EXPECT_EQ(LoadPresetNames(file.Read()), (std::vector<std::string>{"One", "Three"}));
    EXPECT_EQ(SystemDeleteQuestion("Two"), " \"Two\"Delete the preset?");
    EXPECT_EQ(UserDeleteQuestion("Two"), " \"Two\"Will you delete the preset?");
}

}  // namespace
}  // namespace sonavel::testing
