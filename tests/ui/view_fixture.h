// A sound view in a window of its own, over fakes of everything else.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <functional>
#include <memory>

#include "platform/headless/headless_wave_devices.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/silent_prompts.h"
#include "support/fake_progress.h"
#include "support/qt_test_application.h"
#include "view/ui/sound_view_widget.h"
#include "workspace/workspace.h"

namespace sonavel {

// The value of a channel at a frame, as a 16-bit sample.
using TestSignal = std::function<int(unsigned channel, std::uint32_t frame)>;

struct TestSound {
    unsigned channels = 1;
    std::uint32_t frames = 0;
    TestSignal signal;
    MarkerList markers;
};

// A loud tone with a beat, left and right apart.
inline int BeatingTone(unsigned channel, std::uint32_t frame) {
    const double t = frame / 44100.0;
    const double level = 14000 + 12000 * std::sin(t * (channel ? 31 : 17));
    return static_cast<int>(level * std::sin(t * (channel ? 900 : 2400)));
}

class ViewFixture : public ::testing::Test {
  protected:
    ViewFixture() {
        TestApplication();
        actions_ = std::make_unique<CommandActions>([this](int id) -> CommandTarget* {
            SoundViewCommands* commands = workspace_->Active()->commands.get();
            return commands->HandlesCommand(id) ? commands : nullptr;
        });
        for (const Command<CSoundView>& row : ViewCommands()) actions_->Add(row.info);
        workspace_ = std::make_unique<Workspace>(services_);
    }
    ~ViewFixture() override { widget_.reset(); }

    // Opens the sound in a window of this size.
    CSoundView& Open(const TestSound& sound, QSize size = {640, 320}) {
        class Sound copy;
        EXPECT_TRUE(copy.Create(sound.channels, 16, 44100, sound.frames));
        auto* samples = reinterpret_cast<std::int16_t*>(copy.MutableBytes().data());
        for (std::uint32_t frame = 0; frame < sound.frames; ++frame)
            for (unsigned channel = 0; channel < sound.channels; ++channel)
                *samples++ = static_cast<std::int16_t>(sound.signal(channel, frame));
        copy.Markers() = sound.markers;
        workspace_->NewDocumentFromSound(std::move(copy), "Test");
        widget_ = std::make_unique<SoundViewWidget>(*workspace_->Active()->view, *actions_);
        widget_->resize(size);
        widget_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget_.get()));
        return widget_->View();
    }

    // A point of the waveform, from its left top corner.
    QPoint Waveform(int x, int y) const {
        const Rectangle& waveform = widget_->View().State().Geometry().waveform;
        return {waveform.left + x, waveform.top + y};
    }
    std::int64_t FrameAt(int x) const { return widget_->View().Zoom().Pixels().FrameAt(x); }
    QImage Grab() const { return widget_->grab().toImage().convertToFormat(QImage::Format_RGB32); }
    void SetOption(const char* section, const char* key, int value) {
        ProfileFile file = folder_.Options();
        ASSERT_TRUE(file.SetInteger(section, key, value));
    }

    QTemporaryDir directory_;
    ProgramFolder folder_{directory_.path().toStdString()};
    SilentPrompts prompts_;
    FakeProgress progress_;
    MemoryClipboard clipboard_;
    HeadlessWaveDevices devices_{WavePace::kAsFastAsAsked};
    HostServices services_{prompts_, progress_, clipboard_, devices_, folder_};
    std::unique_ptr<CommandActions> actions_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<SoundViewWidget> widget_;
};

}  // namespace sonavel
