// Head-related impulse responses of SOFA files, read by the codec program.
#include "codec/client/listener_reading.h"
#include "codec_fixture.h"
#include "spatial/listener.h"
#include "support/fake_progress.h"

namespace sonavel {
namespace {

// Comes with the library that reads such files.
constexpr const char* kMeasured = "/usr/share/libmysofa/MIT_KEMAR_normal_pinna.sofa";

class ResponsesTest : public CodecTest {
  protected:
    Result<MeasuredResponses> Read(const std::filesystem::path& path) {
        CodecWatcher watcher;
        return codecs.ReadResponses(path, watcher);
    }
    Result<MeasuredResponses> ReadFake(const std::string& how) {
        WriteFileBytes(folder / "file", BytesOf(how + "\n"));
        CodecSetup setup;
        setup.programs.helper = FAKE_CODEC_PROGRAM;
        setup.limits.silence = std::chrono::milliseconds(300);
        CodecWatcher watcher;
        return ChildCodecs(setup).ReadResponses(folder / "file", watcher);
    }
};

double EnergyOf(std::span<const float> taps) {
    double energy = 0;
    for (const float tap : taps) energy += double{tap} * tap;
    return energy;
}

TEST_F(ResponsesTest, ReadsWhatWasMeasuredAndWhere) {
    if (!std::filesystem::exists(kMeasured)) GTEST_SKIP() << "without the library's own file";
    const auto measured = Read(kMeasured);
    ASSERT_TRUE(measured) << measured.Reason();
    EXPECT_EQ(measured->rate, 44100);
    EXPECT_EQ(measured->directions.size(), 710u);
    EXPECT_EQ(measured->Count(), 1420u);
    int aside = 0;
    for (const MeasuredDirection& direction : measured->directions) {
        const double turn = std::remainder(direction.azimuth, 360.0);
        if (std::abs(direction.elevation) > 30 || std::abs(std::abs(turn) - 90) > 40) continue;
        ++aside;
        const bool isLouderRight = EnergyOf(measured->Response(direction.right)) >
                                   EnergyOf(measured->Response(direction.left));
        EXPECT_EQ(isLouderRight, turn > 0) << direction.azimuth << ", " << direction.elevation;
    }
    EXPECT_GT(aside, 100);
}

// The table was made from the same measurements.
TEST_F(ResponsesTest, TheSameEarsSoundAlikeFromAFileAndFromTheTable) {
    if (!std::filesystem::exists(kMeasured)) GTEST_SKIP() << "without the library's own file";
    Listener file, table;
    auto measured = Read(kMeasured);
    ASSERT_TRUE(measured);
    ASSERT_TRUE(file.Use(*std::move(measured)));
    EXPECT_EQ(file.Measured().name, "MIT_KEMAR_normal_pinna.sofa");
    const ResponseSet& a = (*file.At(44100))->Responses();
    const ResponseSet& b = (*table.At(44100))->Responses();
    std::size_t nearbyA = 0, nearbyB = 0;
    for (double azimuth = 0; azimuth < 360; azimuth += 30) {
        const Vector3 direction = VectorOf(azimuth, 10);
        const SphereBlend inA = a.Mesh().Around(direction, nearbyA);
        const SphereBlend inB = b.Mesh().Around(direction, nearbyB);
        const double lagA = a.DelayAt(inA, Ear::kLeft) - a.DelayAt(inA, Ear::kRight);
        const double lagB = b.DelayAt(inB, Ear::kLeft) - b.DelayAt(inB, Ear::kRight);
        EXPECT_NEAR(lagA, lagB, 1.5) << azimuth;
        EXPECT_NEAR(a.DelayAt(inA, Ear::kLeft), b.DelayAt(inB, Ear::kLeft), 2) << azimuth;
        const EarTaps tapsA = a.TapsAt(Refine(inA).places[0]);
        const EarTaps tapsB = b.TapsAt(Refine(inB).places[0]);
        for (const int ear : {0, 1})
            EXPECT_NEAR(10 * std::log10(EnergyOf(tapsA[ear]) / EnergyOf(tapsB[ear])), 0, 2)
                << azimuth;
    }
    file.UseTable();
    EXPECT_EQ(file.Measured().name, "KEMAR, 1994");
}

TEST_F(ResponsesTest, AListenerWhoseReadingIsCancelledOrFailsKeepsItsEars) {
    Listener listener;
    const std::string before = listener.Measured().name;
    FakeProgress progress;
    const auto window = progress.CreateProgress("");
    if (std::filesystem::exists(kMeasured)) {
        progress.cancelAtPoll = 0;
        EXPECT_TRUE(ReadListener(codecs, kMeasured, *window, listener).IsCancelled());
        progress.cancelAtPoll.reset();
    }
    EXPECT_EQ(ReadListener(codecs, folder / "none", *window, listener),
              Failed("There is no such file."));
    EXPECT_EQ(listener.Measured().name, before);
}

TEST_F(ResponsesTest, TheAnalysisTellsHowFarItIsAndStopsAnywhere) {
    if (!std::filesystem::exists(kMeasured)) GTEST_SKIP() << "without the library's own file";
    const auto measured = Read(kMeasured);
    ASSERT_TRUE(measured);
    for (const int stopAt : {0, 1, 1000}) {
        Listener listener;
        int words = 0;
        const auto stop = [&](double done) {
            EXPECT_GE(done, words / 1420.0 - 1e-9);
            return words++ == stopAt ? Onward::kStop : Onward::kGoOn;
        };
        EXPECT_TRUE(listener.Use(*measured, stop).IsCancelled());
        EXPECT_EQ(words, stopAt + 1);
        EXPECT_TRUE(listener.UsesTable());
    }
    FakeProgress progress;
    Listener listener;
    ASSERT_TRUE(ReadListener(codecs, kMeasured, *progress.CreateProgress(""), listener));
    ASSERT_FALSE(progress.positions.empty());
    EXPECT_GT(progress.positions.back(), 90);
}

TEST_F(ResponsesTest, FilesOfOtherKindsAreRefused) {
    EXPECT_EQ(Read(folder / "none").Reason(), "There is no such file.");
    const char* contents[] = {"", "text", "\x89HDF\r\n\x1a\n", "RIFF\0\0\0\0WAVE"};
    for (const char* content : contents) {
        WriteFileBytes(folder / "file", BytesOf(content));
        EXPECT_EQ(Read(folder / "file").Reason(),
                  "This is no file of head-related impulse responses.")
            << content;
    }
    if (!std::filesystem::exists(kMeasured)) return;
    FileBytes bytes = ReadFileBytes(kMeasured);
    for (const std::size_t kept : {bytes.size() / 2, bytes.size() / 10, std::size_t{600}}) {
        bytes.resize(kept);
        WriteFileBytes(folder / "file", bytes);
        EXPECT_FALSE(Read(folder / "file")) << kept;
    }
}

TEST_F(ResponsesTest, WhatMakesNoSenseIsRefused) {
    const auto good = ReadFake("good responses");
    ASSERT_TRUE(good) << good.Reason();
    ASSERT_EQ(good->directions.size(), 1u);
    EXPECT_EQ(good->directions[0].azimuth, 90);
    EXPECT_EQ(good->DelayOf(1), 2);
    EXPECT_EQ(good->Response(1)[0], 0.25f);
    // One direction spans nothing.
    EXPECT_EQ(Listener().Use(*good), Failed("The responses are of too few directions."));
    constexpr const char* kNoSofa = "The decoder's answer makes no sense.";
    constexpr const char* kSenseless = "The responses in this file make no sense.";
    const std::pair<const char*, const char*> cases[] = {
        {"too many responses", kNoSofa},
        {"torn responses", kNoSofa},
        {"empty responses", kNoSofa},
        {"responses without a head", kNoSofa},
        {"responses at no rate", kNoSofa},
        {"good", kNoSofa},
        {"hang", "Decoding the file took too long."},
        {"responses at a rate of their own", kSenseless},
        {"responses that are no numbers", kSenseless},
        {"responses from nowhere", kSenseless},
        {"silent responses", kSenseless},
    };
    for (const auto& [how, reason] : cases) EXPECT_EQ(ReadFake(how).Reason(), reason) << how;
}

}  // namespace
}  // namespace sonavel
