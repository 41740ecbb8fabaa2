// The document's dialogs, the About box and the logo.
#include <gtest/gtest.h>

#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "app/about_dialog.h"
#include "app/logo_window.h"
#include "app/new_sound_dialog.h"
#include "app/save_as_dialog.h"
#include "app/system_texts.h"
#include "support/patience.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

template <class Button>
Button* RequiredButton(const QWidget& dialog, const QString& text) {
    for (Button* button : dialog.findChildren<Button*>())
        if (button->text() == text) return button;
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
}

template <class Field>
QString FieldText(const QWidget& dialog, const char* name) {
    const auto* field = dialog.findChild<Field*>(QLatin1String(name));
    return field ? field->text() : QStringLiteral("(no field)");
}

class AppDialogsTest : public ::testing::Test {
  protected:
    AppDialogsTest() { TestApplication(); }
};

TEST_F(AppDialogsTest, NewOffersElevenRatesAndStartsWithCdRateMonoEightBit) {
    NewSoundDialog dialog(NewSoundChoice{});
    auto* rate = dialog.findChild<QComboBox*>();
    ASSERT_EQ(rate->count(), 11);
    EXPECT_EQ(rate->itemText(0), "6000");
    EXPECT_EQ(rate->itemText(10), "60000");
    const NewSoundChoice first = dialog.Choice();
    EXPECT_EQ(first.samplesPerSecond, 44100u);
    EXPECT_EQ(first.channels, 1u);
    EXPECT_EQ(first.bits, 8u);

    rate->setCurrentText("60000");
    RequiredButton<QRadioButton>(dialog, "&Stereo")->click();
    RequiredButton<QRadioButton>(dialog, "&16bit Data")->click();
    const NewSoundChoice second = dialog.Choice();
    EXPECT_EQ(second.samplesPerSecond, 60000u);
    EXPECT_EQ(second.channels, 2u);
    EXPECT_EQ(second.bits, 16u);
    RequiredButton<QRadioButton>(dialog, "32-bit &float")->click();
    EXPECT_EQ(dialog.Choice().bits, 32u);
    EXPECT_FALSE(RequiredButton<QRadioButton>(dialog, "&16bit Data")->isChecked());
    EXPECT_EQ(NewSoundDialog({8000, 1, 32}).Choice().bits, 32u);
}

class SaveAsDialogTest : public AppDialogsTest {
  protected:
    SaveAsDialogTest() {
        request_.proposedName = "Sound1";
        request_.filter =
            "Audio Files (*.wav;*.au;*.aiff) |*.wav;*.au;*.aiff;*.mp3|Wave File (*.wav)|*.wav|"
            "Next/Sun audio file (*.au)|*.au|All Files (*.*)|*.*||";
        request_.samplesPerSecond = 44100;
        request_.channels = 2;
        request_.bits = 16;
        request_.durationSeconds = 2;
    }
    std::unique_ptr<SaveAsDialog> Open() {
        auto dialog = std::make_unique<SaveAsDialog>(
            request_, QStringList{FolderText()}, [this](const SaveAsChoice& choice) {
                asked_ = choice;
                return SaveNotice{choice.saveMarkers ? "" : "markers are lost", canSave_};
            });
        dialog->setDirectory(FolderText());
        return dialog;
    }
    QString FolderText() const { return QString::fromStdString(folder_.Path().string()); }

    TemporaryFolder folder_;
    SaveAsRequest request_;
    SaveAsChoice asked_;
    bool canSave_ = true;
};

TEST_F(SaveAsDialogTest, TheChosenKindOfFileCompletesTheName) {
    const struct {
        const char* filter;
        const char* typed;
        const char* saved;
    } cases[] = {
        {"Audio Files (*.wav *.au *.aiff *.mp3)", "Sound1", "Sound1.WAV"},
        {"Wave File (*.wav)", "a", "a.wav"},
        {"Next/Sun audio file (*.au)", "a", "a.au"},
        {"Next/Sun audio file (*.au)", "a.aiff", "a.aiff"},
        {"All Files (*)", "b", "b.WAV"},
    };
    for (const auto& c : cases) {
        const auto dialog = Open();
        dialog->selectNameFilter(c.filter);
        Q_EMIT dialog->filterSelected(c.filter);
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(c.typed);
        EXPECT_EQ(dialog->Choice().path, folder_ / c.saved);
        EXPECT_EQ(FieldText<QLineEdit>(*dialog, "fullPath").toStdString(),
                  (folder_ / c.saved).string());
    }
}

TEST_F(SaveAsDialogTest, TheFileTypesReadAsTheyAreGiven) {
    const auto dialog = Open();
    const auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
    ASSERT_TRUE(types);
    EXPECT_EQ(types->itemText(0), "Audio Files (*.wav;*.au;*.aiff) ");
    EXPECT_EQ(types->itemText(3), "All Files (*.*)");
}

TEST_F(SaveAsDialogTest, TextsAndWarningFollowTheChoice) {
    const auto dialog = Open();
    EXPECT_EQ(FieldText<QLineEdit>(*dialog, "original"), "44,100 Hz, 16-bit, Stereo");
    EXPECT_EQ(FieldText<QLineEdit>(*dialog, "update"), "44,100 Hz, 16-bit, Stereo");
    EXPECT_EQ(FieldText<QLabel>(*dialog, "saveWarning"), "");

    RequiredButton<QRadioButton>(*dialog, "&Mono Channel")->click();
    RequiredButton<QRadioButton>(*dialog, "&8 Bit Data")->click();
    EXPECT_EQ(FieldText<QLineEdit>(*dialog, "update"), "44,100 Hz, 8-bit, Mono");
    EXPECT_EQ(asked_.channels, 1u);
    EXPECT_EQ(asked_.bits, 8u);

    auto* noMarkers = RequiredButton<QCheckBox>(*dialog, "Not Save Marker");
    EXPECT_FALSE(noMarkers->isChecked());
    noMarkers->click();
    EXPECT_FALSE(dialog->Choice().saveMarkers);
    EXPECT_EQ(FieldText<QLabel>(*dialog, "saveWarning"), "markers are lost");
    noMarkers->click();
    EXPECT_TRUE(dialog->Choice().saveMarkers);
    EXPECT_EQ(FieldText<QLabel>(*dialog, "saveWarning"), "");
}

TEST_F(SaveAsDialogTest, StaysOpenForWhatCannotBeSaved) {
    canSave_ = false;
    const auto dialog = Open();
    dialog->show();
    QTest::keyClick(dialog.get(), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    canSave_ = true;
    QTest::keyClick(dialog.get(), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(SaveAsDialogTest, ARecentFolderKeepsTheTypedName) {
    const auto dialog = Open();
    dialog->setDirectory("/");
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText("kept.wav");
    auto* recent = dialog->findChild<QComboBox*>("recentFolders");
    Q_EMIT recent->textActivated(recent->itemText(0));
    EXPECT_EQ(dialog->Choice().path, folder_ / "kept.wav");
}

TEST_F(AppDialogsTest, AboutShowsItsTextsAndRunsTheLogo) {
    int runs = 0;
    int licences = 0;
    AboutDialog about([&] { ++runs; }, [&] { ++licences; });
    QStringList texts;
    for (const QLabel* label : about.findChildren<QLabel*>()) texts << label->text();
    for (const char* text :
         {"Sonavel", "Version 1.2 Beta", "Phsycal Memory", "Available Disk Space"})
        EXPECT_TRUE(texts.contains(QLatin1String(text))) << text;
    EXPECT_TRUE(texts.contains(QString::fromStdString(PhysicalMemoryText())));
    RequiredButton<QPushButton>(about, "&Logo")->click();
    EXPECT_EQ(runs, 1);
    RequiredButton<QPushButton>(about, "L&icences")->click();
    EXPECT_EQ(licences, 1);
}

// Sees the logo's timer by what it sends.
class PictureTimerWatch : public QObject {
  public:
    PictureTimerWatch() { qApp->installEventFilter(this); }
    bool HasStopped() const { return timer_ && !timer_->isActive(); }
    bool eventFilter(QObject* object, QEvent* event) override {
        auto* timer = event->type() == QEvent::Timer ? qobject_cast<QTimer*>(object) : nullptr;
        if (timer && timer->interval() == LogoWindow::kPictureMs) timer_ = timer;
        return false;
    }

  private:
    QTimer* timer_ = nullptr;
};

TEST_F(AppDialogsTest, TheLogoRunsToItsLastPictureAndStays) {
    LogoWindow logo;
    logo.show();
    EXPECT_EQ(logo.Picture(), 0);
    PictureTimerWatch timer;
    EXPECT_TRUE(QTest::qWaitFor([&] { return timer.HasStopped(); }, kPatienceMs));
    EXPECT_EQ(logo.Picture(), 10);
    EXPECT_TRUE(logo.isVisible());
    QTest::mouseClick(&logo, Qt::LeftButton);
    EXPECT_FALSE(logo.isVisible());
}

TEST_F(AppDialogsTest, ALogoWithinAFrameStaysInItsMiddleAndAboveAll) {
    QMainWindow frame;
    frame.setCentralWidget(new QWidget);
    frame.resize(800, 600);
    frame.show();
    LogoWindow logo;
    logo.ShowWithin(frame);
    for (const QSize size : {QSize(800, 600), QSize(1000, 640)}) {
        frame.resize(size);
        QApplication::processEvents();
        EXPECT_TRUE((logo.geometry().center() - frame.rect().center()).manhattanLength() <= 2);
        EXPECT_EQ(frame.childAt(frame.rect().center()), &logo);
    }
    QTest::mouseClick(&logo, Qt::LeftButton);
    EXPECT_FALSE(logo.isVisible());
}

TEST_F(AppDialogsTest, AClickEndsAModalLogo) {
    LogoWindow logo;
    QTimer::singleShot(20, [&] { QTest::mouseClick(&logo, Qt::LeftButton); });
    EXPECT_EQ(logo.exec(), QDialog::Accepted);
}

}  // namespace
}  // namespace sonavel
