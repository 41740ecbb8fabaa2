// A view on fakes, with one open sound, for tests of views and their commands.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/headless/memory_clipboard.h"
#include "support/fake_progress.h"
#include "support/fake_wave_devices.h"
#include "support/recording_prompts.h"
#include "support/test_files.h"
#include "view/commands/edit_commands.h"
#include "view/commands/view_commands.h"

namespace sonavel {

// Notes what a window would be told.
struct FakeWindow : SoundViewObserver, PeakObserver {
    std::vector<ViewArea> areas;
    std::vector<Rectangle> rectangles;
    int scrollChanges = 0;
    int selectionChanges = 0;
    int transportChanges = 0;
    int overviews = 0;
    std::vector<std::string> texts;
    std::vector<WaitCursor> waitCursors;
    std::vector<std::pair<int, int>> peaks;

    void Invalidate(ViewArea area) override { areas.push_back(area); }
    void InvalidateRectangle(const Rectangle& r) override { rectangles.push_back(r); }
    void OnScrollChanged() override { ++scrollChanges; }
    void OnSelectionChanged() override { ++selectionChanges; }
    void OnStatusText(std::string_view text) override { texts.emplace_back(text); }
    void SetWaitCursor(WaitCursor cursor) override { waitCursors.push_back(cursor); }
    void OnPeaks(std::int32_t left, std::int32_t right) override {
        peaks.emplace_back(left, right);
    }
    void OnTransportChanged() override { ++transportChanges; }
    void OnOverviewChanged() override { ++overviews; }
};

// What tests of one view and of several have in common.
class OpenViewTest : public ::testing::Test {
  protected:
    static constexpr int kWidth = 640;
    static constexpr int kHeight = 320;

    OpenViewTest() {
        SetOption("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION", 1);
        SetOption("__SOUND_GENERAL_OPTIONS", "DISPLAY SEEKER", 1);
        SetOption("__SOUND_GENERAL_OPTIONS", "DISPLAY SAMPLE DATA", 1);
        SetOption("__SOUND_WAVE_OPTIONS", "PLAYBACK BUFFER SIZE", 128);
        SetOption("__SOUND_WAVE_OPTIONS", "RECORD BUFFER SIZE", 128);
    }

    void SetOption(std::string_view section, std::string_view key, int value) {
        ProfileFile options = folder.Options();
        ASSERT_TRUE(options.SetInteger(section, key, value));
    }

    // Frame i holds i on the left and -i on the right channel (16 bit), or the byte i (8 bit).
    void OpenRamp(std::uint32_t frames, unsigned channels = 1, unsigned bits = 16,
                  std::uint32_t rate = 1000) {
        CWave ramp(prompts, progress);
        ASSERT_TRUE(ramp.Create(channels, bits, rate, frames));
        for (std::uint32_t frame = 0; frame < frames; ++frame)
            for (unsigned channel = 0; channel < channels; ++channel) {
                const auto value = static_cast<std::int32_t>(frame);
                const std::int32_t signedValue = channel == 0 ? value : -value;
                ramp.SetSample(channel, frame, bits == 8 ? 128 - signedValue : signedValue);
            }
        auto copy = ramp.Copy();
        ASSERT_TRUE(copy);
        Open(std::move(*copy));
        Document().SetModified(false);
    }

    // Lets the window see what the view tells.
    void Watch() {
        View().SetObserver(&window);
        View().Playing().SetMeter(&window);
    }

    virtual void Open(sonavel::Sound&& sound) = 0;
    virtual CSoundView& View() = 0;
    virtual SoundViewCommands& Commands() = 0;
    CSoundDoc& Document() { return View().Document(); }
    CWavePlayer& Sound() { return Document().Sound(); }
    // How it ended stands in `ended`.
    bool Run(int command) {
        ended = Commands().RunCommand(command);
        return ended.IsDone();
    }
    // Likewise of the commands that ask, as a front end runs them: with their first answers, or the
    // clip three times.
    bool RunAnswered(int command) {
        const auto answered = [&]() -> Outcome {
            if (Outcome offered = Commands().Offered(command); !offered) return offered;
            const Result<MixQuestion> question = PrepareMix(View());
            if (!question) return question.Ended();
            shownRange = *question;
            if (command == view_command::kMix) return MixClipboard(View(), {});
            if (command == view_command::kCrossfadeMix) return CrossfadeMixClipboard(View(), {});
            return PasteReplicate(View(), 3);
        };
        using enum view_command::Id;
        if (command != kMix && command != kCrossfadeMix && command != kPasteReplicate)
            return Run(command);
        ended = answered();
        return ended.IsDone();
    }

    FileBytes Bytes() { return {Sound().Bytes().begin(), Sound().Bytes().end()}; }

    // The left samples from `start` on.
    std::vector<int> Samples(std::uint32_t start, std::uint32_t count) {
        std::vector<int> samples;
        for (std::uint32_t frame = start; frame < start + count; ++frame)
            samples.push_back(Sound().GetSample(0, frame));
        return samples;
    }

    TemporaryFolder temporary;
    ProgramFolder folder{temporary.Path()};
    RecordingPrompts prompts;
    FakeProgress progress;
    MemoryClipboard clipboard;
    FakeWaveDevices devices;
    HostServices services{prompts, progress, clipboard, devices, folder};
    FakeWindow window;
    Outcome ended = Done();
    MixQuestion shownRange;
};

// A program of one view.
class ViewTest : public OpenViewTest, public ViewHost {
  protected:
    void Open(sonavel::Sound&& sound) override {
        commands_.reset();
        view_.reset();
        document_ = std::make_unique<CSoundDoc>(services);
        document_->Sound().Adopt(std::move(sound));
        view_ = std::make_unique<CSoundView>(*document_, *this);
        commands_ = std::make_unique<SoundViewCommands>(*view_);
        view_->Show(size.width, size.height);
    }
    CSoundView& View() override { return *view_; }
    SoundViewCommands& Commands() override { return *commands_; }

    ClipRecord& Clip() override { return clip_; }
    Outcome NewDocumentFromClip() override { return Failed("A program of one view."); }
    void OnChosen(const ViewChoice& choice) override { view_->ShowChosen(choice); }

    struct {
        int width = kWidth;
        int height = kHeight;
    } size;

  private:
    ClipRecord clip_;
    std::unique_ptr<CSoundDoc> document_;
    std::unique_ptr<CSoundView> view_;
    std::unique_ptr<SoundViewCommands> commands_;
};

}  // namespace sonavel
