// The engine's services through the toolkit: progress windows, message boxes, the clipboard.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <thread>

#include "document/clip_image.h"
#include "platform/qt/channel_conversion_dialog.h"
#include "platform/qt/qt_progress.h"
#include "platform/qt/qt_prompts.h"
#include "platform/qt/qt_wave_clipboard.h"
#include "platform/qt/ui_thread.h"
#include "support/qt_test_application.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;

class ServicesTest : public ::testing::Test {
  protected:
    ServicesTest() { TestApplication(); }
};

// --- Progress

// Polls until the window is there, or the time is over.
bool PollUntilShown(QtProgress& progress, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!progress.IsShown() && std::chrono::steady_clock::now() < end) progress.Poll();
    return progress.IsShown();
}

TEST_F(ServicesTest, AShortOperationShowsNoWindow) {
    QtProgress progress("Write sound file", nullptr);
    EXPECT_FALSE(PollUntilShown(progress, 150ms));
    EXPECT_TRUE(PollUntilShown(progress, 2000ms));
}

TEST_F(ServicesTest, EscapeAndCancelAndCloseCancelTheOperation) {
    const std::function<void(QDialog&)> ways[] = {
        [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
        [](QDialog& dialog) { dialog.findChild<QPushButton*>()->click(); },
        [](QDialog& dialog) { dialog.close(); },
    };
    for (const auto& cancel : ways) {
        QtProgress progress(" Flanger", nullptr);
        ASSERT_TRUE(PollUntilShown(progress, 2000ms));
        EXPECT_FALSE(progress.Poll());
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->windowTitle(), "Progress Flanger");
        cancel(*dialog);
        EXPECT_TRUE(progress.Poll());
        EXPECT_TRUE(progress.Poll());
        EXPECT_TRUE(progress.IsShown());
    }
}

TEST_F(ServicesTest, PollingLetsTheToolkitRunOnlyNowAndThen) {
    int runs = 0;
    QTimer ticker;
    ticker.callOnTimeout([&] { ++runs; });
    ticker.start(0);
    QtProgress progress("Read sound file", nullptr);
    const auto end = std::chrono::steady_clock::now() + 200ms;
    while (std::chrono::steady_clock::now() < end) progress.Poll();
    EXPECT_GE(runs, 1);
    EXPECT_LE(runs, 20 * 2);
}

// --- Prompts

TEST_F(ServicesTest, HeldMessagesAreHandedOverInsteadOfShown) {
    QtPrompts prompts;
    QStringList notes;
    prompts.SetStatusSink([&](const QString& text) { notes << text; });
    prompts.HoldMessages();
    prompts.ShowMessage("Missing SSND chunk in AIFF file");
    prompts.ShowStatus("no fmt chunk");
    EXPECT_EQ(prompts.TakeHeldMessages(),
              (QStringList{"Missing SSND chunk in AIFF file", "no fmt chunk"}));
    EXPECT_EQ(notes, QStringList{"no fmt chunk"});
    EXPECT_TRUE(prompts.TakeHeldMessages().isEmpty());
}

TEST_F(ServicesTest, AnswersAreThoseOfTheButtons) {
    const struct {
        QMessageBox::StandardButton button;
        bool answer;
    } cases[] = {{QMessageBox::Yes, true}, {QMessageBox::No, false}};
    QtPrompts prompts;
    for (const auto& c : cases) {
        QTimer::singleShot(20, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->text(), "원본 포맷과 같지 않습니다");
            EXPECT_EQ(box->windowTitle(), "Paste");
            EXPECT_EQ(box->button(QMessageBox::Yes)->text(), "&Yes");
            EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::Yes));
            box->button(c.button)->click();
        });
        EXPECT_EQ(prompts.AskYesNo("원본 포맷과 같지 않습니다", "Paste"), c.answer);
    }
}

TEST_F(ServicesTest, ChannelConversionNamesItsDirection) {
    ChannelConversionDialog toStereo(ChannelConversion::kMonoToStereo);
    EXPECT_EQ(toStereo.windowTitle(), "Convert Channel TypeStereo");
    EXPECT_EQ(toStereo.Choice(), ChannelChoice::kBothOrMix);
    ChannelConversionDialog toMono(ChannelConversion::kStereoToMono);
    EXPECT_EQ(toMono.windowTitle(), "Convert Channel TypeMono");
    for (QAbstractButton* button : toMono.findChildren<QAbstractButton*>())
        if (button->text() == "Right(&R)") button->click();
    EXPECT_EQ(toMono.Choice(), ChannelChoice::kRight);
}

// --- Clipboard

const std::vector<std::uint8_t> kImage{'R', 'I', 'F', 'F', 4, 0, 0, 0, 'W', 'A', 'V', 'E'};

TEST_F(ServicesTest, AnImageIsOfferedUnderEveryName) {
    QtWaveClipboard clipboard(ImageOf16Bits);
    ASSERT_TRUE(clipboard.SetImage(kImage));
    EXPECT_TRUE(clipboard.OffersWave());
    EXPECT_EQ(clipboard.GetImage(), kImage);
    const QMimeData* offered = QGuiApplication::clipboard()->mimeData();
    for (const char* name : {"audio/vnd.wave", "audio/x-wav", "audio/wav", "audio/wave"}) {
        const QByteArray data = offered->data(name);
        EXPECT_EQ(std::vector<std::uint8_t>(data.begin(), data.end()), kImage) << name;
    }
}

TEST_F(ServicesTest, OwnImagesAreToldFromThoseOfOtherPrograms) {
    QtWaveClipboard clipboard(ImageOf16Bits);
    ASSERT_TRUE(clipboard.SetImage(kImage));
    const std::uint64_t first = clipboard.OwnNumber();
    EXPECT_NE(first, 0u);
    ASSERT_TRUE(clipboard.SetImage(kImage));
    EXPECT_GT(clipboard.OwnNumber(), first);
    auto* foreign = new QMimeData;
    foreign->setData("audio/wav", QByteArray("RIFF"));
    QGuiApplication::clipboard()->setMimeData(foreign);
    EXPECT_TRUE(clipboard.OffersWave());
    EXPECT_EQ(clipboard.OwnNumber(), 0u);
}

TEST_F(ServicesTest, FloatsStayForTheEditorAndAreRoundedForOtherPrograms) {
    QtWaveClipboard clipboard(ImageOf16Bits);
    const float samples[] = {0.5f, -2};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(samples);
    const auto image = WriteClipImage(MakeSoundFormat(1, 32, 8000), {bytes, sizeof samples});
    ASSERT_TRUE(clipboard.SetImage(*image));
    EXPECT_EQ(clipboard.GetImage(), image);
    const QMimeData* offered = QGuiApplication::clipboard()->mimeData();
    const QByteArray rounded = offered->data("audio/x-wav");
    const auto* data = reinterpret_cast<const std::uint8_t*>(rounded.constData());
    ClipRecord clip;
    ASSERT_TRUE(ReadClipImage({data, static_cast<std::size_t>(rounded.size())}, clip));
    EXPECT_EQ(clip.GetFormat(), MakeSoundFormat(1, 16, 8000));
    EXPECT_NEAR(clip.GetSample(0, 0), 16384, 1);
    EXPECT_EQ(clip.GetSample(0, 1), -32768);

    // As another process of the editor offers it.
    auto* foreign = new QMimeData;
    for (const QString& name : offered->formats()) foreign->setData(name, offered->data(name));
    QGuiApplication::clipboard()->setMimeData(foreign);
    EXPECT_EQ(clipboard.GetImage(), image);
}

TEST_F(ServicesTest, AnyNameOfAnotherProgramIsTaken) {
    QtWaveClipboard clipboard(ImageOf16Bits);
    for (const char* name : {"audio/vnd.wave", "audio/x-wav", "audio/wav", "audio/wave"}) {
        auto* foreign = new QMimeData;
        foreign->setData(name, QByteArray("RIFF....WAVE"));
        QGuiApplication::clipboard()->setMimeData(foreign);
        EXPECT_TRUE(clipboard.OffersWave()) << name;
        EXPECT_EQ(clipboard.GetImage()->size(), 12u) << name;
    }
    QGuiApplication::clipboard()->setText("no sound");
    EXPECT_FALSE(clipboard.OffersWave());
    EXPECT_FALSE(clipboard.GetImage());
}

// --- Threads

TEST_F(ServicesTest, TasksOfOtherThreadsRunInOrderOnTheUiThread) {
    std::vector<int> ran;
    const std::thread::id uiThread = std::this_thread::get_id();
    std::thread device([&] {
        for (int i = 0; i < 3; ++i)
            PostToUiThread([&, i] {
                EXPECT_EQ(std::this_thread::get_id(), uiThread);
                ran.push_back(i);
            });
    });
    device.join();
    EXPECT_TRUE(ran.empty());
    QApplication::processEvents();
    EXPECT_EQ(ran, (std::vector<int>{0, 1, 2}));
}

}  // namespace
}  // namespace sonavel
