// The properties of a sound and its file.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <cmath>
#include <numbers>

#include "platform/headless/memory_clipboard.h"
#include "platform/headless/silent_prompts.h"
#include "properties/ui/file_properties_sheet.h"
#include "properties/ui/property_texts.h"
#include "support/fake_progress.h"
#include "support/fake_wave_devices.h"
#include "support/patience.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

class PropertiesTest : public ::testing::Test {
  protected:
    PropertiesTest() {
        TestApplication();
        CWave& sound = document_.Sound();
        EXPECT_TRUE(sound.Create(2, 16, 8000, 12000));
        for (std::uint32_t frame = 0; frame < 12000; ++frame) {
            sound.SetSample(0, frame, frame == 4000 ? -16384 : 0);
            sound.SetSample(1, frame, frame % 2 == 0 ? 32767 : -32768);
        }
        document_.SetSaveMarkers(true);
    }
    QStringList Values(const QList<PropertyRow>& rows) {
        QStringList values;
        for (const PropertyRow& row : rows) values << row.name + row.value;
        return values;
    }

    TemporaryFolder files_;
    ProgramFolder folder_{files_.Path()};
    SilentPrompts prompts_;
    FakeProgress progress_;
    MemoryClipboard clipboard_;
    FakeWaveDevices devices_;
    CSoundDoc document_{{prompts_, progress_, clipboard_, devices_, folder_}};
};

TEST_F(PropertiesTest, FormatOfASound) {
    EXPECT_EQ(Values(FormatRows(document_.Sound())),
              (QStringList{"Format:PCM", "Sampling rate:8,000 Hz", "Sample size:16-bit",
                           "Channels:Stereo", "Frames:12000 Counts", "Duration:00:00:01.500",
                           "Bytes of sound:48000 Bytes", "Bytes a second:32000 Bytes"}));
}

TEST_F(PropertiesTest, TheHistorySaysWhatItHoldsAndWhere) {
    folder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION", 1);
    document_.ReloadOptions();
    const auto held = [this] { return HistoryRow(document_.History()).value; };
    EXPECT_EQ(held(), "0 Bytes in 0 step(s)");
    for (const std::uint32_t frames : {1000u, 500u}) {
        Result<SoundEdit> edit = document_.BeginEdit("E", ReplacesFrames(0, frames));
        ASSERT_TRUE(edit && document_.Sound().RemoveFrames(0, frames));
        edit->Commit(0);
    }
    EXPECT_EQ(held(), "6000 Bytes in 2 step(s)");
    document_.History().SetLimits({2000, files_.Path() / "undo"});
    EXPECT_EQ(held(), "2000 Bytes in 2 step(s), 4000 Bytes on the disk");
}

TEST_F(PropertiesTest, FileOfASoundSavedAndGone) {
    EXPECT_TRUE(Values(FileRows(document_)).contains("Path:not saved yet"));
    const std::filesystem::path path = files_ / "소리.wav";
    ASSERT_TRUE(document_.SaveDocument(path));
    const QStringList values = Values(FileRows(document_));
    EXPECT_TRUE(values.contains("Path:" + QString::fromStdString(path.string())));
    EXPECT_TRUE(values.contains("File type:Wave File (*.wav)"));
    EXPECT_TRUE(
        values.contains(QStringLiteral("Size:%1 Bytes").arg(std::filesystem::file_size(path))));
    EXPECT_TRUE(values.contains("Unsaved changes:no"));
    std::filesystem::remove(path);
    EXPECT_TRUE(Values(FileRows(document_)).contains("Size:The file is not there any more"));
}

TEST_F(PropertiesTest, AnImportedFileIsNamedByWhatItHolds) {
    WavParts deep;
    deep.bits = 24;
    deep.blockAlign = 3;
    deep.rate = 96000;
    deep.data = FileBytes(300);
    FileBytes bytes = WavBytes(deep);
    WriteFileBytes(files_ / "take.v2.sound", bytes);
    ASSERT_TRUE(document_.ImportDocument(files_ / "take.v2.sound", {}));
    const auto fileRow = [&] { return Values(FileRows(document_)).filter("File"); };
    EXPECT_EQ(fileRow(), (QStringList{"File:WAV, 24 bit, 96,000 Hz"}));
    bytes.resize(bytes.size() - 30);
    WriteFileBytes(files_ / "cut.wav", bytes);
    ASSERT_TRUE(document_.ImportDocument(files_ / "cut.wav", {}));
    EXPECT_TRUE(fileRow().first().startsWith("File:WAV, 24 bit, 96,000 Hz. "));
    EXPECT_TRUE(fileRow().first().contains("Of 100 frames 90 are there."))
        << fileRow().first().toStdString();
}

TEST_F(PropertiesTest, StatisticsAreComputedWhenTheirPageComesUp) {
    CFilePropertiesSheet sheet(document_, progress_);
    EXPECT_TRUE(progress_.titles.empty());
    sheet.findChild<QTabWidget*>()->setCurrentIndex(2);
    QStringList texts;
    for (const QLabel* label : sheet.findChildren<QLabel*>()) texts << label->text();
    for (const char* text : {"-6.02 dB", "-16384", "00:00:00.500", "4000", "0.00 dB", "12000"})
        EXPECT_TRUE(texts.contains(QLatin1String(text))) << text;
    sheet.findChild<QTabWidget*>()->setCurrentIndex(0);
    sheet.findChild<QTabWidget*>()->setCurrentIndex(2);
    EXPECT_EQ(progress_.titles.size(), 1u);
}

// A sine of about 1 kHz on both channels is as many LUFS as its peak is dB of full scale.
TEST_F(PropertiesTest, LoudnessComesByItself) {
    CWave& sound = document_.Sound();
    ASSERT_TRUE(sound.Create(2, 16, 48000, 96000));
    for (std::uint32_t i = 0; i < 96000; ++i)
        for (unsigned channel = 0; channel < 2; ++channel)
            sound.SetSample(channel, i,
                            static_cast<int>(std::lround(
                                32767 * std::sin(2 * std::numbers::pi * 997 * i / 48000))));
    CFilePropertiesSheet sheet(document_, progress_);
    const auto text = [&](const char* name) { return sheet.findChild<QLabel*>(name)->text(); };
    EXPECT_EQ(text("integrated"), NotYetText());
    sheet.ShowStatistics();
    EXPECT_TRUE(QTest::qWaitFor([&] { return text("integrated") != NotYetText(); }, kPatienceMs));
    EXPECT_EQ(text("integrated"), "0.0 LUFS");
    EXPECT_EQ(text("range"), "0.0 LU");
    EXPECT_EQ(text("true peak"), "0.0 dB");
}

TEST_F(PropertiesTest, ASheetThatClosesWaitsForNothing) {
    ASSERT_TRUE(document_.Sound().Create(2, 16, 48000, 4800000));
    CFilePropertiesSheet sheet(document_, progress_);
    sheet.ShowStatistics();
}

TEST_F(PropertiesTest, StatisticsThatWereCancelledCanBeComputedAgain) {
    progress_.cancelAtPoll = 0;
    CFilePropertiesSheet sheet(document_, progress_);
    auto* tabs = sheet.findChild<QTabWidget*>();
    sheet.show();
    tabs->setCurrentIndex(2);
    auto* again = tabs->currentWidget()->findChild<QPushButton*>();
    ASSERT_TRUE(again->isVisible());
    progress_.cancelAtPoll.reset();
    again->click();
    EXPECT_FALSE(again->isVisible());
    EXPECT_GT(tabs->currentWidget()->findChildren<QLabel*>().size(), 10);
}

TEST_F(PropertiesTest, MarkersOfAnyCodePage) {
    document_.Sound().Markers().Add(4000, "\xC3\xB9", 0);  // bytes of code page 949
    document_.Sound().Markers().Add(8000, "후렴", 400);
    document_.Sound().Markers().Add(9000, "bad \x80 byte", 0);
    const QList<QStringList> rows = MarkerRows(document_.Sound());
    ASSERT_EQ(rows.size(), 3);
    EXPECT_EQ(rows[1], (QStringList{"2", "00:00:01.000", "8000", "400", "후렴"}));
    EXPECT_EQ(rows[2][4], "bad ? byte");
    CFilePropertiesSheet sheet(document_, progress_);
    EXPECT_EQ(sheet.findChild<QTreeWidget*>()->topLevelItem(1)->text(4), "후렴");
}

TEST_F(PropertiesTest, SilenceHasNoDecibels) {
    SoundStatistics silence;
    silence.channels = 1;
    silence.reference = 128;
    const auto rows = StatisticsRows(silence, 8000);
    EXPECT_EQ(rows[0].values, QStringList{"-Inf. dB"});
    EXPECT_EQ(rows[5].values, QStringList{"0.000 %"});
}

}  // namespace
}  // namespace sonavel
