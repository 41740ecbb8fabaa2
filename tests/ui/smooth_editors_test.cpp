// Smooth sources in the 3D editors, and the dialogs of Cross Talk and Place Many.
#include <QCheckBox>
#include <QPlainTextEdit>

#include "spatial/ui/crosstalk_dialog.h"
#include "spatial/ui/place_many_dialog.h"
#include "spatial/ui/spatial_commands.h"
#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"
#include "support/recording_prompts.h"
#include "ui/view_fixture.h"

namespace sonavel {
namespace {

class SmoothEditors : public ::testing::Test {
  protected:
    SmoothEditors() {
        TestApplication();
        EXPECT_TRUE(folder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS",
                                                 "SAVE UNDO REDO INFOMATION", 1));
        workspace_ = std::make_unique<Workspace>(services_);
        workspace_->SetInitialViewSize(400, 200);
        Sound sound;
        EXPECT_TRUE(sound.Create(1, 16, 44100, 3000));
        for (std::uint32_t i = 0; i < 3000; ++i)
            sound.SetSample(0, i, static_cast<int>(i * 7919 % 9001) - 4500);
        workspace_->NewDocumentFromSound(std::move(sound), "Test");
    }

    CSoundDoc& Document() { return *workspace_->Active()->document; }
    CSoundView& View() { return *workspace_->Active()->view; }
    static QCheckBox* BoxIn(QWidget& dialog, const char* text) {
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
            if (box->text() == QLatin1String(text)) return box;
        return nullptr;
    }

    QTemporaryDir directory_;
    ProgramFolder folder_{directory_.path().toStdString()};
    RecordingPrompts prompts_;
    FakeProgress progress_;
    MemoryClipboard clipboard_;
    HeadlessWaveDevices devices_{WavePace::kAsFastAsAsked};
    HostServices services_{prompts_, progress_, clipboard_, devices_, folder_};
    std::unique_ptr<Workspace> workspace_;
    SpatialMemory memory_;
};

TEST_F(SmoothEditors, ABoxMakesASourceAtRestSmooth) {
    std::vector<std::vector<std::uint8_t>> heard;
    for (const bool smooth : {false, true}) {
        SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
        EXPECT_FALSE(BoxIn(dialog, "Dopp&ler")->isVisibleTo(&dialog));
        BoxIn(dialog, "Smoot&h")->setChecked(smooth);
        dialog.accept();
        ASSERT_TRUE(dialog.Apply());
        heard.emplace_back(Document().Sound().Bytes().begin(), Document().Sound().Bytes().end());
        ASSERT_TRUE(Document().Undo());
    }
    EXPECT_NE(heard[0], heard[1]);
    // The next one opens as the last was left.
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    EXPECT_TRUE(BoxIn(dialog, "Smoot&h")->isChecked());
}

TEST_F(SmoothEditors, DopplerIsOfferedToSmoothMovingSources) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    QCheckBox* smooth = BoxIn(dialog, "Smoot&h");
    QCheckBox* doppler = BoxIn(dialog, "Dopp&ler");
    auto* metres = dialog.findChild<QDoubleSpinBox*>("Metres");
    EXPECT_FALSE(doppler->isEnabled() || metres->isEnabled());
    smooth->click();
    EXPECT_TRUE(doppler->isEnabled() && !metres->isEnabled());
    doppler->click();
    EXPECT_TRUE(metres->isEnabled());
    metres->setValue(2.5);
    dialog.Points().SetPoints({{100, 0, 0}, {0, 100, 0}, {-100, 0, 0}});
    EXPECT_EQ(dialog.Scene().Content().path.size(), 3u);
    BoxIn(dialog, "&Flowing curve through the points")->click();
    EXPECT_EQ(dialog.Scene().Content().path.size(), 129u);
    const Placing chosen = dialog.Heard().Chosen();
    EXPECT_EQ(chosen.kind, PlacingKind::kPath);
    EXPECT_EQ(chosen.smoothness, Smoothness::kSmooth);
    EXPECT_EQ(chosen.doppler, Doppler::kOn);
    EXPECT_EQ(chosen.curve, PathCurve::kSpline);
    EXPECT_EQ(chosen.metresPerUnit, 2.5);
    smooth->click();
    EXPECT_EQ(dialog.Heard().Chosen().doppler, Doppler::kOff);
    EXPECT_TRUE(dialog.Apply());
}

TEST_F(SmoothEditors, PlaceManyBeginsWithFourDirectionsAndSaysWhatIsWrong) {
    PlaceManyDialog dialog(FourDirections(directory_.path().toStdString()), nullptr);
    auto* points = dialog.findChild<QPlainTextEdit*>();
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_TRUE(ok->isEnabled());
    points->setPlainText("1,2");
    EXPECT_FALSE(ok->isEnabled());
    points->setPlainText("There,1,2,3");
    EXPECT_TRUE(ok->isEnabled());
    BoxIn(dialog, "&Smooth")->click();
    const ManyPlacesChoice choice = dialog.Choice();
    EXPECT_EQ(choice.smoothness, Smoothness::kSmooth);
    EXPECT_EQ(choice.filesThere, FilesThere::kKeep);
    const auto places = PreparePlaces(Document(), choice);
    ASSERT_TRUE(places) << places.Reason();
    EXPECT_EQ(places->paths.front(), directory_.path().toStdString() + "/There_27_53.wav");
    ASSERT_TRUE(WritePlaces(Document(), *places, memory_.listener, [](std::size_t) {}));
    EXPECT_TRUE(std::filesystem::exists(places->paths.front()));
    EXPECT_EQ(PreparePlaces(Document(), choice).Reason(),
              "There is a file There_27_53.wav already.");
}

TEST_F(SmoothEditors, CrossTalkIsOfferedToStereoSoundsOnly) {
    SpatialCommands commands(Document(), View(), memory_);
    EXPECT_FALSE(commands.StateOfCommand(spatial_command::kCrosstalk).enabled);
    EXPECT_TRUE(commands.StateOfCommand(spatial_command::kPlaceMany).enabled);
    ASSERT_TRUE(Document().Sound().ConvertChannels(2, ChannelChoice::kBothOrMix));
    EXPECT_TRUE(commands.StateOfCommand(spatial_command::kCrosstalk).enabled);
    EXPECT_EQ(CrosstalkDialog(42.5, "KEMAR, 1994", nullptr).Angle(), 42.5);
}

}  // namespace
}  // namespace sonavel
