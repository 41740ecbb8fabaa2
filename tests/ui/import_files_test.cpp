// Opening what only Import reads: the offer, the answers and what stands above the waveform.
#include <QCheckBox>
#include <QMenu>
#include <QToolButton>

#include "app/command_ids.h"
#include "app/exchange/origin_line.h"
#include "app/exchange/refused_files_box.h"
#include "app_fixture.h"
#include "properties/ui/property_texts.h"
#include "support/patience.h"

namespace sonavel {
namespace {

class ImportFilesTest : public AppFixture {
  protected:
    QString Write(const std::string& name, const WavParts& parts) {
        WriteFileBytes(folder_ / name, WavBytes(parts));
        return QString::fromStdString((folder_ / name).string());
    }
    // Two frames at 8,000 Hz, the first at half of full scale.
    QString Deep(const std::string& name) {
        return Write(name, {.bits = 24, .blockAlign = 3, .data = {0, 0, 0x40, 0, 0, 0}});
    }
    QString Quad(const std::string& name) {
        return Write(name, {.channels = 4,
                            .bits = 16,
                            .blockAlign = 8,
                            .data = {0, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8}});
    }
    bool IsForGood() const {
        return StoredNumber(programFolder_.Options().Read(), SettingId::kImportRefused) != 0;
    }
    OriginLine& Line() { return Frame().Area().FrameOf(*Sounds().Active())->Origin(); }
};

// Answers each dialog that comes up and counts them.
class DialogAnswer {
  public:
    explicit DialogAnswer(std::function<void(QDialog&)> answer) {
        timer_.callOnTimeout([this, answer = std::move(answer)] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog) return;
            ++count_;
            answer(*dialog);
        });
        timer_.start(5);
    }
    int Count() const { return count_; }

  private:
    QTimer timer_;
    int count_ = 0;
};

// As its default button does.
void Accept(QDialog& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    box ? box->defaultButton()->click() : dialog.accept();
}

TEST_F(ImportFilesTest, OneBoxStandsForAllRefusedFilesAndTheOthersOpenBefore) {
    App();
    QString text;
    std::size_t openBefore = 0;
    const DialogAnswer answer([&](QDialog& box) {
        text = qobject_cast<QMessageBox*>(&box)->text();
        openBefore = Sounds().Count();
        Accept(box);
    });
    Q_EMIT Frame().FilesDropped({Deep("take3.wav"), WavFile("plain.wav"), WavFile("steps.v2.wav")});
    EXPECT_EQ(answer.Count(), 1);
    EXPECT_TRUE(text.contains("take3.wav: 24-bit sound\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("steps.v2.wav: the first dot in its path decides the format\n"));
    EXPECT_FALSE(text.contains("plain.wav"));
    EXPECT_EQ(openBefore, 1u);
    ASSERT_EQ(Sounds().Count(), 3u);
    EXPECT_EQ(Sounds().At(1).document->Sound().GetBits(), 32u);
    EXPECT_EQ(Sounds().At(2).document->Sound().GetBits(), 8u);
    EXPECT_EQ(Frame().Recent().Paths().size(), 3);
    EXPECT_FALSE(IsForGood());
}

TEST_F(ImportFilesTest, DoSoFromNowOnIsKeptOnlyWithAYes) {
    App();
    const QString file = Deep("take3.wav");
    const struct {
        bool accept;
        int boxes;
        std::size_t sounds;
    } cases[] = {{false, 1, 0}, {true, 1, 1}, {true, 0, 1}};
    for (const auto& c : cases) {
        const DialogAnswer answer([&](QDialog& box) {
            box.findChild<QCheckBox*>()->click();
            c.accept ? Accept(box) : box.reject();
        });
        EXPECT_EQ(App().OpenFile(file).IsCancelled(), !c.accept);
        EXPECT_EQ(answer.Count(), c.boxes);
        EXPECT_EQ(Sounds().Count(), c.sounds);
        EXPECT_EQ(IsForGood(), c.accept);
        while (Sounds().Count() > 0) Sounds().Close(0);
    }
}

TEST_F(ImportFilesTest, ManyChannelsAreAskedForAndACancelEndsTheImport) {
    App();
    const QStringList files{Quad("one.wav"), Quad("two.wav"), Quad("three.wav")};
    {
        const DialogAnswer answer([&](QDialog& dialog) {
            qobject_cast<QMessageBox*>(&dialog) ? Accept(dialog) : dialog.reject();
        });
        EXPECT_TRUE(App().OpenFiles(files).IsCancelled());
        EXPECT_EQ(answer.Count(), 2);
        EXPECT_EQ(Sounds().Count(), 0u);
    }
    const DialogAnswer answer([&](QDialog& dialog) {
        if (auto* channels = dialog.findChild<QComboBox*>("channels")) {
            channels->setCurrentIndex(channels->findText("Channel 2 and Channel 4"));
            dialog.findChild<QCheckBox*>()->click();
        }
        Accept(dialog);
    });
    EXPECT_TRUE(App().OpenFiles(files));
    EXPECT_EQ(answer.Count(), 2) << "the box, and one question for all three";
    ASSERT_EQ(Sounds().Count(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const CWave& sound = Sounds().At(i).document->Sound();
        EXPECT_EQ(sound.GetChannels(), 2u);
        EXPECT_EQ(sound.GetSample(0, 0), 0x200) << i;
        EXPECT_EQ(sound.GetSample(1, 1), 0x800) << i;
    }
}

TEST_F(ImportFilesTest, TheLineAboveTheWaveformSaysWhatCameAndTheViewMenuBringsItBack) {
    programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "IMPORT REFUSED FILES", 1);
    ASSERT_TRUE(App().OpenFile(WavFile("plain.wav")));
    EXPECT_TRUE(Line().isHidden());
    Frame().Actions().Refresh();
    EXPECT_FALSE(Frame().Actions().Action(app_command::kOriginLine)->isEnabled());

    ASSERT_TRUE(App().OpenFile(Deep("take3.wav")));
    EXPECT_EQ(Line().Text(), "WAV, 24 bit, 8,000 Hz");
    EXPECT_TRUE(Line().isVisible());
    EXPECT_EQ(FileRows(Active())[2].value, "WAV, 24 bit, 8,000 Hz");
    Line().findChild<QToolButton*>()->click();
    EXPECT_FALSE(Line().isVisible());
    Run(app_command::kOriginLine);
    EXPECT_TRUE(Line().isVisible());
    EXPECT_TRUE(Frame().Actions().Action(app_command::kOriginLine)->isChecked());
    Run(app_command::kOriginLine);
    EXPECT_FALSE(Line().isVisible());
}

TEST_F(ImportFilesTest, FilesOfTheCommandLineAreOfferedOnceTheFrameIsShown) {
    QString text;
    const DialogAnswer answer([&](QDialog& box) {
        text = qobject_cast<QMessageBox*>(&box)->text();
        Accept(box);
    });
    Application app(devices_, programFolder_);
    EXPECT_TRUE(app.OpenAtStart({WavFile("plain.wav"), Deep("take3.wav")}).isEmpty());
    EXPECT_EQ(app.Sounds().Count(), 1u);
    app.Show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return app.Sounds().Count() == 2; }, kPatienceMs));
    EXPECT_TRUE(text.contains("take3.wav: 24-bit sound")) << text.toStdString();
}

}  // namespace
}  // namespace sonavel
