// Exporting from the window: what is written, and that the document stays as it was.
#include "app/command_ids.h"
#include "app/exchange/export_dialog.h"
#include "app/exchange/export_writing.h"
#include "app_fixture.h"

namespace sonavel {
namespace {

class ExportFilesTest : public AppFixture {
  protected:
    ExportFilesTest() {
        programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "IMPORT REFUSED FILES", 1);
    }
    QString Path(const std::string& name) {
        return QString::fromStdString((folder_ / name).string());
    }
    // Four frames of 24 bits.
    void ImportDeep() {
        WriteFileBytes(folder_ / "deep.wav",
                       WavBytes({.bits = 24,
                                 .blockAlign = 3,
                                 .data = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0xFF, 0xFF, 0x80}}));
        ASSERT_TRUE(App().OpenFile(Path("deep.wav")));
    }
    // Runs the command and answers its dialog.
    void RunAndAnswer(int command, const std::function<void(ExportDialog&)>& answer) {
        QTimer timer;
        bool came = false;
        timer.callOnTimeout([&] {
            auto* dialog = qobject_cast<ExportDialog*>(QApplication::activeModalWidget());
            if (!dialog || came) return;
            came = true;
            answer(*dialog);
        });
        timer.start(5);
        Run(command);
        EXPECT_TRUE(came);
    }
    // Of a WAV file whose data is its last chunk.
    FileBytes LastBytes(const std::string& name, std::ptrdiff_t count) {
        const FileBytes bytes = ReadFileBytes(folder_ / name);
        EXPECT_GE(std::ssize(bytes), count);
        return {bytes.end() - count, bytes.end()};
    }
};

TEST_F(ExportFilesTest, ADeepSoundComesOutAsItCameInAndItsDocumentStaysAsItIs) {
    ImportDeep();
    RunAndAnswer(app_command::kExport, [&](ExportDialog& dialog) {
        EXPECT_EQ(dialog.Answer().path, folder_ / "deep copy.wav");
        dialog.findChild<QLineEdit*>("path")->setText(Path("out.wav"));
        auto* depth = dialog.findChild<QComboBox*>("depth");
        depth->setCurrentIndex(depth->findData(static_cast<int>(EncodedDepth::k24)));
        dialog.accept();
    });
    EXPECT_EQ(LastBytes("out.wav", 12), (FileBytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 0xFF, 0xFF, 0x80}));
    EXPECT_EQ(Active().Path(), folder_ / "deep.wav");
    EXPECT_FALSE(Active().GetModified());
    EXPECT_EQ(Frame().Recent().Paths().size(), 1);
}

TEST_F(ExportFilesTest, TheSelectionIsWrittenWithItsMarkers) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    MarkerList markers;
    markers.Add(150, "inside", 1000);
    markers.Add(500, "behind", 0);
    Active().Sound().Markers() = markers;
    Frame().Actions().Refresh();
    EXPECT_FALSE(Frame().Actions().Action(app_command::kExportSelection)->isEnabled());
    Sounds().Active()->view->State().SetSelection(100, 300);
    RunAndAnswer(app_command::kExportSelection, [&](ExportDialog& dialog) {
        EXPECT_EQ(dialog.Answer().path.filename(), "a selection.wav");
        dialog.findChild<QLineEdit*>("path")->setText(Path("part.wav"));
        dialog.accept();
    });
    ASSERT_TRUE(Sounds().ImportDocument(folder_ / "part.wav", {}));
    ASSERT_EQ(Active().Sound().GetFrameCount(), 200u);
    EXPECT_EQ(Active().Sound().GetSample(0, 50), 50);
    const auto& written = Active().Sound().Markers().All();
    ASSERT_EQ(written.size(), 1u);
    EXPECT_EQ(written[0].position, 50u);
    EXPECT_EQ(written[0].length, 150u) << "a region ends with the sound";
}

TEST_F(ExportFilesTest, TheNoticeNamesWhatIsLostAndWhatCannotBe) {
    ImportDeep();
    const FrameRange whole{0, 4};
    const auto notice = [&](SoundFileKind kind, EncodedDepth depth) {
        ExportAnswer answer;
        answer.kind = kind;
        answer.depth = depth;
        return NoticeOfExport(Active(), whole, answer);
    };
    EXPECT_EQ(notice(SoundFileKind::kWav, EncodedDepth::k24).estimatedBytes, 12u);
    EXPECT_EQ(notice(SoundFileKind::kWav, EncodedDepth::k16).losses,
              QStringList{"The samples are rounded to 16 bits"});
    EXPECT_TRUE(notice(SoundFileKind::kFlac, EncodedDepth::kFloat32).refusal.contains("FLAC"));
    const std::uint32_t rate = Active().Sound().GetSamplesPerSecond();
    Active().Sound().SetRate(192000);
    const ExportNotice resampled = NoticeOfExport(
        Active(), {0, 1'920'000}, {.path = {}, .kind = SoundFileKind::kMp3, .tagValues = {}});
    EXPECT_EQ(resampled.losses, QStringList{"The sound is resampled to 48,000 Hz"});
    EXPECT_NEAR(static_cast<double>(resampled.estimatedBytes), 10 * 160000 / 8, 5000);
    Active().Sound().SetRate(rate);
    Active().Sound().Markers().Add(1, "x", 0);
    EXPECT_EQ(notice(SoundFileKind::kMp3, EncodedDepth::k16).losses, QStringList{});
    EXPECT_EQ(notice(SoundFileKind::kW64, EncodedDepth::kFloat32).losses,
              QStringList{"Markers cannot be written to a W64 file"});

    QString refusal;
    RunAndAnswer(app_command::kSaveCopy, [&](ExportDialog& dialog) {
        dialog.findChild<QLineEdit*>("path")->setText(Path("deep.wav"));
        refusal = dialog.findChild<QLabel*>("losses")->text();
        dialog.reject();
    });
    EXPECT_TRUE(refusal.startsWith("This file is open")) << refusal.toStdString();
}

}  // namespace
}  // namespace sonavel
