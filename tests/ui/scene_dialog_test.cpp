// The window "Scene": its sounds, their places, and what becomes of them.
#include <QComboBox>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include "app/scene/scene_dialog.h"
#include "app/scene/scene_mixer.h"
#include "spatial/ui/spatial_commands.h"
#include "support/patience.h"
#include "ui/spatial_fixture.h"

namespace sonavel {
namespace {

class SceneDialogs : public SpatialFixture {
  protected:
    SceneDialogs() {
        EXPECT_TRUE(folder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "마커 저장", 1));
        Open(1, 16, 6000);
        Open(2, 8, 3000);
    }

    std::unique_ptr<SceneDialog> Dialog() {
        return std::make_unique<SceneDialog>(View(), *workspace_, memory_,
                                             script::OpenSoundsAround(*workspace_), nullptr);
    }
    static QStringList Names(SceneDialog& dialog) {
        QStringList names;
        for (const ScenePoint& point : dialog.Scene().Content().points) names << point.name;
        return names;
    }
    static QPushButton* Button(QWidget& dialog, const char* text) {
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            if (button->text() == QString::fromUtf8(text)) return button;
        return nullptr;
    }

    enum class Side { kLeft, kRight };
    // The device's clock goes on until that ear hears more than twice what the other one does.
    testing::AssertionResult IsHeardAtThe(Side side) {
        const std::size_t wanted = side == Side::kLeft ? 0 : 1;
        double power[2] = {0, 0};
        for (QElapsedTimer timer = Started(); timer.elapsed() < kPatienceMs; QTest::qWait(5)) {
            power[0] = power[1] = 0;
            const std::vector<float> pairs = devices_.frameOut->Hear(1024);
            for (std::size_t i = 0; i < pairs.size(); ++i)
                power[i % 2] += double{pairs[i]} * pairs[i];
            if (power[wanted] > 2 * power[1 - wanted]) return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << power[0] << " left, " << power[1] << " right";
    }
    static QElapsedTimer Started() {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }
};

TEST_F(SceneDialogs, ShowsEverySoundAndThePathOfEach) {
    const auto dialog = Dialog();
    auto* table = dialog->findChild<SceneTable*>();
    auto* points = dialog->findChild<UserPointList*>();
    EXPECT_EQ(table->rowCount(), 2);
    EXPECT_EQ(Names(*dialog), (QStringList{"A", "B"}));
    points->SetPoints({{-100, 0, 0}, {0, 100, 0}, {100, 0, 0}});
    EXPECT_EQ(Names(*dialog), (QStringList{"A1", "A2", "A3", "B"}));
    EXPECT_EQ(dialog->Scene().Content().path.size(), 3u);
    EXPECT_EQ(dialog->Entries()[0].placing.kind, PlacingKind::kPath);
    // A click on a ball of the other sound chooses that sound.
    Q_EMIT dialog->Scene().PointPicked(3, Qt::NoModifier);
    EXPECT_EQ(table->currentRow(), 1);
    EXPECT_EQ(points->Points(), (std::vector<UserPoint>{{100, 0, 0}}));
    EXPECT_EQ(dialog->Scene().Content().otherPaths[0].size(), 3u);
    // A drag moves it, whichever was chosen before.
    Q_EMIT dialog->Scene().PointDragged(1, SourcePosition{0, 2, 0});
    EXPECT_EQ(table->currentRow(), 0);
    EXPECT_EQ(dialog->Entries()[0].placing.points[1], (SourcePosition{0, 2, 0}));
    table->item(1, 2)->setData(Qt::EditRole, 1.5);
    table->item(1, 3)->setData(Qt::EditRole, -500);
    EXPECT_EQ(dialog->Entries()[1].startSeconds, 1.5);
    EXPECT_EQ(dialog->Entries()[1].gain, -120);
}

TEST_F(SceneDialogs, ASoundWithoutPointsIsNotMixed) {
    const auto dialog = Dialog();
    EXPECT_TRUE(Button(*dialog, "&OK")->isEnabled());
    dialog->findChild<UserPointList*>()->SetPoints({});
    EXPECT_FALSE(Button(*dialog, "&OK")->isEnabled());
    EXPECT_FALSE(Button(*dialog, "&Preview")->isEnabled());
    Button(*dialog, "&Remove Sound")->click();
    EXPECT_TRUE(Button(*dialog, "&OK")->isEnabled());
    Button(*dialog, "&Remove Sound")->click();
    EXPECT_TRUE(dialog->Entries().empty());
    EXPECT_FALSE(Button(*dialog, "&OK")->isEnabled());
}

TEST_F(SceneDialogs, SoundsAreAddedFromTheMenu) {
    const auto dialog = Dialog();
    auto* menu = Button(*dialog, "Add Soun&d")->menu();
    Q_EMIT menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 4);
    menu->actions()[1]->trigger();
    ASSERT_EQ(dialog->Entries().size(), 3u);
    EXPECT_EQ(dialog->Entries()[2].sound->GetFrameCount(), 3000u);
    EXPECT_EQ(Names(*dialog), (QStringList{"A", "B", "C"}));
}

TEST_F(SceneDialogs, ASceneIsSavedAndOpened) {
    const auto path = std::filesystem::path(directory_.path().toStdString()) / "a.scene";
    for (std::size_t i = 0; i < 2; ++i)
        ASSERT_TRUE(workspace_->At(i).document->SaveDocument(
            path.parent_path() / ("sound" + std::to_string(i) + ".wav")));
    const auto dialog = Dialog();
    dialog->findChild<UserPointList*>()->SetPoints({{-100, 50, 0}});
    dialog->SaveScene(path);
    dialog->findChild<UserPointList*>()->SetPoints({{0, 0, 100}});
    dialog->LoadScene(path);
    ASSERT_EQ(dialog->Entries().size(), 2u);
    EXPECT_EQ(dialog->Entries()[0].placing.points[0], (SourcePosition{-1, 0.5f, 0}));
    EXPECT_EQ(dialog->findChild<UserPointList*>()->Points(),
              (std::vector<UserPoint>{{-100, 50, 0}}));
}

TEST_F(SceneDialogs, TheCommandMakesANewSoundAndRemembersTheScene) {
    SceneMemory scene;
    SceneMixer mixer(*workspace_, *workspace_->Active(), memory_, scene, nullptr);
    const auto answer = [](const std::function<void(SceneDialog&)>& act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = qobject_cast<SceneDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            act(*dialog);
        });
    };
    answer([](SceneDialog& dialog) {
        dialog.findChild<SceneTable*>()->item(1, 2)->setData(Qt::EditRole, 1.0);
        dialog.accept();
    });
    ASSERT_TRUE(mixer.AskAndMix());
    ASSERT_EQ(workspace_->Count(), 3u);
    EXPECT_EQ(Document().Title(), "Scene_1");
    EXPECT_EQ(Document().Sound().GetFrameCount(), 47100u);
    EXPECT_EQ(Document().Sound().GetChannels(), 2u);
    // The new sound is not part of the scene that comes again.
    answer([](SceneDialog& dialog) {
        EXPECT_EQ(dialog.Entries().size(), 2u);
        EXPECT_EQ(dialog.Entries()[1].startSeconds, 1);
        dialog.reject();
    });
    EXPECT_TRUE(mixer.AskAndMix().IsCancelled());
    EXPECT_EQ(workspace_->Count(), 3u);
}

TEST_F(SceneDialogs, APreviewPlaysTheSceneAndChangesNothing) {
    const auto dialog = Dialog();
    Button(*dialog, "&Preview")->click();
    EXPECT_EQ(Document().Preview().GetFrameCount(), 6000u);
    EXPECT_EQ(Document().Preview().GetChannels(), 2u);
    EXPECT_EQ(workspace_->Count(), 2u);
    dialog->reject();
    EXPECT_FALSE(Document().Preview().IsPlaying());
}

TEST_F(SceneDialogs, IsHeardLiveWhileItIsPutTogether) {
    const auto dialog = Dialog();
    auto* table = dialog->findChild<SceneTable*>();
    QPushButton* live = Button(*dialog, "Live");
    live->click();
    ASSERT_TRUE(devices_.frameOut->IsOpen());
    EXPECT_EQ(devices_.frameOut->framesPerSecond, 44100u);
    // The sound of 8 bits, at the right, is by far the louder one.
    EXPECT_TRUE(IsHeardAtThe(Side::kRight));
    Q_EMIT dialog->Scene().PointDragged(1, SourcePosition{-1, 0, 0});
    EXPECT_TRUE(IsHeardAtThe(Side::kLeft));
    // The chosen sound is heard in the first half of the scene alone.
    for (QElapsedTimer timer = Started();
         !dialog->Scene().Ball() && timer.elapsed() < kPatienceMs;) {
        devices_.frameOut->Hear(441);
        QTest::qWait(20);
    }
    ASSERT_TRUE(dialog->Scene().Ball());
    EXPECT_EQ(dialog->Scene().Ball()->x, -1) << "the ball is elsewhere";
    table->item(1, 3)->setData(Qt::EditRole, -120);
    Q_EMIT dialog->Scene().PointDragged(0, SourcePosition{1, 0, 0});
    EXPECT_TRUE(IsHeardAtThe(Side::kRight));
    live->click();
    EXPECT_FALSE(devices_.frameOut->IsOpen());
    EXPECT_FALSE(dialog->Scene().Ball());
}

TEST_F(SceneDialogs, LiveBeginsAnewWithOtherSoundsAndEndsWithTheLast) {
    const auto dialog = Dialog();
    auto* table = dialog->findChild<SceneTable*>();
    QPushButton* live = Button(*dialog, "Live");
    live->click();
    EXPECT_TRUE(IsHeardAtThe(Side::kRight));
    // Of a scene that now lasts ten seconds only the first sound is heard in the beginning.
    table->item(1, 2)->setData(Qt::EditRole, 10.0);
    ASSERT_TRUE(devices_.frameOut->IsOpen());
    EXPECT_TRUE(IsHeardAtThe(Side::kLeft));
    EXPECT_LT(dialog->findChild<LiveToggle*>()->HeardShare(), 0.1);
    // Without a point, a sound stays heard where it was.
    dialog->findChild<UserPointList*>()->SetPoints({});
    EXPECT_TRUE(live->isEnabled());
    EXPECT_TRUE(devices_.frameOut->IsOpen());
    Button(*dialog, "&Remove Sound")->click();
    EXPECT_TRUE(devices_.frameOut->IsOpen());
    Button(*dialog, "&Remove Sound")->click();
    EXPECT_FALSE(devices_.frameOut->IsOpen());
    EXPECT_FALSE(live->isEnabled());
}

}  // namespace
}  // namespace sonavel
