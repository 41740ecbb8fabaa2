// Smooth sources in the 3D editors, and the dialogs of Cross Talk and Place Many.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTimer>
#include <fstream>
#include <set>

#include "spatial/ui/crosstalk_dialog.h"
#include "spatial/ui/place_many_dialog.h"
#include "spatial/ui/shape_dialog.h"
#include "spatial/ui/spatial_commands.h"
#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"
#include "ui/spatial_fixture.h"

namespace sonavel {
namespace {

class SmoothEditors : public SpatialFixture {
  protected:
    SmoothEditors() {
        Open(1, 16, 3000);
        for (std::uint32_t i = 0; i < 3000; ++i)
            Document().Sound().SetSample(0, i, static_cast<int>(i * 7919 % 9001) - 4500);
    }

    static QCheckBox* BoxIn(QWidget& dialog, const char* text) {
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
            if (box->text() == QLatin1String(text)) return box;
        return nullptr;
    }
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
    const Placing chosen = dialog.Placed();
    EXPECT_EQ(chosen.kind, PlacingKind::kPath);
    EXPECT_EQ(chosen.smoothness, Smoothness::kSmooth);
    EXPECT_EQ(chosen.doppler, Doppler::kOn);
    EXPECT_EQ(chosen.curve, PathCurve::kSpline);
    EXPECT_EQ(chosen.metresPerUnit, 2.5);
    smooth->click();
    EXPECT_EQ(dialog.Placed().doppler, Doppler::kOff);
    EXPECT_TRUE(dialog.Apply());
}

TEST_F(SmoothEditors, AMovingSourcePassesItsPointsAtTheirTimesAndInRounds) {
    {
        UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
        dialog.Points().SetPoints({{100, 0, 0}, {0, 100, 0}, {-100, 0, 0}});
        auto* table = dialog.findChild<QTableWidget*>();
        ASSERT_EQ(table->columnCount(), 5);
        table->item(1, 4)->setText("0.5");
        table->item(2, 4)->setText("no time");
        using Times = std::vector<std::optional<double>>;
        EXPECT_EQ(dialog.Placed().times, (Times{std::nullopt, 0.5, std::nullopt}));
        EXPECT_EQ(table->item(2, 4)->text(), "");
        // Times belong to places in the order, which moves points past them.
        dialog.Points().Select(1);
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            if (button->text() == "&Up") button->click();
        EXPECT_EQ(dialog.Points().Points()[0], (UserPoint{0, 100, 0}));
        EXPECT_EQ(dialog.Placed().times[1], 0.5);
        BoxIn(dialog, "Loop bac&k")->click();
        EXPECT_EQ(dialog.Scene().Content().path.size(), 4u);
        dialog.findChild<QDoubleSpinBox*>("Round")->setValue(0.75);
        EXPECT_EQ(dialog.Placed().loop, PathLoop::kLoop);
        EXPECT_EQ(dialog.Placed().roundSeconds, 0.75);
        EXPECT_TRUE(dialog.Apply());
        dialog.findChild<QDoubleSpinBox*>("Round")->setValue(0.25);
        EXPECT_EQ(dialog.Apply().Reason(), "A round ends before its last point is reached.");
        dialog.accept();
    }
    const UserSoundDialog again(View(), memory_, SourceMotion::kMoving);
    EXPECT_EQ(again.Placed().times[1], 0.5);
    EXPECT_EQ(again.Placed().roundSeconds, 0.25);
    const UserSoundDialog resting(View(), memory_, SourceMotion::kPositional);
    EXPECT_EQ(resting.findChild<QTableWidget*>()->columnCount(), 4);
    EXPECT_TRUE(resting.Placed().times.empty());
}

TEST_F(SmoothEditors, TheDistanceLawIsShownAndSetWithSmoothOn) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    dialog.Points().SetPoints({{0, 240, 0}});
    auto* least = dialog.findChild<QDoubleSpinBox*>("Least distance");
    auto* fall = dialog.findChild<QDoubleSpinBox*>("Fall");
    auto* gain = dialog.findChild<QDoubleSpinBox*>("Gain");
    EXPECT_FALSE(least->isEnabled() || fall->isEnabled());
    EXPECT_EQ(least->value(), 60);
    EXPECT_EQ(fall->value(), 6);
    EXPECT_EQ(gain->value(), 25);
    BoxIn(dialog, "Smoot&h")->click();
    ASSERT_TRUE(least->isEnabled() && fall->isEnabled());
    fall->setValue(12);
    EXPECT_NEAR(gain->value(), 6.25, 0.06);
    least->setValue(120);
    EXPECT_EQ(gain->value(), 25);
    EXPECT_EQ(dialog.Placed().law, (DistanceLaw{12, 1.2}));
    gain->setValue(100);
    EXPECT_EQ(dialog.Points().Points()[0], (UserPoint{0, 120, 0}));
    // Without Smooth the law is the fixed one, and comes back with it.
    BoxIn(dialog, "Smoot&h")->click();
    EXPECT_EQ(fall->value(), 6);
    EXPECT_EQ(gain->value(), 50);
    EXPECT_EQ(dialog.Placed().law, DistanceLaw{});
    BoxIn(dialog, "Smoot&h")->click();
    EXPECT_EQ(dialog.Placed().law, (DistanceLaw{12, 1.2}));
}

TEST_F(SmoothEditors, AShapeReplacesThePoints) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    QTimer::singleShot(0, [&dialog] {
        auto* asked = dialog.findChild<ShapeDialog*>();
        asked->findChild<QComboBox*>()->setCurrentIndex(1);
        asked->findChildren<QSpinBox*>()[0]->setValue(200);
        asked->findChildren<QSpinBox*>()[2]->setValue(-2);
        asked->accept();
    });
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == QString::fromUtf8("&New Shape…")) button->click();
    EXPECT_EQ(memory_.shape, (ShapeNumbers{PathShape::kSpiral, 2, 0, -2}));
    EXPECT_EQ(dialog.Points().Points().size(), 25u);
    EXPECT_EQ(dialog.Points().Points().front(), (UserPoint{0, 200, 0}));
    EXPECT_EQ(dialog.Points().Points().back(), (UserPoint{0, 50, 0}));
    EXPECT_EQ(dialog.Placed().curve, PathCurve::kSpline);
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

TEST_F(SmoothEditors, PlaceManyTakesAllOpenSoundsOrThoseOfAFolder) {
    const std::filesystem::path folder = directory_.path().toStdString();
    const auto filesIn = [](const std::filesystem::path& of) {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(of))
            if (entry.path().extension() == ".wav") names.insert(entry.path().filename().string());
        return names;
    };
    Open(1, 8, 2000);
    std::vector<CSoundDoc*> open{workspace_->At(0).document.get(),
                                 workspace_->At(1).document.get()};
    PlaceManyDialog dialog(FourDirections(folder / "open"), nullptr);
    auto* points = dialog.findChild<QPlainTextEdit*>();
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    points->setPlainText("1,0,0\npath,-1,0,0,0,1,0,1,0,0");
    dialog.findChild<QComboBox*>()->setCurrentIndex(1);
    EXPECT_TRUE(ok->isEnabled());
    ManyPlacesChoice choice = dialog.Choice();
    EXPECT_EQ(choice.sounds, PlacedSounds::kAllOpen);
    // The path is named by itself, and so of both sounds alike.
    EXPECT_EQ(PlaceSounds(choice, open, services_, memory_.listener).Reason(),
              "Two sounds would become the file path_270_0.wav.");
    EXPECT_TRUE(filesIn(folder / "open").empty());
    choice.points = "1,0,0\n-1,0,0,0,1,0,1,0,0";
    ASSERT_TRUE(PlaceSounds(choice, open, services_, memory_.listener));
    EXPECT_EQ(filesIn(folder / "open"),
              (std::set<std::string>{"Test1_270_0.wav", "Test1_90_0.wav", "Test2_270_0.wav",
                                     "Test2_90_0.wav"}));
    dialog.findChild<QComboBox*>()->setCurrentIndex(2);
    EXPECT_FALSE(ok->isEnabled());
    dialog.findChildren<QLineEdit*>()[0]->setText("anywhere");
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(dialog.Choice().sounds, PlacedSounds::kFolder);
    choice.sounds = PlacedSounds::kFolder;
    choice.soundsFolder = folder / "open";
    choice.folder = folder / "again";
    choice.points = "0,1,0";
    std::ofstream(choice.soundsFolder / "notes.txt") << "no sound";
    ASSERT_TRUE(PlaceSounds(choice, {}, services_, memory_.listener));
    EXPECT_EQ(filesIn(folder / "again").size(), 4u);
    EXPECT_TRUE(filesIn(folder / "again").contains("Test1_270_0_0_0.wav"));
    choice.soundsFolder = folder / "nowhere";
    EXPECT_EQ(PlaceSounds(choice, {}, services_, memory_.listener).Reason(),
              "The folder has no sounds.");
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
