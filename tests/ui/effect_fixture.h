// The effect dialogs over a sound of a chosen format, with the devices pumped by the test.
#pragma once

#include <QPushButton>
#include <QTimer>

#include "effects/ui/effect_command_target.h"
#include "support/recording_prompts.h"
#include "ui/live_devices.h"
#include "ui/view_fixture.h"

namespace sonavel {

struct EffectSound {
    unsigned channels = 2;
    unsigned bits = 16;
    std::uint32_t samplesPerSecond = 44100;
    std::uint32_t frames = 4096;
};

// Lets a test look around while an effect runs.
class WatchedProgress : public FakeProgress {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override {
        if (whenRunning) whenRunning();
        return FakeProgress::CreateProgress(title);
    }
    std::function<void()> whenRunning;
};

template <class Widget>
Widget* Named(QWidget& dialog, const char* name) {
    return dialog.findChild<Widget*>(QLatin1String(name));
}

inline QPushButton* ButtonOf(QWidget& dialog, const char* text) {
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text() == QLatin1String(text)) return button;
    return nullptr;
}

inline QString HeaderOf(QWidget& dialog) {
    return Named<QLabel>(dialog, "header")->text();
}

// The texts of the value labels, in the order in which they were made.
inline QStringList ValueTexts(QWidget& dialog) {
    QStringList texts;
    for (QLabel* label : dialog.findChildren<QLabel*>())
        if (dynamic_cast<ValueLabel*>(label) && label->objectName() != QLatin1String("percent"))
            texts << label->text();
    return texts;
}

class EffectFixture : public ::testing::Test {
  protected:
    EffectFixture() {
        TestApplication();
        EXPECT_TRUE(folder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS",
                                                 "SAVE UNDO REDO INFOMATION", 1));
        workspace_ = std::make_unique<Workspace>(services_);
        workspace_->SetInitialViewSize(400, 200);
        commands_ = std::make_unique<EffectCommands>(EffectHost{
            [this] { return workspace_->Active() ? workspace_->Active()->view.get() : nullptr; },
            [this](class Sound&& sound, std::string_view prefix) {
                return workspace_->NewDocumentFromSound(std::move(sound), prefix);
            },
            state_, memory_, nullptr});
    }

    // Every sample is 100.
    void Open(const EffectSound& sound) {
        class Sound copy;
        ASSERT_TRUE(copy.Create(sound.channels, sound.bits, sound.samplesPerSecond, sound.frames));
        workspace_->NewDocumentFromSound(std::move(copy), "Test");
        for (std::uint32_t frame = 0; frame < sound.frames; ++frame)
            for (unsigned channel = 0; channel < sound.channels; ++channel)
                Sound().SetSample(channel, frame, 100);
        Document().SetModified(false);
    }
    CSoundView& View() { return *workspace_->Active()->view; }
    CSoundDoc& Document() { return *workspace_->Active()->document; }
    CWavePlayer& Sound() { return Document().Sound(); }

    EffectDialog& Show(int commandId) {
        dialog_.reset();
        dialog_ = MakeEffectDialog(commandId, {View(), state_, memory_});
        dialog_->show();
        return *dialog_;
    }
    void Close() { dialog_->reject(); }
    // Runs the command; `act` gets its dialog once that is open.
    Outcome RunWith(int commandId, const std::function<void(QDialog&)>& act) {
        QTimer::singleShot(0, [act] { act(*qobject_cast<QDialog*>(qApp->activeModalWidget())); });
        return commands_->RunCommand(commandId);
    }

    QTemporaryDir directory_;
    ProgramFolder folder_{directory_.path().toStdString()};
    RecordingPrompts prompts_;
    WatchedProgress progress_;
    MemoryClipboard clipboard_;
    LiveTestDevices devices_{WavePace::kAsFastAsAsked};
    HostServices services_{prompts_, progress_, clipboard_, devices_, folder_};
    std::unique_ptr<Workspace> workspace_;
    EffectState state_;
    EffectMemory memory_;
    std::unique_ptr<EffectCommands> commands_;
    std::unique_ptr<EffectDialog> dialog_;
};

}  // namespace sonavel
