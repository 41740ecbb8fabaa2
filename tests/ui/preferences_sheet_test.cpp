// The sheet "Preference Setting" and its pages as a person uses them.
#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include "app/preferences/option_3d.h"
#include "app/preferences/option_display.h"
#include "app/preferences/option_sheet.h"
#include "app/preferences/option_wave.h"
#include "document/document_options.h"
#include "platform/qt/qt_progress.h"
#include "platform/qt/utf8_text.h"
#include "support/fake_wave_devices.h"
#include "support/patience.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"
#include "view/state/display_settings.h"
#include "view/state/spectrogram_settings.h"

namespace sonavel {
namespace {

class PreferencesSheetTest : public ::testing::Test {
  protected:
    PreferencesSheetTest() {
        TestApplication();
        // The keys are the person's, and those who test are one, too.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(files_.Path().string()));
    }

    COptionSheet& Sheet() {
        if (!sheet_) {
            sheet_ = std::make_unique<COptionSheet>(folder_, devices_, nullptr, facts_, Commands());
            QObject::connect(sheet_.get(), &COptionSheet::Changed, [this] { ++changes_; });
            sheet_->show();
        }
        return *sheet_;
    }
    QWidget& Page(int index) {
        auto* tabs = Sheet().findChild<QTabWidget*>();
        tabs->setCurrentIndex(index);
        return *tabs->widget(index);
    }
    QPushButton& Button(QDialogButtonBox::StandardButton which) {
        return *Sheet().findChild<QDialogButtonBox*>()->button(which);
    }
    template <class Widget>
    Widget& Nth(QWidget& page, int index) {
        return *page.findChildren<Widget*>().at(index);
    }
    // A number box of the page, typed into.
    QSpinBox& Type(QWidget& page, int index, const char* text) {
        auto& box = Nth<QSpinBox>(page, index);
        box.selectAll();
        QTest::keyClicks(&box, text);
        return box;
    }
    QStringList ShownHints(QWidget& page) {
        QStringList shown;
        for (const FieldHint* hint : page.findChildren<FieldHint*>())
            if (hint->isVisible()) shown << hint->text();
        return shown;
    }

    static std::vector<KeyRow> Commands() {
        return {{1, "Edit > One", "Ctrl+A"}, {2, "Edit > Two", "Ctrl+B"}};
    }

    enum { kDisplay, kGeneral, kGrid, kWave, k3D, kKeysPage, kSpectrogram };

    TemporaryFolder files_;
    ProgramFolder folder_{files_.Path()};
    FakeWaveDevices devices_;
    StorageFacts facts_;
    std::unique_ptr<COptionSheet> sheet_;
    int changes_ = 0;
};

TEST_F(PreferencesSheetTest, ApplyWritesOnceAndCancelWritesNothing) {
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
    Nth<QCheckBox>(Page(kGeneral), 0).click();
    Button(QDialogButtonBox::Apply).click();
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(DocumentOptions::Read(folder_.Options().Read()).openAndPlay, 1);
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());

    Nth<QCheckBox>(Page(kGeneral), 1).click();
    EXPECT_TRUE(Button(QDialogButtonBox::Apply).isEnabled());
    Button(QDialogButtonBox::Cancel).click();
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(DocumentOptions::Read(folder_.Options().Read()).openAndMaximize, 0);
}

// Presses Escape in the progress window as soon as it can be had.
class EscapeFromProgress : public QObject {
  public:
    EscapeFromProgress() {
        connect(&timer_, &QTimer::timeout, this, [this] {
            for (QWidget* window : QApplication::topLevelWidgets())
                if (auto* progress = qobject_cast<CProgressDlg*>(window)) {
                    QTest::keyClick(progress, Qt::Key_Escape);
                    ++pressed;
                }
        });
        timer_.start(0);
    }

    int pressed = 0;

  private:
    QTimer timer_;
};

// Reads until it is cancelled.
Result<std::string> ReadForEver(const std::string& path, ProgressWindow& window) {
    if (path.empty()) return std::string("The table.");
    while (!window.Poll()) continue;
    return Cancelled();
}

TEST_F(PreferencesSheetTest, ReadingResponsesCanBeCancelledAndTheFormerStay) {
    const QString cancelled = "Reading was cancelled; the responses stay as they were.";
    COption3D page(nullptr, ReadForEver);
    auto &table = Nth<QRadioButton>(page, 0), &file = Nth<QRadioButton>(page, 1);
    const auto& path = Nth<QLineEdit>(page, 0);
    const QLabel& state = *page.findChildren<QLabel*>().last();
    Preferences preferences;
    const auto chosen = [&] {
        page.TakeInto(preferences);
        return preferences.ears;
    };
    preferences.ears = "/ears.sofa";
    page.ShowPreferences(preferences);
    EXPECT_EQ(state.text(), "") << "nothing is read before the page is seen";
    EscapeFromProgress escape;
    page.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return state.text() == cancelled; }, kPatienceMs));
    EXPECT_GT(escape.pressed, 0);
    EXPECT_EQ(chosen(), "/ears.sofa");

    table.click();
    EXPECT_EQ(state.text(), "The table.");
    EXPECT_TRUE(!path.isEnabled() && chosen().empty());
    file.click();
    EXPECT_EQ(state.text(), cancelled);
    EXPECT_TRUE(table.isChecked() && !path.isEnabled() && chosen().empty());
}

TEST_F(PreferencesSheetTest, OkWithoutAnEditChangesNothing) {
    Button(QDialogButtonBox::Ok).click();
    EXPECT_FALSE(Sheet().isVisible());
    EXPECT_EQ(changes_, 0);
    EXPECT_EQ(files_.FileCount(), 0u);
}

TEST_F(PreferencesSheetTest, WhatIsLeftToTheProgramIsShownAsAWordWithItsNumber) {
    facts_ = {.undoMemory = std::uint64_t{700} << 20,
              .recovery = StorageFacts::Recovery{std::uint64_t{900} << 20, 3u << 20}};
    QWidget& page = Page(kGeneral);
    auto& undo = Nth<QSpinBox>(page, 0);
    auto& recovery = Nth<QSpinBox>(page, 1);
    EXPECT_EQ(undo.text(), "automatic (700 MB)");
    EXPECT_EQ(recovery.text(), "automatic (900 MB)");
    EXPECT_GE(undo.width(), undo.fontMetrics().horizontalAdvance(undo.text()) + 10);
    EXPECT_EQ(page.findChild<QLabel*>("recoveryHeld")->text(), "3 MB are in use");
    EXPECT_EQ(ShownHints(page), QStringList());

    EXPECT_EQ(Type(page, 1, "512").value(), 512);
    EXPECT_TRUE(undo.text().startsWith("automatic"));
    Button(QDialogButtonBox::Apply).click();
    const auto stored = [&] {
        return StoredNumber(folder_.Options().Read(), SettingId::kRecoveryRoom);
    };
    EXPECT_EQ(stored(), 512);
    Type(page, 1, "0");
    QFocusEvent leaving(QEvent::FocusOut);
    QApplication::sendEvent(&recovery, &leaving);
    EXPECT_EQ(recovery.text(), "automatic (900 MB)");
    Button(QDialogButtonBox::Apply).click();
    EXPECT_EQ(stored(), 0);
}

TEST_F(PreferencesSheetTest, NumbersOutOfRangeAreRefusedBesideTheirField) {
    const struct {
        int page, field;
        const char* typed;
        const char* hint;
    } cases[] = {
        {kGrid, 0, "3600001", "Only 0 to 3600000"}, {kGrid, 0, "-1", "Only 0 to 3600000"},
        {kGrid, 1, "201", "Only 0 to 200"},         {kWave, 0, "127", "Only 128 to 32767"},
        {kWave, 1, "32768", "Only 128 to 32767"},
    };
    for (const auto& c : cases) {
        QWidget& page = Page(c.page);
        const int before = Nth<QSpinBox>(page, c.field).value();
        QSpinBox& box = Type(page, c.field, c.typed);
        EXPECT_EQ(box.text(), c.typed);
        EXPECT_EQ(ShownHints(page), QStringList{c.hint});
        EXPECT_FALSE(Button(QDialogButtonBox::Ok).isEnabled());
        EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        box.setValue(before);
        EXPECT_EQ(ShownHints(page), QStringList());
        EXPECT_TRUE(Button(QDialogButtonBox::Ok).isEnabled());
    }
}

TEST_F(PreferencesSheetTest, EverySettingOnThePagesIsExplained) {
    QStringList explained;
    for (const QWidget* widget : Sheet().findChildren<QWidget*>())
        if (!widget->toolTip().isEmpty()) explained << widget->toolTip();
    EXPECT_EQ(explained.removeDuplicates(), 0);
    for (const Setting& row : AllSettings())
        EXPECT_EQ(explained.contains(Utf8Text(row.explanation)), row.kind != SettingKind::kText)
            << row.key;
}

TEST_F(PreferencesSheetTest, SpectrogramsAreChosenAsInTheirDialog) {
    const SpectrogramSettings before{
        .look = {.windowFrames = 8192, .scale = FrequencyScale::kMel, .rangeDecibels = 75},
        .palette = SpectrumPalette::kIce};
    ProfileFile display = folder_.Display();
    ASSERT_TRUE(before.Write(display));
    ASSERT_TRUE(WriteOverview(display, OverviewOf::kNoSound));
    QWidget& page = Page(kSpectrogram);
    Nth<QComboBox>(page, 1).setCurrentIndex(1);
    Nth<QComboBox>(page, 3).setCurrentIndex(1);
    Button(QDialogButtonBox::Apply).click();
    SpectrogramSettings after = before;
    after.look.shape = WindowShape::kBlackmanHarris;
    EXPECT_EQ(SpectrogramSettings::Read(folder_.Display().Read()), after);
    EXPECT_EQ(DisplaySettings::Read(folder_.Display().Read()).overview, OverviewOf::kAllSounds);
}

TEST_F(PreferencesSheetTest, FilesThatCannotBeWrittenKeepTheSheetOpen) {
    folder_ = ProgramFolder("/nowhere/at all");
    Nth<QCheckBox>(Page(kGeneral), 0).click();
    Button(QDialogButtonBox::Ok).click();
    EXPECT_TRUE(Sheet().isVisible());
    EXPECT_EQ(ShownHints(Sheet()),
              QStringList{"The settings cannot be written to /nowhere/at all"});
}

TEST_F(PreferencesSheetTest, ThePreviewFollowsColoursRulersAndGrid) {
    auto& display = static_cast<COptionDisplay&>(Page(kDisplay));
    auto& preview = *display.findChild<SoundPreview*>();
    const auto corner = [&] { return preview.grab().toImage().pixelColor(1, 1); };
    EXPECT_EQ(corner(), QColor(0, 0, 0));
    display.SetColour(1, {12, 34, 56});
    EXPECT_EQ(corner(), QColor(12, 34, 56));

    display.SetColour(13, {98, 76, 54});
    const auto ruler = [&] { return preview.grab().toImage().pixelColor(5, preview.height() - 2); };
    EXPECT_NE(ruler(), QColor(98, 76, 54));
    Nth<QCheckBox>(display, 0).click();
    EXPECT_EQ(ruler(), QColor(98, 76, 54));

    QWidget& grid = Page(kGrid);
    auto& gridPreview = *grid.findChild<SoundPreview*>();
    Nth<QSpinBox>(grid, 1).setValue(50);
    const QImage noLines = gridPreview.grab().toImage();
    Nth<QCheckBox>(grid, 1).click();
    EXPECT_NE(gridPreview.grab().toImage(), noLines);
    EXPECT_EQ(noLines.pixelColor(1, 1), QColor(12, 34, 56));
}

TEST_F(PreferencesSheetTest, SetsOfColoursByName) {
    auto& display = static_cast<COptionDisplay&>(Page(kDisplay));
    auto& name = *display.findChild<QComboBox*>();
    const auto button = [&](const char* text) -> QPushButton& {
        for (QPushButton* found : display.findChildren<QPushButton*>())
            if (found->text() == QLatin1String(text)) return *found;
        throw std::runtime_error(text);
    };
    display.SetColour(4, {1, 2, 3});
    name.setEditText(QStringLiteral("밤하늘"));
    EXPECT_FALSE(button("&Load").isEnabled());
    button("&Save").click();
    EXPECT_EQ(ColourPresets(folder_.Display()).Names(), std::vector<std::string>{"밤하늘"});
    Preferences taken;
    button("De&faults").click();
    display.TakeInto(taken);
    EXPECT_EQ(taken.colours, ColourTable());
    button("&Load").click();
    display.TakeInto(taken);
    EXPECT_EQ(taken.colours.At(4), (Rgb{1, 2, 3}));
    button("&Delete").click();
    EXPECT_TRUE(ColourPresets(folder_.Display()).Names().empty());
    // The beginning of a name is a name of its own.
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Sheet()));
    name.setFocus();
    for (const char* typed : {"Night sea", "Night"}) {
        name.lineEdit()->clear();
        QTest::keyClicks(name.lineEdit(), typed);
        button("&Save").click();
    }
    EXPECT_EQ(ColourPresets(folder_.Display()).Names(),
              (std::vector<std::string>{"Night sea", "Night"}));
    name.setEditText(QStringLiteral("a]"));
    EXPECT_FALSE(button("&Save").isEnabled());
}

TEST_F(PreferencesSheetTest, DevicesByNameAndOneThatIsNotThere) {
    folder_.Options().SetInteger("__SOUND_WAVE_OPTIONS", "PLAYBACK DEVICE ID", 7);
    QWidget& page = Page(kWave);
    auto& outputs = Nth<QComboBox>(page, 0);
    QStringList names;
    for (int i = 0; i < outputs.count(); ++i) names << outputs.itemText(i);
    EXPECT_EQ(names,
              (QStringList{"(Default)", "(None)", "Test output", "Device 7 (not there now)"}));
    EXPECT_EQ(outputs.currentIndex(), 3);
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
    auto& inputs = Nth<QComboBox>(page, 1);
    EXPECT_EQ(inputs.currentText(), "Test input");  // a missing key is device 0
    inputs.setCurrentIndex(1);
    Button(QDialogButtonBox::Apply).click();
    EXPECT_EQ(DocumentOptions::Read(folder_.Options().Read()).recordDeviceId, kNoWaveDevice);
    EXPECT_EQ(DocumentOptions::Read(folder_.Options().Read()).playbackDeviceId, 7);
}

TEST_F(PreferencesSheetTest, DevicesAreLookedForWheneverThePageIsSeen) {
    folder_.Options().SetInteger("__SOUND_WAVE_OPTIONS", "PLAYBACK DEVICE ID", 7);
    devices_.outputs = {};
    const auto names = [this] {
        auto& outputs = Nth<QComboBox>(Page(kWave), 0);
        QStringList all;
        for (int i = 0; i < outputs.count(); ++i) all << outputs.itemText(i);
        EXPECT_EQ(outputs.currentText(), all.last());
        return all;
    };
    Sheet();
    EXPECT_EQ(devices_.listings, 0) << "no device is needed for the other pages";
    EXPECT_EQ(names(), (QStringList{"(Default: there is no device now)", "(None)",
                                    "Device 7 (not there now)"}));
    Page(kGrid);
    // A sound server comes up.
    devices_.onListAnew = [this] { devices_.outputs = {{{0, "New"}, {7, "Known"}}, true}; };
    EXPECT_EQ(names(), (QStringList{"(Default)", "(None)", "New", "Known"}));
    EXPECT_EQ(devices_.listings, 2);
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
}

TEST_F(PreferencesSheetTest, TheTestPlaysAToneOnTheChosenDevice) {
    QWidget& page = Page(kWave);
    auto& test = *page.findChild<QPushButton*>("test");
    auto& note = *page.findChild<QLabel*>("testNote");
    Type(page, 0, "2048");
    test.click();
    EXPECT_EQ(devices_.Out().deviceId, 0);
    EXPECT_EQ(test.text(), "S&top");
    ASSERT_FALSE(devices_.Out().queue.empty());
    EXPECT_EQ(devices_.Out().queue.front()->data.size(), 2048u * 4);
    for (int i = 0; i < 40; ++i) devices_.Out().Hear();
    EXPECT_EQ(test.text(), "&Test");
    const auto heard = devices_.Out().AllPlayed();
    EXPECT_GT(std::count_if(heard.begin(), heard.end(), [](auto byte) { return byte != 0; }),
              80000);
    test.click();
    devices_.Out().Lose(kWaveNoDriver);
    EXPECT_EQ(test.text(), "&Test");
    EXPECT_EQ(note.text(), "no device driver present");

    Nth<QComboBox>(page, 0).setCurrentIndex(1);
    EXPECT_FALSE(test.isEnabled());
    Nth<QComboBox>(page, 0).setCurrentIndex(0);
    devices_.Out().failures["open"] = kWaveAllocated;
    test.click();
    EXPECT_FALSE(note.text().isEmpty());
    EXPECT_EQ(test.text(), "&Test");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(PreferencesSheetTest, KeysAreKeptWithOkAndNotBefore) {
    QWidget& page = Page(kKeysPage);
    auto& table = Nth<QTableWidget>(page, 0);
    EXPECT_EQ(table.item(1, 1)->text(), "Ctrl+B");
    EXPECT_FALSE(Button(QDialogButtonBox::Apply).isEnabled());
    table.item(1, 1)->setText("F7");
    EXPECT_TRUE(Button(QDialogButtonBox::Apply).isEnabled());
    EXPECT_EQ(StoredKeys(), ChangedKeys());
    Button(QDialogButtonBox::Ok).click();
    EXPECT_EQ(StoredKeys(), (ChangedKeys{{2, "F7"}}));
    EXPECT_EQ(changes_, 1);
    StoreKeys({});
}

}  // namespace
}  // namespace sonavel
