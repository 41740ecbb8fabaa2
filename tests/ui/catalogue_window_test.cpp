#include "catalogue/ui/catalogue_window.h"

#include <gmock/gmock.h>

#include <QDesktopServices>
#include <QDropEvent>
#include <QHeaderView>
#include <QListWidget>
#include <QMimeData>
#include <QSettings>
#include <QTest>
#include <QToolButton>
#include <QUrl>

#include "catalogue/catalogue_columns.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/memory_clipboard.h"
#include "support/fake_wave_devices.h"
#include "support/patience.h"
#include "support/qt_test_application.h"
#include "support/recording_prompts.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

class CatalogueWindowTest : public ::testing::Test {
  protected:
    CatalogueWindowTest() {
        TestApplication();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, Text(folder / "person"));
        fs::create_directory(folder / "program");
        programFolder.Profile("SampleDB.ini").SetString("FIELD SECTION", "FIELDS", "종류,Note");
        for (const char* name : {"kick 10.wav", "kick 2.wav", "북.wav"}) WriteWav(name);
    }

    static QString Text(const fs::path& path) { return QString::fromStdString(path.string()); }
    void WriteWav(const char* name) {
        WavParts parts;
        parts.data = FileBytes(4000);
        fs::create_directory(folder / "sounds");
        WriteFileBytes(folder / "sounds" / name, WavBytes(parts));
    }
    CatalogueWindow& Window() {
        if (!window) {
            const auto open = [this](const QString& path) {
                opened << QFileInfo(path).fileName();
                return opens;
            };
            const HostServices services{prompts, progress, clipboard, devices, programFolder};
            window = std::make_unique<CatalogueWindow>(services, open);
            window->Present();
            QApplication::processEvents();
        }
        return *window;
    }
    void AddSounds() { Window().AddPaths({Text(folder / "sounds")}); }
    template <class Part>
    Part& Get(const char* name) {
        return *Window().findChild<Part*>(QLatin1String(name));
    }
    QTableView& Table() { return Get<QTableView>("sounds"); }
    QListWidget& List() { return Get<QListWidget>("catalogues"); }
    std::string Note() { return Get<QLabel>("note").text().toStdString(); }
    std::string Counts() { return Get<QLabel>("counts").text().toStdString(); }
    std::string Cell(int row, int column) {
        return Table().model()->index(row, column).data().toString().toStdString();
    }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int row = 0; row < Table().model()->rowCount(); ++row) names.push_back(Cell(row, 0));
        return names;
    }
    std::vector<std::string> Catalogues() {
        std::vector<std::string> names;
        for (int row = 0; row < List().count(); ++row)
            names.push_back(List().item(row)->text().toStdString());
        return names;
    }
    void Select(int row, int column = 0) {
        Table().setCurrentIndex(Table().model()->index(row, column));
        Table().setFocus();
    }
    QToolButton* Button(const char* text) {
        for (auto* button : Window().findChildren<QToolButton*>())
            if (button->text() == QLatin1String(text)) return button;
        return nullptr;
    }
    // The files are looked at between other work.
    void ExpectCountsSoon(const std::string& counts) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Counts() == counts; }, kPatienceMs)) << Counts();
    }

    TemporaryFolder folder;
    ProgramFolder programFolder{folder / "program"};
    RecordingPrompts prompts;
    HeadlessProgress progress;
    MemoryClipboard clipboard;
    FakeWaveDevices devices;
    QStringList opened;
    bool opens = true;
    std::unique_ptr<CatalogueWindow> window;
};

TEST_F(CatalogueWindowTest, DroppedFoldersMakeACatalogueThatTheNextWindowShows) {
    EXPECT_THAT(Counts(), ::testing::HasSubstr("drop sound files here"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(Text(folder / "sounds")), QUrl("http://example.org/a.wav")});
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QApplication::sendEvent(&Window(), &drop);
    EXPECT_THAT(Names(), ElementsAre("kick 2.wav", "kick 10.wav", "북.wav"));
    EXPECT_EQ(Cell(0, 1), "00:00:00.250");
    EXPECT_EQ(Cell(0, 2), "8,000 Hz");
    EXPECT_EQ(Counts(), "3 sounds");
    EXPECT_EQ(Note(), "3 added");
    AddSounds();
    EXPECT_EQ(Note(), "0 added, 3 there already");
    window.reset();
    EXPECT_THAT(Catalogues(), ElementsAre("Catalogue"));
    EXPECT_EQ(Names().size(), 3u);
}

TEST_F(CatalogueWindowTest, FieldsAreEditedInPlaceAndSavedSoon) {
    AddSounds();
    Select(2, kFixedColumns);
    QTest::keyClick(&Table(), Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    editor->insert("큰 북, \"저음\"");
    QTest::keyClick(editor, Qt::Key_Space);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(Cell(2, kFixedColumns), "큰 북, \"저음\" ");
    EXPECT_EQ(opened.size(), 0);
    CatalogueStore store(programFolder);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const auto loaded = store.Load("Catalogue");
            return loaded->catalogue.Count() == 3 &&
                   loaded->catalogue.Value(2, 0) == "큰 북, \"저음\" ";
        },
        kPatienceMs));
    // What comes from the files is not for editing.
    Select(0, 0);
    QTest::keyClick(&Table(), Qt::Key_F2);
    EXPECT_EQ(QApplication::focusWidget(), &Table());
}

TEST_F(CatalogueWindowTest, AnEditorLeftAsItWasKeepsLineBreaks) {
    AddSounds();
    const QString text = "two\nlines\tand a tab";
    QAbstractItemModel& model = *Table().model();
    ASSERT_TRUE(model.setData(model.index(0, kFixedColumns), text, Qt::EditRole));
    EXPECT_EQ(Cell(0, kFixedColumns), "two lines and a tab");
    Select(0, kFixedColumns);
    QTest::keyClick(&Table(), Qt::Key_F2);
    ASSERT_TRUE(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(model.index(0, kFixedColumns).data(Qt::EditRole).toString(), text);
    window.reset();
    EXPECT_EQ(Table().model()->index(0, kFixedColumns).data(Qt::EditRole).toString(), text);
}

TEST_F(CatalogueWindowTest, TypingFiltersAndTheSelectionStaysOnItsSounds) {
    AddSounds();
    Select(1);
    QTest::keyClick(&Window(), Qt::Key_F, Qt::ControlModifier);
    auto& filter = Get<QLineEdit>("filter");
    EXPECT_TRUE(filter.hasFocus());
    QTest::keyClicks(&filter, "KICK 10.WAV");
    EXPECT_THAT(Names(), ElementsAre("kick 10.wav"));
    EXPECT_EQ(Counts(), "3 sounds, 1 shown");
    QTest::keyClick(&filter, Qt::Key_Escape);
    EXPECT_EQ(Names().size(), 3u);
    ASSERT_EQ(Table().selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(Table().selectionModel()->selectedRows()[0].row(), 1);

    Table().selectAll();
    EXPECT_EQ(Counts(), "3 sounds, 3 selected");
    Table().horizontalHeader()->setSortIndicator(0, Qt::DescendingOrder);
    EXPECT_THAT(Names(), ElementsAre("북.wav", "kick 10.wav", "kick 2.wav"));
    EXPECT_EQ(Counts(), "3 sounds, 3 selected");
}

TEST_F(CatalogueWindowTest, MissingFilesAreMarkedAndFoundAgain) {
    AddSounds();
    fs::rename(folder / "sounds", folder / "moved");
    fs::remove(folder / "moved" / "북.wav");
    QTest::keyClick(&Window(), Qt::Key_F5);
    ExpectCountsSoon("3 sounds, 3 missing");
    EXPECT_TRUE(Table().model()->index(0, 0).data(Qt::DecorationRole).isValid());
    Select(0);
    EXPECT_TRUE(Button("Locate")->isEnabled());
    Window().LocateAt(Text(folder / "moved" / "none.wav"));
    EXPECT_EQ(Note(), "File Open Failure.");
    Window().LocateAt(Text(folder / "moved" / "kick 2.wav"));
    EXPECT_EQ(Note(), "2 found again");
    EXPECT_FALSE(Button("Locate")->isEnabled());
    Get<QCheckBox>("missingOnly").click();
    EXPECT_THAT(Names(), ElementsAre("북.wav"));
    window.reset();
    ExpectCountsSoon("3 sounds, 1 missing");
    EXPECT_EQ(Cell(0, kFixedColumns - 1), (folder / "moved").string());
}

TEST_F(CatalogueWindowTest, SoundsPlayWithoutBeingOpened) {
    AddSounds();
    Select(0);
    QTest::keyClick(&Table(), Qt::Key_Space);
    ASSERT_TRUE(Button("Stop"));
    EXPECT_TRUE(devices.Out().open);
    EXPECT_EQ(devices.Out().format.samplesPerSecond, 8000u);
    for (int i = 0; i < 30 && devices.Out().open; ++i) devices.Out().Hear();
    EXPECT_TRUE(Button("Play"));
    QTest::keyClick(&Table(), Qt::Key_Space);
    QTest::keyClick(&Table(), Qt::Key_Space);
    EXPECT_TRUE(Button("Play"));
    EXPECT_FALSE(devices.Out().open);

    WriteFileBytes(folder / "sounds" / "kick 2.wav", BytesOf("RIFF"));
    QTest::keyClick(&Table(), Qt::Key_Space);
    EXPECT_TRUE(Button("Play"));
    EXPECT_THAT(Note(), ::testing::StartsWith("kick 2.wav: The file has no RIFF chunk"));
    EXPECT_TRUE(prompts.messages.empty());

    devices.Out().failures["open"] = kWaveAllocated;
    Select(1);
    QTest::keyClick(&Table(), Qt::Key_Space);
    EXPECT_THAT(Note(), ::testing::StartsWith("kick 10.wav: "));
}

TEST_F(CatalogueWindowTest, WithAutoPlayTheChosenRowIsHeardAndNoOther) {
    AddSounds();
    Select(0);
    QTest::keyClick(&Table(), Qt::Key_Down);
    EXPECT_TRUE(Button("Play"));

    programFolder.Options().SetInteger("__SOUND_OPTIONS", "Auto Play", 1);
    QTest::keyClick(&Table(), Qt::Key_Down);
    EXPECT_TRUE(Button("Stop"));
    QTest::keyClick(&Table(), Qt::Key_Space);
    EXPECT_TRUE(Button("Play"));

    // The rows come in another order, the same sound stays the current one.
    Table().sortByColumn(0, Qt::DescendingOrder);
    EXPECT_TRUE(Button("Play"));
    QTest::keyClick(&Table(), Qt::Key_Right);
    EXPECT_TRUE(Button("Play"));
}

TEST_F(CatalogueWindowTest, SoundsAreOpenedAndTheirFolderShown) {
    AddSounds();
    Select(0);
    QTest::keyClick(&Table(), Qt::Key_Return);
    const QPoint second = Table().visualRect(Table().model()->index(1, 0)).center();
    QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, second);
    QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, second);
    EXPECT_EQ(opened, (QStringList{"kick 2.wav", "kick 10.wav"}));
    opens = false;
    Button("Open")->click();
    EXPECT_THAT(Note(), ::testing::EndsWith("kick 10.wav cannot be opened."));

    const std::unique_ptr<QMimeData> dragged(
        Table().model()->mimeData(Table().selectionModel()->selectedIndexes()));
    EXPECT_EQ(dragged->urls(), QList{QUrl::fromLocalFile(Text(folder / "sounds/kick 10.wav"))});

    fs::remove_all(folder / "sounds");
    Button("Show Folder")->click();
    EXPECT_THAT(Note(), ::testing::EndsWith("sounds cannot be shown."));
}

TEST_F(CatalogueWindowTest, SoundsAreTakenOffAfterAQuestion) {
    AddSounds();
    Select(1);
    prompts.answers = {false, true};
    QTest::keyClick(&Table(), Qt::Key_Delete);
    EXPECT_EQ(Names().size(), 3u);
    QTest::keyClick(&Table(), Qt::Key_Delete);
    EXPECT_THAT(Names(), ElementsAre("kick 2.wav", "북.wav"));
    EXPECT_EQ(Table().currentIndex().row(), 1);
    EXPECT_TRUE(fs::exists(folder / "sounds" / "kick 10.wav"));
    Table().selectAll();
    QTest::keyClick(&Table(), Qt::Key_Delete);
    EXPECT_EQ(Counts(), "0 sounds");
    EXPECT_FALSE(Button("Remove")->isEnabled());
}

TEST_F(CatalogueWindowTest, CataloguesAreMadeRenamedAndDeleted) {
    AddSounds();
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_N, Qt::ControlModifier);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    EXPECT_EQ(Counts(), "0 sounds");
    editor->setText("드럼/1");
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_THAT(Catalogues(), ElementsAre("Catalogue", "드럼/1"));
    EXPECT_EQ(List().currentRow(), 1);

    List().item(1)->setText("Catalogue");
    QApplication::processEvents();
    EXPECT_EQ(Note(), "There is a catalogue of this name already.");
    EXPECT_THAT(Catalogues(), ElementsAre("Catalogue", "드럼/1"));

    List().setCurrentRow(0);
    EXPECT_EQ(Names().size(), 3u);
    prompts.answers = {false, true};
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(List().count(), 2);
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_THAT(Catalogues(), ElementsAre("드럼/1"));
    EXPECT_EQ(Counts(), "0 sounds");
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(List().count(), 0);
    EXPECT_THAT(Counts(), ::testing::HasSubstr("No catalogue yet"));
}

TEST_F(CatalogueWindowTest, FieldsCanBeDefinedAnew) {
    AddSounds();
    QAbstractItemModel& model = *Table().model();
    model.setData(model.index(0, kFixedColumns), "kept", Qt::EditRole);
    Table().setColumnWidth(0, 333);
    Window().DefineFields(" Mood,종류 ");
    const auto title = [&](int column) {
        return Table().model()->headerData(column, Qt::Horizontal).toString();
    };
    EXPECT_EQ(model.columnCount(), static_cast<int>(kFixedColumns) + 2);
    EXPECT_EQ(title(kFixedColumns), "Mood");
    EXPECT_EQ(title(kFixedColumns + 1), "종류");
    EXPECT_EQ(Cell(0, kFixedColumns + 1), "kept");
    EXPECT_EQ(Table().columnWidth(0), 333);
}

TEST_F(CatalogueWindowTest, WhatGoesWrongWithTheFilesIsSaid) {
    WriteFileBytes(folder / "program/Broken.catalogue", FileBytes(1000, 0x80));
    WriteFileBytes(
        folder / "program/Cut.catalogue",
        BytesOf("Sonavel sample catalogue 1\nfile\t/a.wav\t8000\t1\t1\t16\t9\nfile\t/b"));
    EXPECT_EQ(Note(), "Broken: The file is not a catalogue.");
    AddSounds();
    EXPECT_EQ(Note(), "Choose a catalogue that can be read first.");
    List().setCurrentRow(1);
    EXPECT_THAT(Note(), ::testing::StartsWith("Damaged lines, left out: 1."));
    EXPECT_THAT(Names(), ElementsAre("a.wav"));
    // Nothing can take the place of a folder.
    fs::remove(folder / "program/Cut.catalogue");
    fs::create_directories(folder / "program/Cut.catalogue/x");
    AddSounds();
    EXPECT_EQ(Names().size(), 4u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Note().find("cannot be") != std::string::npos; },
                                kPatienceMs));
    EXPECT_EQ(ReadFileBytes(folder / "program/Broken.catalogue"), FileBytes(1000, 0x80));
}

}  // namespace
}  // namespace sonavel
