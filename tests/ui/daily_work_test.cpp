// The daily work by keys: names typed at flags, places typed into fields, the palette, pauses that
// show before OK, and regions that become files.
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

#include "app/command_palette.h"
#include "app/exchange/regions_dialog.h"
#include "app/keys_dialog.h"
#include "support/patience.h"
#include "ui/view_fixture.h"
#include "view/commands/marker_commands.h"
#include "view/ui/go_to_dialog.h"
#include "view/ui/pauses_dialog.h"

namespace sonavel {
namespace {

class DailyWorkTest : public ViewFixture {
  protected:
    // Loud, silent for a second, loud.
    CSoundView& OpenSpeech() {
        const TestSignal signal = [](unsigned, std::uint32_t frame) {
            return frame / 44100 == 1 ? 0 : 8000;
        };
        return Open({.frames = 3 * 44100, .signal = signal, .markers = {}});
    }
};

TEST_F(DailyWorkTest, AMarkerIsNamedAtItsFlagByKeysAlone) {
    CSoundView& view = OpenSpeech();
    view.State().SetCursor(5000);
    widget_->setFocus();
    QTest::keyClick(widget_.get(), Qt::Key_M, Qt::ShiftModifier);
    auto* field = widget_->findChild<QLineEdit*>("marker name");
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "Chapter");
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(view.Sound().Markers().Count(), 1u);
    EXPECT_EQ(view.Sound().Markers().Find(1)->name, "Chapter");
    EXPECT_EQ(view.Sound().Markers().Find(1)->position, 5000u);
}

TEST_F(DailyWorkTest, EscapeLeavesTheNameAsItWas) {
    CSoundView& view = OpenSpeech();
    AddMarker(view, 100, "old", 7);
    actions_->Run(view_command::kMarkerRename);
    auto* field = widget_->findChild<QLineEdit*>("marker name");
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text(), "old");
    QTest::keyClicks(field, "new");
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(view.Sound().Markers().Find(1)->name, "old");
}

TEST_F(DailyWorkTest, GoToTakesTimesAsTheyAreSaid) {
    const struct {
        const char* typed;
        std::uint32_t frame;
    } cases[] = {{"17:21.5", 45930150}, {"62.5s", 2756250}, {"441001#", 441001},
                 {"1000", 1000},        {"+1s", 44600},     {"-0:00.001", 456}};
    for (const auto& one : cases) {
        GoToDialog dialog({500, 50000000, 44100});
        auto* frame = dialog.findChild<QSpinBox*>();
        frame->selectAll();
        QTest::keyClicks(frame, one.typed);
        EXPECT_EQ(dialog.Choice().frame, one.frame) << one.typed;
    }
}

TEST_F(DailyWorkTest, PausesShowAsFlagsBeforeOk) {
    CSoundView& view = OpenSpeech();
    {
        PausesDialog dialog(view);
        EXPECT_EQ(view.Sound().Markers().Count(), 1u);
        dialog.findChild<QComboBox*>()->setCurrentIndex(1);
        EXPECT_EQ(view.Sound().Markers().Count(), 2u);
        dialog.reject();
    }
    EXPECT_TRUE(view.Sound().Markers().Empty());
    PausesDialog dialog(view);
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(view.Sound().Markers().Count(), 1u);
}

TEST_F(DailyWorkTest, LongPausesAreShownAndThenRemoved) {
    CSoundView& view = OpenSpeech();
    PausesDialog dialog(view);
    QDoubleSpinBox* kept = dialog.findChildren<QDoubleSpinBox*>().back();
    EXPECT_FALSE(kept->isEnabled());
    dialog.findChild<QComboBox*>()->setCurrentIndex(2);
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok->isEnabled()) << "no pause is longer than a second";
    kept->selectAll();
    QTest::keyClicks(kept, "250ms");
    EXPECT_TRUE(QTest::qWaitFor([&] { return ok->isEnabled(); }, kPatienceMs));
    EXPECT_EQ(view.Sound().Markers().All().front().length, 33075u);
    ok->click();
    ASSERT_TRUE(dialog.Apply());
    EXPECT_TRUE(view.Sound().Markers().Empty());
    EXPECT_EQ(view.FrameCount(), 3u * 44100 - 33075);
}

TEST_F(DailyWorkTest, RegionsAreNamedBeforeTheyAreWritten) {
    CSoundView& view = OpenSpeech();
    AddMarker(view, 100, "b", 7);
    AddMarker(view, 50, "a", 7);
    RegionsDialog dialog(view.Document(), SoundFileKind::kFlac);
    auto* names = dialog.findChild<QListWidget*>();
    ASSERT_EQ(names->count(), 2);
    EXPECT_EQ(names->item(0)->text(), "01_a.flac");
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_TRUE(ok->isEnabled());
    for (QLineEdit* edit : dialog.findChildren<QLineEdit*>())
        if (edit->text().contains("{number}")) edit->setText("{nothing}");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_EQ(names->count(), 0);
}

TEST_F(DailyWorkTest, RegionsGoIntoAFolderThatIsMade) {
    CSoundView& view = OpenSpeech();
    AddMarker(view, 50, "a", 7);
    QTemporaryDir place;
    RegionsDialog dialog(view.Document(), SoundFileKind::kWav);
    auto* folder = dialog.findChild<QLineEdit*>();
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    ASSERT_EQ(folder->accessibleName(), "Folder");
    folder->setText(place.filePath("new/one"));
    EXPECT_TRUE(ok->isEnabled());
    const auto regions = dialog.Regions();
    ASSERT_TRUE(regions);
    ASSERT_TRUE(ExportRegions(*regions, view.Sound(), {}, nullptr, view.Sound().FileHost(),
                              [](const std::filesystem::path&, FrameRange) {}));
    EXPECT_TRUE(QFile::exists(place.filePath("new/one/01_a.wav")));
    folder->setText(place.filePath("new/one/01_a.wav"));
    EXPECT_FALSE(ok->isEnabled()) << "a file of that name";
    folder->clear();
    EXPECT_FALSE(ok->isEnabled());
}

TEST_F(DailyWorkTest, ThePaletteFindsRunsAndRefuses) {
    OpenSpeech();
    QMenu menu("&Edit");
    const MenuEntry entries[] = {MenuEntry::Command(view_command::kSelectAll),
                                 MenuEntry::Begin("Mar&ker"),
                                 MenuEntry::Command(view_command::kDropMarker), MenuEntry::End(),
                                 MenuEntry::Command(view_command::kCut)};
    actions_->FillMenu(menu, entries);
    const std::vector<PaletteRow> rows = PaletteRows({&menu}, *actions_);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[1].name, "Edit > Marker > Drop Marker");
    EXPECT_EQ(rows[2].refusal, "Nothing is selected.");
    CommandPalette palette(rows);
    auto* typed = palette.findChild<QLineEdit*>();
    QTest::keyClicks(typed, "cut");
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(palette.Chosen(), 0);
    typed->clear();
    QTest::keyClicks(typed, "sal");
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(palette.Chosen(), view_command::kSelectAll);
}

TEST_F(DailyWorkTest, KeysCanBeOthersThanThoseOfTheTables) {
    OpenSpeech();
    actions_->SetKeys(
        {{view_command::kCrossfadeMix, "Ctrl+Shift+M"}, {view_command::kSelectAll, "Ctrl+S; J"}});
    const auto keys = actions_->Action(view_command::kSelectAll)->shortcuts();
    EXPECT_EQ(keys, QList<QKeySequence>{QKeySequence("Ctrl+S")});
    EXPECT_EQ(actions_->CommandOfPlainKey(QKeySequence("J")), view_command::kSelectAll);
    EXPECT_EQ(actions_->OwnKeys(view_command::kSelectAll), "Ctrl+A");
    actions_->SetKeys({});
    EXPECT_EQ(actions_->CommandOfPlainKey(QKeySequence("J")), 0);
    EXPECT_EQ(actions_->Action(view_command::kSelectAll)->shortcut(), QKeySequence("Ctrl+A"));
}

TEST(KeySetsTest, SetsAreTextsAndBadOnesAreRefused) {
    EXPECT_EQ(KeysFromText(KeysAsText(UsualKeys())), UsualKeys());
    EXPECT_EQ(KeysFromText(""), SonavelKeys());
    for (const char* wrong : {"hello", "x=Ctrl+S", "12", "12=Ctrl+Nothing"})
        EXPECT_FALSE(KeysFromText(wrong)) << wrong;
}

TEST_F(DailyWorkTest, KeysAreChangedInTheListWhichShowsConflicts) {
    KeysDialog dialog({{1, "Edit > One", "Ctrl+A"}, {2, "Edit > Two", "Ctrl+B"}}, {});
    auto* table = dialog.findChild<QTableWidget*>();
    table->item(1, 1)->setText("ctrl+a; F5");
    EXPECT_EQ(dialog.Keys(), (ChangedKeys{{2, "Ctrl+A; F5"}}));
    const auto notice = [&] {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            if (label->text().contains("stands for")) return true;
        return false;
    };
    EXPECT_TRUE(notice());
    table->item(1, 1)->setText("Ctrl+B");
    EXPECT_TRUE(dialog.Keys().empty());
    EXPECT_FALSE(notice());
    dialog.findChild<QLineEdit*>()->setText("tw");
    EXPECT_TRUE(table->isRowHidden(0));
    EXPECT_FALSE(table->isRowHidden(1));
}

}  // namespace
}  // namespace sonavel
