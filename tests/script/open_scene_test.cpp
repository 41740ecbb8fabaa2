// Scenes of open sounds and of files, and their way to a scene file and back.
#include "script/open_scene.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "support/sound_files.h"
#include "view/view_fixture.h"

namespace sonavel::script {
namespace {

class OpenSceneTest : public OpenViewTest {
  protected:
    OpenSceneTest() {
        SetOption("__SOUND_GENERAL_OPTIONS", "마커 저장", 1);
        sounds.SetInitialViewSize(kWidth, kHeight);
    }

    void Open(sonavel::Sound&& sound) override {
        sounds.NewDocumentFromSound(std::move(sound), "Ramp_");
    }
    CSoundView& View() override { return *sounds.Active()->view; }
    SoundViewCommands& Commands() override { return *sounds.Active()->commands; }

    std::filesystem::path SavedRamp(const std::string& name, std::uint32_t frames) {
        OpenRamp(frames, 1, 16, 8000);
        const auto path = temporary / name;
        EXPECT_TRUE(sounds.Active()->document->SaveDocument(path));
        return path;
    }
    static std::string TextOf(const std::filesystem::path& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    FakeProgress progress_;
    Listener listener;
    Workspace sounds{services};
};

TEST_F(OpenSceneTest, BeginsWithAllOpenSoundsFromLeftToRight) {
    OpenRamp(100);
    EXPECT_EQ(OpenSoundsAround(sounds)[0].placing.points[0], (SourcePosition{0, 1, 0}));
    OpenRamp(200);
    OpenRamp(300);
    const std::vector<SceneEntry> entries = OpenSoundsAround(sounds);
    ASSERT_EQ(entries.size(), 3u);
    const SourcePosition places[] = {{-1, 0, 0}, {0, 1, 0}, {1, 0, 0}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(entries[i].placing.points[0], places[i]);
        EXPECT_EQ(entries[i].sound.get(), &sounds.At(i).document->Sound());
    }
}

TEST_F(OpenSceneTest, AFileHoldsTheWholeScene) {
    const auto first = SavedRamp("with \"blank\".wav", 100);
    const auto second = SavedRamp("b.wav", 150);
    std::vector<SceneEntry> entries = OpenSoundsAround(sounds);
    ASSERT_EQ(entries.size(), 2u);
    entries[0].startSeconds = 0.0125;
    entries[0].gain = -6.5;
    entries[1].placing = {.kind = PlacingKind::kPath,
                          .points = {{-1.25f, 0.01f, 0}, {9, 0, 2}, {0, 0, -1}},
                          .curve = PathCurve::kSpline,
                          .smoothness = Smoothness::kSmooth,
                          .doppler = Doppler::kOn,
                          .metresPerUnit = 2.5};
    const auto path = temporary / "one.scene";
    ASSERT_TRUE(WriteScene(path, entries));
    EXPECT_EQ(TextOf(path),
              "sound \"with \\\"blank\\\".wav\" point -1 0 0 start=0.012500s gain=-6.5 smooth=on\n"
              "sound \"b.wav\" path -1.25 0.01 0 9 0 2 0 0 -1 start=0.000000s gain=0 smooth=on "
              "curve=spline doppler=on metres-per-unit=2.5\n");
    // With the first sound open and the second one from its file.
    sounds.Close(1);
    const auto read = ReadScene(path, sounds);
    ASSERT_TRUE(read) << read.Reason();
    ASSERT_EQ(read->size(), 2u);
    EXPECT_EQ((*read)[0].document, sounds.At(0).document.get());
    EXPECT_EQ((*read)[1].document, nullptr);
    EXPECT_EQ((*read)[1].sound->GetFrameCount(), 150u);
    for (std::size_t i = 0; i < 2; ++i) {
        const Placing& was = entries[i].placing;
        const Placing& is = (*read)[i].placing;
        EXPECT_EQ((*read)[i].path, i == 0 ? first : second);
        EXPECT_EQ((*read)[i].startSeconds, entries[i].startSeconds);
        EXPECT_EQ((*read)[i].gain, entries[i].gain);
        EXPECT_EQ(is.points, was.points);
        EXPECT_EQ(is.kind, was.kind);
        EXPECT_EQ(is.curve, was.curve);
        EXPECT_EQ(is.smoothness, was.smoothness);
        EXPECT_EQ(is.doppler, was.doppler);
        EXPECT_EQ(is.metresPerUnit, was.metresPerUnit);
    }
}

TEST_F(OpenSceneTest, SaysWhatCannotBeWrittenOrRead) {
    OpenRamp(100);
    const auto path = temporary / "none.scene";
    EXPECT_EQ(WriteScene(path, OpenSoundsAround(sounds)).Reason(),
              "Save Ramp_1 first: a scene file names its sounds' files.");
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(ReadScene(path, sounds).Ended().IsFailed());
    std::ofstream(path) << "sound gone.wav point 0 1 0\n";
    EXPECT_TRUE(ReadScene(path, sounds).Reason().starts_with("Line 1 of the scene: "));
}

TEST_F(OpenSceneTest, MixesEverySoundFromItsStart) {
    OpenRamp(1000, 1, 16, 8000);
    OpenRamp(500, 1, 16, 8000);
    std::vector<SceneEntry> entries = OpenSoundsAround(sounds);
    const std::uint32_t rate = entries[0].sound->GetSamplesPerSecond();
    entries[1].startSeconds = 2000.0 / rate;
    const auto mixed = MixEntries(entries, {listener, progress_});
    ASSERT_TRUE(mixed) << mixed.Reason();
    EXPECT_EQ(mixed->GetFrameCount(), 2500u);
    EXPECT_EQ(mixed->GetChannels(), 2u);
    const auto doubled = MixEntries(entries, {listener, progress_, 2 * rate});
    ASSERT_TRUE(doubled) << doubled.Reason();
    EXPECT_EQ(doubled->GetSamplesPerSecond(), 2 * rate);
    EXPECT_NEAR(doubled->GetFrameCount(), 5000, 2);
}

TEST_F(OpenSceneTest, ForgetsSoundsThatWereClosed) {
    OpenRamp(100);
    OpenRamp(200);
    std::vector<SceneEntry> entries = OpenSoundsAround(sounds);
    sounds.Close(0);
    ForgetClosed(entries, sounds);
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].sound->GetFrameCount(), 200u);
}

}  // namespace
}  // namespace sonavel::script
