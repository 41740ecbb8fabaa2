// The 3D editors: choosing points by number, list and scene, the numbers of a point, presets,
// preview and OK.
#include <QLineEdit>
#include <QRadioButton>
#include <fstream>
#include <sstream>

#include "effects/ui/effect_command_target.h"
#include "effects/ui/preview_toggle.h"
#include "spatial/ui/preset_name_dialog.h"
#include "spatial/ui/spatial_commands.h"
#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"
#include "ui/spatial_fixture.h"

namespace sonavel {
namespace {

QPushButton* ButtonIn(QWidget& dialog, const char* text) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == QString::fromUtf8(text)) return button;
    return nullptr;
}

// Types into whatever has the keyboard. The dialog is closed in any case.
void TypeAndConfirm(QDialog& dialog, const char* text) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    EXPECT_TRUE(field);
    if (field) {
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    dialog.close();
}

class SpatialEditors : public SpatialFixture {
  protected:
    SpatialEditors() { Open(1, 8, 6000); }

    std::string TextOf(const char* fileName) const {
        std::ifstream stream(folder_.Path() / fileName, std::ios::binary);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }
    static double Number(SpatialDialog& dialog, const char* name) {
        return dialog.Numbers().findChild<QDoubleSpinBox*>(QLatin1String(name))->value();
    }
    static void SetNumber(SpatialDialog& dialog, const char* name, double value) {
        dialog.Numbers().findChild<QDoubleSpinBox*>(QLatin1String(name))->setValue(value);
    }
    static PointRole RoleOf(SpatialDialog& dialog, std::size_t index) {
        return dialog.Scene().Content().points[index].role;
    }
};

TEST_F(SpatialEditors, ASystemPointIsChosenByNumberListOrClick) {
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    EXPECT_EQ(dialog.windowTitle(), "System Defined Positional Sound");
    auto* number = dialog.findChild<QSpinBox*>();
    number->selectAll();
    QTest::keyClicks(number, "35");
    EXPECT_EQ(dialog.Path(), std::vector{SystemPoint(35)});
    EXPECT_EQ(RoleOf(dialog, 35), PointRole::kSelected);
    EXPECT_NEAR(Number(dialog, "Azimuth"), 45, 0.05);
    EXPECT_NEAR(Number(dialog, "Distance"), 180, 0.05);
    EXPECT_NEAR(Number(dialog, "Gain"), 33.3, 0.05);

    auto* places = dialog.findChild<QListWidget*>();
    EXPECT_EQ(places->currentRow(), 35);
    EXPECT_EQ(places->currentItem()->text(), "35   front right, level, far");
    places->setCurrentRow(25);
    EXPECT_EQ(dialog.Path(), std::vector{SystemPoint(25)});
    EXPECT_NEAR(Number(dialog, "Elevation"), -90, 0.05);

    Q_EMIT dialog.Scene().PointPicked(3, Qt::NoModifier);
    EXPECT_EQ(dialog.Path(), std::vector{SystemPoint(3)});
    EXPECT_EQ(number->value(), 3);
}

TEST_F(SpatialEditors, APathHasAStartAndAnEndOfItsOwn) {
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    Q_EMIT dialog.Scene().PointPicked(6, Qt::NoModifier);
    Q_EMIT dialog.Scene().PointPicked(40, Qt::ShiftModifier);
    EXPECT_EQ(dialog.Path(), (std::vector{SystemPoint(6), SystemPoint(40)}));
    EXPECT_EQ(RoleOf(dialog, 6), PointRole::kStart);
    EXPECT_EQ(RoleOf(dialog, 40), PointRole::kEnd);
    EXPECT_EQ(dialog.Scene().Content().path.size(), 2u);
    EXPECT_NEAR(Number(dialog, "Distance"), 60, 0.05);

    dialog.findChildren<QRadioButton*>()[1]->setChecked(true);
    EXPECT_NEAR(Number(dialog, "Distance"), 180, 0.05);
    Q_EMIT dialog.Scene().PointPicked(12, Qt::NoModifier);
    EXPECT_EQ(dialog.Chooser().Chosen(), (SystemPreset{6, 12}));
}

TEST_F(SpatialEditors, AClickInTheSceneFindsThePointUnderIt) {
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    SceneWidget& scene = dialog.Scene();
    scene.resize(600, 500);
    QResizeEvent resized(scene.size(), {});
    QApplication::sendEvent(&scene, &resized);
    const QPointF pixel = *scene.Camera().Project(ToVector(SystemPoint(45)));
    QTest::mouseClick(&scene, Qt::LeftButton, Qt::NoModifier, pixel.toPoint());
    EXPECT_EQ(dialog.Chooser().Chosen().start, 45);
}

TEST_F(SpatialEditors, APointIsDraggedAndTheSceneTurnedWithTheMouse) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    SceneWidget& scene = dialog.Scene();
    scene.resize(600, 500);
    QResizeEvent resized(scene.size(), {});
    QApplication::sendEvent(&scene, &resized);
    const auto drag = [&](const QPoint& from, const QPoint& way) {
        QTest::mousePress(&scene, Qt::LeftButton, Qt::NoModifier, from);
        for (int step = 1; step <= 4; ++step) QTest::mouseMove(&scene, from + way * step / 4);
        QTest::mouseRelease(&scene, Qt::LeftButton, Qt::NoModifier, from + way);
    };
    const UserPoint before = dialog.Points().Points()[0];
    const auto seen = [&] {
        return *scene.Camera().Project(ToVector(PositionOf(dialog.Points().Points()[0])));
    };
    const QPoint grabbed = seen().toPoint();
    drag(grabbed, {60, 30});
    const UserPoint after = dialog.Points().Points()[0];
    EXPECT_NE(after, before);
    EXPECT_EQ(after.z, before.z);
    EXPECT_NEAR(seen().x(), grabbed.x() + 60, 3);
    EXPECT_NEAR(seen().y(), grabbed.y() + 30, 3);

    const QVector3D eye = scene.Camera().Eye();
    drag({20, 20}, {100, 0});
    EXPECT_EQ(dialog.Points().Points()[0], after);
    EXPECT_GT((scene.Camera().Eye() - eye).length(), 0.5f);
    QTest::keyClick(&scene, Qt::Key_T);
    EXPECT_EQ(scene.Camera().ElevationDegrees(), 90);
}

TEST_F(SpatialEditors, KeysAndWheelMoveTheEye) {
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    SceneWidget& scene = dialog.Scene();
    const SceneCamera& camera = scene.Camera();
    const QVector3D first = camera.Eye();
    struct Case {
        Qt::Key key;
        QVector3D forward;
    };
    for (const Case& c :
         {Case{Qt::Key_F, {0, -1, 0}}, Case{Qt::Key_S, {-1, 0, 0}}, Case{Qt::Key_T, {0, 0, -1}}}) {
        QTest::keyClick(&scene, c.key);
        EXPECT_LT((camera.Forward() - c.forward).length(), 1e-3f) << c.key;
    }
    const float before = camera.Distance();
    QWheelEvent nearer({50, 50}, {50, 50}, {}, {0, 240}, Qt::NoButton, Qt::NoModifier,
                       Qt::NoScrollPhase, false);
    QApplication::sendEvent(&scene, &nearer);
    EXPECT_LT(camera.Distance(), 0.9f * before);
    QTest::keyClick(&scene, Qt::Key_Home);
    EXPECT_LT((camera.Eye() - first).length(), 1e-3f);
}

// The letters of the buttons and of the labels that lead to fields.
std::vector<QString> MnemonicsOf(QWidget& dialog) {
    std::vector<QString> texts;
    for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
        if (!button->isHidden()) texts.push_back(button->text());
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->buddy() && !label->isHidden()) texts.push_back(label->text());
    std::vector<QString> letters;
    for (const QString& text : texts)
        if (const QKeySequence keys = QKeySequence::mnemonic(text); !keys.isEmpty())
            letters.push_back(keys.toString());
    return letters;
}

TEST_F(SpatialEditors, NoKeyMeansTwoThings) {
    const auto check = [](SpatialDialog&& dialog) {
        std::vector<QString> letters = MnemonicsOf(dialog);
        letters.push_back(QKeySequence::mnemonic("&Stop").toString());  // Preview's other face
        std::sort(letters.begin(), letters.end());
        const auto twice = std::adjacent_find(letters.begin(), letters.end());
        EXPECT_EQ(twice, letters.end()) << dialog.windowTitle().toStdString() << ": "
                                        << (twice == letters.end() ? "" : twice->toStdString());
        EXPECT_GT(letters.size(), 10u);
    };
    for (const SourceMotion motion : {SourceMotion::kPositional, SourceMotion::kMoving}) {
        check(SystemSoundDialog(View(), memory_, motion));
        check(UserSoundDialog(View(), memory_, motion));
    }
}

TEST_F(SpatialEditors, UserPointsAreAddedEditedOrderedAndRemoved) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    UserPointList& list = dialog.Points();
    auto* table = list.findChild<QTableWidget*>();
    QStringList headers;
    for (int column = 0; column < table->columnCount(); ++column)
        headers << table->horizontalHeaderItem(column)->text();
    EXPECT_EQ(headers, (QStringList{"Ball ID", "x", "y", "z", "Time"}));

    list.SetPoints({{100, 0, 0}, {0, 0, 50}});
    ButtonIn(list, "&Add")->click();  // behind the first, an eighth of a turn on
    EXPECT_EQ(list.Points(), (std::vector<UserPoint>{{100, 0, 0}, {71, -71, 0}, {0, 0, 50}}));
    EXPECT_EQ(list.Current(), 1);
    table->item(1, 3)->setData(Qt::EditRole, 20000);
    table->item(1, 1)->setData(Qt::EditRole, -30);
    EXPECT_EQ(list.Points()[1], (UserPoint{-30, -71, 9999}));
    ButtonIn(list, "Do&wn")->click();
    EXPECT_EQ(list.Points()[2], (UserPoint{-30, -71, 9999}));
    EXPECT_FALSE(ButtonIn(list, "Do&wn")->isEnabled());
    EXPECT_EQ(table->item(2, 0)->text(), "3");
    ButtonIn(list, "Re&move")->click();
    EXPECT_EQ(list.Points(), (std::vector<UserPoint>{{100, 0, 0}, {0, 0, 50}}));
    EXPECT_EQ(list.Current(), 1);
    EXPECT_EQ(dialog.Path().size(), 2u);
    EXPECT_EQ(dialog.Scene().Content().points.size(), 2u);

    ButtonIn(list, "Re&move")->click();
    ButtonIn(list, "Re&move")->click();
    EXPECT_EQ(list.Current(), -1);
    EXPECT_TRUE(dialog.Path().empty());
    EXPECT_FALSE(ButtonIn(dialog, "&OK")->isEnabled());
    EXPECT_FALSE(ButtonIn(dialog, "&Preview")->isEnabled());
    ButtonIn(list, "&Add")->click();
    EXPECT_TRUE(ButtonIn(dialog, "&OK")->isEnabled());
}

TEST_F(SpatialEditors, AFullListTakesNoMorePoints) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    dialog.Points().SetPoints(std::vector<UserPoint>(kMostUserPoints - 1));
    QPushButton* add = ButtonIn(dialog, "&Add");
    add->click();
    EXPECT_EQ(dialog.Points().Points().size(), std::size_t{kMostUserPoints});
    EXPECT_FALSE(add->isEnabled());
}

TEST_F(SpatialEditors, OnlyTheSelectedPointIsThePlaceOfASoundAtRest) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    dialog.Points().SetPoints({{10, 0, 0}, {20, 0, 0}, {30, 0, 0}});
    Q_EMIT dialog.Scene().PointPicked(2, Qt::NoModifier);
    EXPECT_EQ(dialog.Path(), std::vector{PositionOf(UserPoint{30, 0, 0})});
    EXPECT_EQ(Number(dialog, "x (right)"), 30);
    Q_EMIT dialog.Scene().PointDragged(2, {0.444f, -0.556f, 1.0f});
    EXPECT_EQ(dialog.Points().Points()[2], (UserPoint{44, -56, 100}));
    EXPECT_EQ(Number(dialog, "y (front)"), -56);
}

TEST_F(SpatialEditors, TheNumbersOfAPointCanBeTyped) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    struct Case {
        const char* field;
        double value;
        UserPoint point;
    };
    // Each starts from (0, 120, 0).
    const Case cases[] = {
        {"x (right)", 120, {120, 120, 0}}, {"z (up)", -7, {0, 120, -7}},
        {"Azimuth", 90, {120, 0, 0}},      {"Azimuth", 225, {-85, -85, 0}},
        {"Elevation", 30, {0, 104, 60}},   {"Distance", 50, {0, 50, 0}},
        {"Gain", 25, {0, 240, 0}},         {"Gain", 100, {0, 60, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field);
        dialog.Points().SetPoints({{0, 120, 0}});
        SetNumber(dialog, c.field, c.value);
        EXPECT_EQ(dialog.Points().Points()[0], c.point);
        EXPECT_NEAR(Number(dialog, c.field), c.value, 0.05);
    }
    // Small turns of a near point add up, though each is less than a hundredth.
    dialog.Points().SetPoints({{0, 10, 0}});
    for (int degrees = 1; degrees <= 90; ++degrees) SetNumber(dialog, "Azimuth", degrees);
    EXPECT_EQ(dialog.Points().Points()[0], (UserPoint{10, 0, 0}));
}

TEST_F(SpatialEditors, PresetsAreSavedOverwrittenOnYesAndLoaded) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    auto* presets = dialog.findChild<PresetBar*>();
    auto* names = presets->findChild<QComboBox*>();
    EXPECT_EQ(names->count(), 0);
    dialog.Points().SetPoints({{10, -20, 5}, {0, 0, 100}});
    presets->SavePreset("Round");
    EXPECT_NE(TextOf("Usersound.ini").find("[Round]"), std::string::npos);
    EXPECT_NE(TextOf("Usersound.ini").find("10  -20 5   0   0   100 "), std::string::npos);
    EXPECT_EQ(names->currentText(), "Round");

    dialog.Points().SetPoints({{1, 2, 3}});
    prompts_.answers = {false, true};
    presets->SavePreset("Round");
    EXPECT_EQ(LoadPreset<UserPreset>(folder_.Profile("Usersound.ini").Read(), "Round").size(), 2u);
    presets->SavePreset("round");
    EXPECT_EQ(LoadPreset<UserPreset>(folder_.Profile("Usersound.ini").Read(), "Round").size(), 1u);
    EXPECT_EQ(prompts_.questions,
              std::vector<std::string>(2, "There is a preset with the same name. Overwrite it?"));
    EXPECT_EQ(names->count(), 1);

    UserSoundDialog again(View(), memory_, SourceMotion::kPositional);
    EXPECT_EQ(again.Points().Points(), (std::vector<UserPoint>{{1, 2, 3}}));
}

TEST_F(SpatialEditors, EveryPresetButTheFirstIsDeletedOnYes) {
    ProfileFile file = folder_.Profile("Systemsound.ini");
    ASSERT_TRUE(SavePreset(file, "One", SystemPreset{1, 2}));
    ASSERT_TRUE(SavePreset(file, "Two", SystemPreset{33, 4}));
    ASSERT_TRUE(SavePreset(file, "Beyond", SystemPreset{-5, 77}));
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    auto* names = dialog.findChild<PresetBar*>()->findChild<QComboBox*>();
    QPushButton* remove = ButtonIn(dialog, "&Delete");
    EXPECT_EQ(names->count(), 3);
    EXPECT_EQ(dialog.Chooser().Chosen(), (SystemPreset{1, 2}));
    EXPECT_FALSE(remove->isEnabled());

    const auto choose = [&](int index) {
        names->setCurrentIndex(index);
        Q_EMIT names->activated(index);
    };
    choose(2);
    EXPECT_EQ(dialog.Chooser().Chosen(), (SystemPreset{0, 51}));
    choose(1);
    EXPECT_EQ(dialog.Chooser().Chosen(), (SystemPreset{33, 4}));
    prompts_.answers = {false, true};
    remove->click();
    EXPECT_EQ(names->count(), 3);
    remove->click();
    EXPECT_EQ(names->currentText(), "One");
    EXPECT_EQ(dialog.Chooser().Chosen(), (SystemPreset{1, 2}));
    EXPECT_EQ(LoadPresetNames(file.Read()), (std::vector<std::string>{"One", "Beyond"}));
    EXPECT_EQ(prompts_.questions, std::vector<std::string>(2, " \"Two\"Delete the preset?"));
    EXPECT_EQ(prompts_.captions, std::vector<std::string>(2, "WARNING"));
    EXPECT_FALSE(remove->isEnabled());
}

TEST_F(SpatialEditors, APresetsNameIsAskedFor) {
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    QTimer::singleShot(0, [] {
        auto* asked = qobject_cast<PresetNameDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(asked);
        EXPECT_EQ(asked->windowTitle(), "System Defined Localization Preset");
        EXPECT_EQ(asked->findChild<QLabel*>()->text(), "Enter the name of the preset");
        QPushButton* ok = asked->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        EXPECT_FALSE(ok->isEnabled());
        TypeAndConfirm(*asked, " A]way ");
        EXPECT_EQ(asked->Name(), "Away");
    });
    ButtonIn(dialog, "Sa&ve…")->click();
    // With a preset chosen its name is proposed, and goes when another is typed.
    QTimer::singleShot(0, [] {
        auto* asked = qobject_cast<PresetNameDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(asked);
        EXPECT_EQ(asked->Name(), "Away");
        TypeAndConfirm(*asked, "Near");
    });
    ButtonIn(dialog, "Sa&ve…")->click();
    EXPECT_EQ(LoadPresetNames(folder_.Profile("Systemsound.ini").Read()),
              (std::vector<std::string>{"Away", "Near"}));
    EXPECT_TRUE(prompts_.questions.empty());
}

TEST_F(SpatialEditors, APresetThatCannotBeWrittenIsSaid) {
    std::filesystem::create_directory(folder_.Path() / "Systemsound.ini");
    SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
    dialog.findChild<PresetBar*>()->SavePreset("Lost");
    ASSERT_EQ(prompts_.messages.size(), 1u);
    EXPECT_NE(prompts_.messages[0].find("could not be saved"), std::string::npos);
}

TEST_F(SpatialEditors, ThePreviewIsHeardWithItsBallOnTheWay) {
    UserSoundDialog dialog(View(), memory_, SourceMotion::kMoving);
    QPushButton* preview = ButtonIn(dialog, "&Preview");
    preview->click();
    EXPECT_EQ(progress_.titles, std::vector<std::string>{"ProgressUser Moving Sound"});
    EXPECT_TRUE(Document().Preview().IsPlaying());
    EXPECT_EQ(Document().Preview().GetFrameCount(), 6000u);
    EXPECT_EQ(preview->text(), "&Stop");
    preview->click();
    EXPECT_FALSE(Document().Preview().IsPlaying());
    EXPECT_EQ(preview->text(), "&Preview");
    EXPECT_FALSE(dialog.Scene().Ball());
    preview->click();
    ASSERT_TRUE(devices_.Pump() && devices_.Pump());
    ASSERT_TRUE(dialog.Scene().Ball());
    EXPECT_GT(dialog.Scene().Ball()->x, dialog.Path()[0].x);
    EXPECT_LT(dialog.Scene().Ball()->x, dialog.Path()[1].x);
    devices_.PumpUntilIdle();
    EXPECT_EQ(preview->text(), "&Preview");
    EXPECT_FALSE(dialog.Scene().Ball());
    EXPECT_FALSE(Document().GetModified());

    preview->click();
    dialog.reject();
    EXPECT_FALSE(Document().Preview().IsPlaying());
}

TEST_F(SpatialEditors, ANewDocumentOfThePreviewIsTitledByItsEditor) {
    EffectState state;
    EffectMemory memory;
    EffectCommands effects({[this] { return &View(); },
                            [this](Sound&& sound, std::string_view prefix) {
                                return workspace_->NewDocumentFromSound(std::move(sound), prefix);
                            },
                            state, memory, nullptr});
    const auto previewAndOpen = [&](SpatialDialog&& dialog) {
        ButtonIn(dialog, "&Preview")->click();
        dialog.reject();
        EXPECT_TRUE(effects.RunCommand(effect_command::kOpenPreview));
        EXPECT_EQ(Document().Sound().GetChannels(), 2u);
        return Document().Title();
    };
    EXPECT_EQ(previewAndOpen(SystemSoundDialog(View(), memory_, SourceMotion::kMoving)),
              "System_Sound_1");
    EXPECT_EQ(previewAndOpen(UserSoundDialog(View(), memory_, SourceMotion::kPositional)),
              "User_Sound_1");
    EXPECT_EQ(previewAndOpen(SystemSoundDialog(View(), memory_, SourceMotion::kPositional)),
              "System_Sound_2");
    EXPECT_EQ(previewAndOpen(UserSoundDialog(View(), memory_, SourceMotion::kMoving)),
              "User_Sound_2");
    EXPECT_EQ(progress_.titles,
              (std::vector<std::string>{
                  "ProgressSystem Moving Sound", "Progress User Positional Sound",
                  "Progress System Positional Sound", "ProgressUser Moving Sound"}));
}

TEST_F(SpatialEditors, OkPlacesTheSelectionAsOneUndoStep) {
    View().State().SetSelection(1000, 3000);
    SpatialCommands commands(Document(), View(), memory_);
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<SystemSoundDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->Chooser().Choose(PathEnd::kStart, 10);
        ButtonIn(*dialog, "&OK")->click();
    });
    EXPECT_TRUE(commands.RunCommand(spatial_command::kSystemPositional));
    EXPECT_EQ(progress_.titles, std::vector<std::string>{"Progress System Positional Sound"});
    const CWavePlayer& sound = Document().Sound();
    EXPECT_EQ(sound.GetChannels(), 2u);
    EXPECT_EQ(sound.GetBits(), 16u);
    EXPECT_EQ(sound.GetFrameCount(), 6000u);
    double left = 0;
    double right = 0;
    for (std::uint32_t i = 1500; i < 2500; ++i) {
        left += std::abs(sound.GetSample(0, i));
        right += std::abs(sound.GetSample(1, i));
    }
    EXPECT_GT(right, 1.5 * left);  // the point is at the right
    EXPECT_TRUE(Document().Undo());
    EXPECT_EQ(Document().Sound().GetBits(), 8u);
    EXPECT_FALSE(Document().CanUndo());
}

TEST_F(SpatialEditors, CancelChangesNothing) {
    SpatialCommands commands(Document(), View(), memory_);
    for (const int id : {spatial_command::kSystemPositional, spatial_command::kUserPositional,
                         spatial_command::kSystemMoving, spatial_command::kUserMoving}) {
        QTimer::singleShot(
            0, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->reject(); });
        EXPECT_FALSE(commands.RunCommand(id));
    }
    EXPECT_FALSE(Document().GetModified());
    EXPECT_FALSE(Document().CanUndo());
}

TEST_F(SpatialEditors, AnEditorOpensAsItWasLeftHoweverItEnded) {
    ProfileFile file = folder_.Profile("Systemsound.ini");
    for (const char* name : {"One", "Two"}) ASSERT_TRUE(SavePreset(file, name, SystemPreset{1, 2}));
    for (const int result : {QDialog::Accepted, QDialog::Rejected}) {
        const int shift = result == QDialog::Accepted ? 0 : 7;
        const SystemPreset chosen{6 + shift, 40 + shift};
        const UserPreset points{{10, shift, 0}, {20, 0, 5}, {-30, 0, 0}};
        {
            SystemSoundDialog system(View(), memory_, SourceMotion::kMoving);
            system.findChild<PresetBar*>()->LoadPreset("Two");
            system.Chooser().Choose(chosen);
            system.Chooser().SetActive(PathEnd::kEnd);
            UserSoundDialog user(View(), memory_, SourceMotion::kPositional);
            user.Points().SetPoints(points, 1);
            user.done(result);
            system.done(result);
        }
        SystemSoundDialog system(View(), memory_, SourceMotion::kMoving);
        EXPECT_EQ(system.Chooser().Chosen(), chosen);
        EXPECT_EQ(system.Chooser().Active(), PathEnd::kEnd);
        EXPECT_EQ(system.findChild<PresetBar*>()->Current(), "Two");
        EXPECT_EQ(RoleOf(system, static_cast<std::size_t>(chosen.start)), PointRole::kStart);
        UserSoundDialog user(View(), memory_, SourceMotion::kPositional);
        EXPECT_EQ(user.Points().Points(), points);
        EXPECT_EQ(user.Points().Current(), 1);
        EXPECT_EQ(RoleOf(user, 1), PointRole::kSelected);
    }
    // Each of the four has a memory of its own.
    SystemSoundDialog atRest(View(), memory_, SourceMotion::kPositional);
    EXPECT_EQ(atRest.Chooser().Chosen(), (SystemPreset{1, 2}));
    UserSoundDialog moving(View(), memory_, SourceMotion::kMoving);
    EXPECT_EQ(moving.Points().Points().size(), 2u);
}

TEST_F(SpatialEditors, TheMenuNamesTheEditorsAndWhatElsePlacesSounds) {
    QStringList texts;
    for (const Command<SpatialCommandTarget>& row : SpatialCommandTable())
        texts << QString::fromUtf8(row.info.menuText).remove(u'&');
    EXPECT_EQ(texts,
              (QStringList{"System Defined Positional Sound…", "User Defined Positional Sound…",
                           "System-Defined Moving Sound…", "User-Defined Moving Sound…",
                           "Cross Talk…", "Place Many…", "Live at Once"}));
}

TEST_F(SpatialEditors, TheCommandsNeedASound) {
    SpatialCommands withSound(Document(), View(), memory_);
    EXPECT_TRUE(withSound.StateOfCommand(spatial_command::kUserPositional).enabled);
    ASSERT_TRUE(Document().StartRecording());
    EXPECT_FALSE(withSound.StateOfCommand(spatial_command::kUserPositional).enabled);
    EXPECT_FALSE(Document().StopRecording(0)) << "nothing was recorded";
    ASSERT_TRUE(workspace_->NewDocument(NewSoundChoice{}));
    SpatialCommands empty(Document(), View(), memory_);
    EXPECT_FALSE(empty.StateOfCommand(spatial_command::kSystemMoving).enabled);
    EXPECT_FALSE(empty.RunCommand(spatial_command::kSystemMoving));
}

TEST_F(SpatialEditors, TheHeaderSaysWhatBecomesOfTheFormat) {
    const auto notes = [this] {
        SystemSoundDialog dialog(View(), memory_, SourceMotion::kPositional);
        return dialog.findChild<QLabel*>("headerNotes")->text();
    };
    EXPECT_TRUE(notes().startsWith("Headphones are needed"));
    EXPECT_TRUE(notes().endsWith("OK makes the whole sound 16-bit stereo."));
    Open(2, 16, 100);
    EXPECT_TRUE(notes().contains("stays 16-bit stereo"));
}

}  // namespace
}  // namespace sonavel
