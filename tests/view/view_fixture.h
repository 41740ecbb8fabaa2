// A view on fakes, with one open sound, for tests of views and their commands.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/headless/memory_clipboard.h"
#include "support/fake_progress.h"
#include "support/fake_wave_devices.h"
#include "support/recording_prompts.h"
#include "support/test_files.h"
#include "view/commands/view_commands.h"

namespace sonavel {

// Answers every dialog with what the test put there; nothing means Cancel.
struct FakeDialogs : ViewDialogs, DocumentDialogs {
    std::optional<UserZoom> userZoom;
    std::optional<MixChoice> mix;
    std::optional<CrossfadeChoice> crossfade;
    std::optional<int> replicateCount;
    std::optional<GoToChoice> goTo;
    std::optional<std::vector<MarkerEdit>> markerEdits;
    std::optional<RecordChoice> record;
    std::optional<NewSoundChoice> newSound;
    std::function<void(ClipboardPreview&)> onClipboardContents = [](ClipboardPreview&) {};

    UserZoom shownUserZoom;
    MixRange shownRange;
    MarkerDialogRequest markerRequest;
    RecordRequest recordRequest;
    ClipboardContents clipboardContents;

    std::optional<UserZoom> AskUserZoom(const UserZoom& initial) override {
        shownUserZoom = initial;
        return userZoom;
    }
    std::optional<MixChoice> AskMix(const MixRange& range, const MixChoice&) override {
        shownRange = range;
        return mix;
    }
    std::optional<CrossfadeChoice> AskCrossfade(const MixRange& range,
                                                const CrossfadeChoice&) override {
        shownRange = range;
        return crossfade;
    }
    std::optional<int> AskReplicateCount(int) override { return replicateCount; }
    std::optional<GoToChoice> AskGoTo(const GoToRequest&) override { return goTo; }
    std::optional<std::vector<MarkerEdit>> EditMarkers(
        const MarkerDialogRequest& request) override {
        markerRequest = request;
        return markerEdits;
    }
    void ShowClipboardContents(const ClipboardContents& contents,
                               ClipboardPreview& preview) override {
        clipboardContents = contents;
        onClipboardContents(preview);
    }
    std::optional<RecordChoice> AskRecord(const RecordRequest& request) override {
        recordRequest = request;
        return record;
    }
    std::optional<NewSoundChoice> AskNewSound(const NewSoundChoice&) override { return newSound; }
    std::optional<SaveAsChoice> AskSaveAs(const SaveAsRequest&) override { return std::nullopt; }
};

// Notes what a window would be told.
struct FakeWindow : SoundViewObserver, PeakObserver {
    std::vector<ViewArea> areas;
    std::vector<Rectangle> rectangles;
    int scrollChanges = 0;
    int selectionChanges = 0;
    int transportChanges = 0;
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
    bool Run(int command) { return Commands().RunCommand(command); }

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
    FakeDialogs dialogs;
    FakeWindow window;
};

// A program of one view.
class ViewTest : public OpenViewTest, public ViewHost {
  protected:
    void Open(sonavel::Sound&& sound) override {
        commands_.reset();
        view_.reset();
        document_ = std::make_unique<CSoundDoc>(services, dialogs);
        document_->Sound().Adopt(std::move(sound));
        view_ = std::make_unique<CSoundView>(*document_, dialogs, *this);
        commands_ = std::make_unique<SoundViewCommands>(*view_);
        view_->Show(size.width, size.height);
    }
    CSoundView& View() override { return *view_; }
    SoundViewCommands& Commands() override { return *commands_; }

    ClipRecord& Clip() override { return clip_; }
    bool NewDocumentFromClip() override { return false; }
    const std::string& LastError() const override { return lastError_; }
    void OnStatusFormatChosen(StatusFormat format) override { view_->ShowStatusFormat(format); }

    struct {
        int width = kWidth;
        int height = kHeight;
    } size;

  private:
    ClipRecord clip_;
    std::string lastError_;
    std::unique_ptr<CSoundDoc> document_;
    std::unique_ptr<CSoundView> view_;
    std::unique_ptr<SoundViewCommands> commands_;
};

}  // namespace sonavel
