// The dialogs of Import and Export, and the line above an imported sound.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "app/exchange/export_dialog.h"
#include "app/exchange/import_dialog.h"
#include "app/exchange/origin_line.h"
#include "app/exchange/refused_files_box.h"
#include "codec/kind_rules.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

class ExchangeDialogsTest : public ::testing::Test {
  protected:
    ExchangeDialogsTest() { TestApplication(); }
};

SoundFileDescription Deep(std::uint32_t channels, std::vector<Speaker> speakers = {}) {
    SoundFileDescription description;
    description.format = "FLAC";
    description.depth = FileDepth::kInteger;
    description.bits = 24;
    description.rate = 96000;
    description.channels = channels;
    description.speakers = std::move(speakers);
    return description;
}

using Question = ImportQuestion;

TEST_F(ExchangeDialogsTest, ImportKeepsDeepSamplesUnlessTheyAreToBeRounded) {
    ImportDialog dialog({.fileName = "a & b.flac", .description = Deep(2)});
    EXPECT_FALSE(dialog.findChild<QComboBox*>("channels"));
    EXPECT_EQ(dialog.findChild<QLabel*>()->text(), "a & b.flac\nFLAC, 24 bit, 96,000 Hz");
    EXPECT_FALSE(dialog.HoldsForAll());
    EXPECT_EQ(dialog.Choice().depth, ImportDepth::kKeep);
    for (auto* button : dialog.findChildren<QRadioButton*>())
        if (button->text() == "&Round to 16 bits") button->click();
    EXPECT_EQ(dialog.Choice().depth, ImportDepth::kRoundTo16);
    EXPECT_EQ(dialog.Choice().matrix, std::nullopt);
}

TEST_F(ExchangeDialogsTest, ImportOffersToMixManyChannelsDownOrAnyPairOfThem) {
    const SoundFileDescription four = Deep(4);
    ImportDialog dialog({.fileName = "quad.flac",
                         .description = four,
                         .depth = Question::Depth::kNotAsked,
                         .place = Question::Place::kMoreFollow});
    EXPECT_TRUE(dialog.findChildren<QRadioButton*>().isEmpty());
    auto* channels = dialog.findChild<QComboBox*>("channels");
    ASSERT_TRUE(channels);
    EXPECT_EQ(channels->count(), 1 + 4 * 3 / 2);
    EXPECT_EQ(dialog.Choice().matrix, MixToStereo(four.speakers, 4));
    const int pair = channels->findText("Channel 2 and Channel 4");
    ASSERT_GE(pair, 0);
    channels->setCurrentIndex(pair);
    const unsigned picked[] = {1, 3};
    EXPECT_EQ(dialog.Choice().matrix, PickChannels(picked, 4));
    dialog.findChild<QCheckBox*>()->click();
    EXPECT_TRUE(dialog.HoldsForAll());
}

TEST_F(ExchangeDialogsTest, TheBoxNamesEachFileAndItsReasonAsPlainText) {
    std::vector<RefusedFile> files{{"/a/steps.v2.wav", "the first dot in its path decides"},
                                   {"/a/<b>x.wav", "24-bit sound"}};
    RefusedFilesBox box(files);
    EXPECT_TRUE(box.text().contains("\nsteps.v2.wav: the first dot in its path decides\n"));
    EXPECT_TRUE(box.text().contains("\n<b>x.wav: 24-bit sound\n"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.defaultButton()->text(), "&Import");
    EXPECT_FALSE(box.IsForGood());
    for (int i = 0; i < 98; ++i) files.push_back({"/a/more.wav", "24-bit sound"});
    EXPECT_TRUE(RefusedFilesBox(files).text().contains("\nand 88 more\n"));
}

TEST_F(ExchangeDialogsTest, ADismissedLineComesBackOnlyWithAnotherText) {
    OriginLine line;
    EXPECT_TRUE(line.isHidden());
    line.ShowText("WAV, 24 bit, 44,100 Hz");
    EXPECT_FALSE(line.isHidden());
    line.findChild<QToolButton*>()->click();
    EXPECT_TRUE(line.isHidden());
    line.ShowText("WAV, 24 bit, 44,100 Hz");
    EXPECT_TRUE(line.isHidden());
    line.ShowText("AU, 24 bit, 44,100 Hz");
    EXPECT_FALSE(line.isHidden());
    line.ShowText({});
    EXPECT_TRUE(line.isHidden());
}

class ExportDialogTest : public ExchangeDialogsTest {
  protected:
    ExportDialogTest() {
        question_.title = "Export";
        question_.proposed.path = folder_ / "a.b.wav";
        question_.proposed.depth = EncodedDepth::k24;
        question_.proposed.tagValues = {{"title", "Old"}, {"genre", "Noise"}};
        question_.depthsOf = [](SoundFileKind kind) {
            using enum EncodedDepth;
            if (IsLossy(kind)) return std::vector<EncodedDepth>{};
            if (kind == SoundFileKind::kFlac) return std::vector{k24, k16, k8};
            return std::vector{kFloat32, k24, k16, k8};
        };
        question_.notice = [](const ExportAnswer& answer) {
            ExportNotice notice;
            notice.estimatedBytes = 3 << 20;
            if (answer.kind == SoundFileKind::kAu && answer.markers == ExportPart::kWrite)
                notice.losses << "Markers cannot be written to an AU file";
            if (answer.kind == SoundFileKind::kOpus) notice.refusal = "Not at this rate.";
            return notice;
        };
    }
    static void Choose(ExportDialog& dialog, SoundFileKind kind) {
        auto* kinds = dialog.findChild<QComboBox*>("kind");
        kinds->setCurrentIndex(kinds->findData(static_cast<int>(kind)));
    }
    static QString Text(ExportDialog& dialog, const char* label) {
        return dialog.findChild<QLabel*>(QLatin1String(label))->text();
    }

    TemporaryFolder folder_;
    ExportQuestion question_;
};

TEST_F(ExportDialogTest, TheNameFollowsTheKindOfFileAndTheOtherWayRound) {
    ExportDialog dialog(question_);
    auto* path = dialog.findChild<QLineEdit*>("path");
    for (const ExportKind& row : ExportKinds()) {
        Choose(dialog, row.kind);
        EXPECT_EQ(dialog.Answer().path, folder_ / (std::string("a.b") + row.extension));
        EXPECT_EQ(dialog.Answer().kind, row.kind);
    }
    path->setText(path->text().section(u'/', 0, -2) + "/c.FLAC");
    EXPECT_EQ(dialog.Answer().kind, SoundFileKind::kFlac);
    EXPECT_EQ(dialog.Answer().path, folder_ / "c.FLAC");
    path->setText(path->text().section(u'/', 0, -2) + "/c.txt");
    EXPECT_EQ(dialog.Answer().kind, SoundFileKind::kFlac);
    Choose(dialog, SoundFileKind::kMp3);
    EXPECT_EQ(dialog.Answer().path, folder_ / "c.txt.mp3");
}

TEST_F(ExportDialogTest, TheSoundsOwnFileIsNeverProposed) {
    question_.own = question_.proposed.path = folder_ / "a.wav";
    ExportDialog dialog(question_);
    EXPECT_EQ(dialog.Answer().path, folder_ / "a copy.wav");
    question_.proposed.path = folder_ / "a.flac";
    question_.proposed.kind = SoundFileKind::kFlac;
    ExportDialog other(question_);
    EXPECT_EQ(other.Answer().path, folder_ / "a.flac");
    Choose(other, SoundFileKind::kWav);
    EXPECT_EQ(other.Answer().path, folder_ / "a copy.wav");
}

TEST_F(ExportDialogTest, LossyKindsTakeAQualityAndOthersTheDepthsThatTheyHold) {
    ExportDialog dialog(question_);
    auto* depth = dialog.findChild<QComboBox*>("depth");
    auto* quality = dialog.findChild<QSpinBox*>();
    EXPECT_EQ(dialog.Answer().depth, EncodedDepth::k24);
    EXPECT_FALSE(quality->isEnabled());
    depth->setCurrentIndex(0);
    EXPECT_EQ(dialog.Answer().depth, EncodedDepth::kFloat32);
    Choose(dialog, SoundFileKind::kFlac);
    EXPECT_EQ(dialog.Answer().depth, EncodedDepth::k24) << "the best that the kind holds";
    Choose(dialog, SoundFileKind::kMp3);
    EXPECT_FALSE(depth->isEnabled());
    EXPECT_TRUE(quality->isEnabled());
    quality->setValue(9);
    EXPECT_EQ(dialog.Answer().quality, 9u);
}

TEST_F(ExportDialogTest, SizeLossesAndRefusalsFollowTheChoice) {
    ExportDialog dialog(question_);
    const auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    EXPECT_EQ(Text(dialog, "size"), "Estimated size: 3.0 MB");
    EXPECT_EQ(Text(dialog, "losses"), "");
    Choose(dialog, SoundFileKind::kAu);
    EXPECT_EQ(Text(dialog, "losses"), "Markers cannot be written to an AU file.");
    for (auto* box : dialog.findChildren<QCheckBox*>())
        if (box->text() == "Write &markers") box->click();
    EXPECT_EQ(Text(dialog, "losses"), "");
    EXPECT_TRUE(ok->isEnabled());
    Choose(dialog, SoundFileKind::kOpus);
    EXPECT_EQ(Text(dialog, "losses"), "Not at this rate.");
    EXPECT_FALSE(ok->isEnabled());
}

TEST_F(ExportDialogTest, EditedTagsReplaceTheSoundsOwnAndOthersStay) {
    ExportDialog dialog(question_);
    EXPECT_EQ(dialog.findChild<QLineEdit*>("title")->text(), "Old");
    dialog.findChild<QLineEdit*>("title")->setText("");
    dialog.findChild<QLineEdit*>("date")->setText("1999");
    const std::vector<SoundTag> expected{{"genre", "Noise"}, {"date", "1999"}};
    EXPECT_EQ(dialog.Answer().tagValues, expected);
    for (auto* box : dialog.findChildren<QCheckBox*>())
        if (box->text() == "&Write tags") box->click();
    EXPECT_EQ(dialog.Answer().tags, ExportPart::kLeaveOut);
    EXPECT_FALSE(dialog.findChild<QLineEdit*>("date")->isEnabled());
}

}  // namespace
}  // namespace sonavel
