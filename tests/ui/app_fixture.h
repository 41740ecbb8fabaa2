// The whole application on fake devices, in a folder of its own, without a screen.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include "app/application.h"
#include "app/command_icons.h"
#include "platform/headless/headless_wave_devices.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {

// Presses a button of the message box that comes up next, and notes its text.
class BoxAnswer {
  public:
    explicit BoxAnswer(QMessageBox::StandardButton button) {
        timer_.callOnTimeout([this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            text_ = box->text();
            timer_.stop();
            box->button(button)->click();
        });
        timer_.start(5);
    }
    // Empty while no box came.
    const QString& Text() const { return text_; }

  private:
    QTimer timer_;
    QString text_;
};

class AppFixture : public ::testing::Test {
  protected:
    AppFixture() {
        TestApplication();
        LoadPictures();
        const QString settings = QString::fromStdString((folder_ / "settings").string());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings);
        programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "마커 저장", 1);
    }

    Application& App() {
        if (!app_) {
            app_ = std::make_unique<Application>(devices_, programFolder_);
            app_->Show();
        }
        return *app_;
    }
    CMainFrame& Frame() { return App().Frame(); }
    Workspace& Sounds() { return App().Sounds(); }
    CSoundDoc& Active() { return *Sounds().Active()->document; }

    // A WAV file of one second of 8-bit mono sound, or of 16-bit stereo.
    QString WavFile(const std::string& name, int channels = 1) {
        SilentPrompts prompts;
        HeadlessProgress progress;
        CWave wave(prompts, progress);
        EXPECT_TRUE(wave.Create(channels, 8 * channels, 8000, 8000));
        for (std::uint32_t i = 0; i < 8000; ++i) wave.SetSample(0, i, static_cast<int>(i % 100));
        EXPECT_TRUE(wave.Save(folder_ / name, MarkerSaving::kOn));
        return QString::fromStdString((folder_ / name).string());
    }
    // Opens it and changes it.
    void OpenModified(const std::string& name) {
        ASSERT_TRUE(App().OpenFile(WavFile(name)));
        Active().Sound().SetSample(0, 0, 42);
        Active().NotifyChanged(0);
    }
    void Run(int commandId) {
        QAction* action = Frame().Actions().Action(commandId);
        ASSERT_TRUE(action);
        Frame().Actions().Refresh();
        action->trigger();
        QApplication::processEvents();
    }
    QString StatusText() { return Frame().Status().Shown(); }

    TemporaryFolder folder_;
    ProgramFolder programFolder_{folder_.Path()};
    HeadlessWaveDevices devices_{WavePace::kAsFastAsAsked};
    std::unique_ptr<Application> app_;
};

}  // namespace sonavel
