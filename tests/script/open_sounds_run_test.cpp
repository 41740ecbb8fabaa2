#include "script/open_sounds_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <utility>

#include "support/address_space_limit.h"
#include "support/sound_files.h"
#include "view/view_fixture.h"

namespace sonavel::script {
namespace {

class OpenSoundsRunTest : public OpenViewTest {
  protected:
    OpenSoundsRunTest() { sounds.SetInitialViewSize(kWidth, kHeight); }

    void Open(sonavel::Sound&& sound) override {
        sounds.NewDocumentFromSound(std::move(sound), "Ramp_");
    }
    CSoundView& View() override { return *sounds.Active()->view; }
    SoundViewCommands& Commands() override { return *sounds.Active()->commands; }

    OpenSoundsRun RunText(const std::string& text) {
        return RunOnOpenSounds({text, temporary.Path()}, sounds, codecs, effects);
    }
    void ExpectDone(const std::string& text) {
        const OpenSoundsRun run = RunText(text);
        EXPECT_TRUE(run.outcome) << text << ": " << run.outcome.Reason();
    }

    // All that a person sees of the open sounds and of what Undo and Redo would do.
    std::string State() {
        std::ostringstream out;
        for (std::size_t i = 0; i < sounds.Count(); ++i) {
            const OpenSound& sound = sounds.At(i);
            const CSoundDoc& document = *sound.document;
            const auto bytes = document.Sound().Bytes();
            out << document.Title() << ' ' << document.GetModified() << ' '
                << document.Sound().GetSamplesPerSecond() << ' ' << document.Sound().GetBits()
                << ' ' << std::string(bytes.begin(), bytes.end()) << ' '
                << document.Sound().Markers().Count() << ' ' << document.History().Count() << ' '
                << document.History().CurrentPosition().value_or(99) << document.CanRedo() << ' '
                << sound.view->State().GetSelection().start << ' '
                << sound.view->State().GetSelection().end << ' ' << sound.view->State().Cursor();
            for (const SoundTag& tag : document.Tags()) out << tag.key << tag.value;
            out << '\n';
        }
        out << sounds.ActiveIndex().value_or(99);
        return out.str();
    }

    ChildCodecs codecs;
    EffectState effects;
    Workspace sounds{services};
};

TEST_F(OpenSoundsRunTest, ChangesEachSoundByOneStepThatUndoTakesBack) {
    OpenRamp(3000);
    OpenRamp(2000, 2, 8);
    sounds.Activate(1);
    const FileBytes second = Bytes();
    sounds.Activate(0);
    View().State().SetSelection(100, 200);
    const FileBytes first = Bytes();

    const OpenSoundsRun run = RunText(
        "cut; cursor 5; paste; reverse; marker-add 7 name=\"a\"\n"
        "activate 2; convert-bits 16; set-rate 2000; select 3 4; delete");
    ASSERT_TRUE(run.outcome) << run.outcome.Reason();
    EXPECT_EQ(run.commands, 10u);
    EXPECT_EQ(run.changedSounds, 2u);
    EXPECT_EQ(sounds.ActiveIndex(), 1u);
    EXPECT_EQ(Sound().GetFrameCount(), 1999u);
    EXPECT_EQ(Sound().GetBits(), 16u);
    EXPECT_EQ(Sound().GetSamplesPerSecond(), 2000u);
    EXPECT_FALSE(clipboard.OffersWave());

    for (std::size_t i = 0; i < 2; ++i) {
        CSoundDoc& document = *sounds.At(i).document;
        ASSERT_EQ(document.History().Count(), 1u);
        EXPECT_EQ(document.History().StepAt(0).name, "Script");
        ASSERT_TRUE(document.Undo());
        EXPECT_TRUE(document.Sound().Markers().Empty());
    }
    EXPECT_EQ(Bytes(), second);
    EXPECT_EQ(Sound().GetBits(), 8u);
    EXPECT_EQ(Sound().GetSamplesPerSecond(), 1000u);
    sounds.Activate(0);
    EXPECT_EQ(Bytes(), first);
    ASSERT_TRUE(Document().Redo());
    EXPECT_EQ(Sound().Markers().Count(), 1u);
}

TEST_F(OpenSoundsRunTest, WhatFailsOrIsCancelledLeavesAllAsItWas) {
    OpenRamp(3000);
    OpenRamp(2000);
    View().State().SetSelection(10, 20);
    ASSERT_TRUE(Run(view_command::kDelete));
    ASSERT_TRUE(Run(view_command::kUndo));  // what can be redone has to stay, too
    const std::string before = State();
    const std::pair<const char*, const char*> cases[] = {
        {"reverse; nonsense", "Line 1: expected a command, not \"nonsense\""},
        {"reverse\nnew; select 3 9\nundo", "Line 3: undo: There is nothing to undo."},
        {"reverse\nactivate 1\nreverse\nactivate 9", "Line 4: activate: There is no document 9."},
        {"reverse\nsave", "Line 2: the command save does not run in the editor"},
        {"save-as \"x.wav\"", "Line 1: the command save-as"},
        {"select-all; close", "Line 1: the command close"},
        {"recover \".\"", "Line 1: the command recover"},
        {"reverse; open \"missing.wav\"", "Line 1: open:"},
    };
    for (const auto& [text, reason] : cases) {
        const OpenSoundsRun run = RunText(text);
        EXPECT_TRUE(run.outcome.IsFailed()) << text;
        EXPECT_TRUE(run.outcome.Reason().starts_with(reason)) << run.outcome.Reason();
        EXPECT_EQ(State(), before) << text;
    }
}

#ifndef __SANITIZE_ADDRESS__

// Takes all memory that the process can have but for so many bytes, also what it had and gave back.
class ScarceMemory {
  public:
    explicit ScarceMemory(std::size_t bytesLeft) {
        void* left = std::malloc(bytesLeft);
        // An unused block would never be taken.
        if (left) *static_cast<volatile char*>(left) = 0;
        limit_.emplace(0);
        for (std::size_t size = std::size_t{1} << 24; size >= kLeastBlock; size /= 4)
            while (void* block = std::malloc(size)) {
                *static_cast<void**>(block) = last_;
                last_ = block;
            }
        std::free(left);
    }
    ~ScarceMemory() {
        while (last_) std::free(std::exchange(last_, *static_cast<void**>(last_)));
    }
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

  private:
    static constexpr std::size_t kLeastBlock = 256;

    std::optional<AddressSpaceLimit> limit_;
    void* last_ = nullptr;  // of a chain
};

// Makes memory scarce from a poll on until the script has ended.
class ScarceProgress : public ProgressFactory {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view) override {
        polls = 0;
        return std::make_unique<Window>(*this);
    }

    int polls = 0;
    int scarceFromPoll = -1;
    std::size_t bytesLeft = 0;

  private:
    class Window : public ProgressWindow {
      public:
        explicit Window(ScarceProgress& owner) : owner_(owner) {}

        void SetRange(int, int) override {}
        void SetPosition(int) override {}
        bool Poll() override {
            if (owner_.polls++ == owner_.scarceFromPoll) scarce_.emplace(owner_.bytesLeft);
            return false;
        }

      private:
        ScarceProgress& owner_;
        std::optional<ScarceMemory> scarce_;
    };
};

// The first sound can be handed over in any case; what the second one has become takes memory.
TEST_F(OpenSoundsRunTest, WithoutMemoryForTheHandOverAllSoundsChangeOrNone) {
    std::string labels;
    for (int i = 0; i < 50000; ++i) labels += "0\t0\ta name too long to lie in the marker\n";
    WriteFileBytes(temporary / "many.txt", {labels.begin(), labels.end()});
    ScarceProgress scarce;
    const HostServices few{prompts, scarce, clipboard, devices, folder};
    Workspace both{few};
    int all = 0, none = 0;
    for (const int kilobytes : {-1, 200, 900, 3000, 200000}) {
        SCOPED_TRACE(kilobytes);
        while (both.Count() > 0) both.Close(0);
        for (int i = 0; i < 2; ++i) {
            sonavel::Sound sound;
            ASSERT_TRUE(sound.Create(1, 8, 8000, 2));
            sound.MutableBytes()[0] = 0;
            sound.MutableBytes()[1] = 1;
            both.NewDocumentFromSound(std::move(sound), "Sound_");
            both.Active()->document->SetSavesUndo(false);
            both.Active()->document->SetModified(false);
        }
        scarce.scarceFromPoll = kilobytes < 0 ? -1 : scarce.polls - 1;
        scarce.bytesLeft = std::size_t{1024} * static_cast<unsigned>(std::max(kilobytes, 0));
        const OpenSoundsRun run = RunOnOpenSounds(
            {"activate 1; reverse; activate 2; reverse; markers-import \"many.txt\"",
             temporary.Path()},
            both, codecs, effects);
        for (std::size_t i = 0; i < 2; ++i) {
            const CSoundDoc& document = *both.At(i).document;
            EXPECT_EQ(document.Sound().Bytes()[0], run.outcome ? 1 : 0) << i;
            EXPECT_EQ(document.GetModified(), bool(run.outcome)) << i;
            EXPECT_EQ(document.Sound().Markers().Count(), run.outcome && i == 1 ? 50000u : 0u);
            EXPECT_FALSE(document.IsBeingChanged());
        }
        (run.outcome ? all : none) += 1;
    }
    EXPECT_GT(all, 1);
    EXPECT_GT(none, 0);
}

#endif

TEST_F(OpenSoundsRunTest, ACancelAtAnyMomentLeavesAllAsItWas) {
    OpenRamp(60000);
    const std::string before = State();
    int runs = 0;
    for (int poll = 0;; poll += 3) {
        progress.polls = 0;
        progress.cancelAtPoll = poll;
        const OpenSoundsRun run =
            RunText("volume percent=50; try echo; reverse; new; paste-new; invert");
        EXPECT_EQ(progress.openWindows, 0);
        if (!run.outcome.IsCancelled()) break;
        ++runs;
        ASSERT_EQ(State(), before) << poll;
    }
    EXPECT_GT(runs, 3);
}

// Looks from within the script's polls whether a sound is held.
class WatchingProgress : public ProgressFactory {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view) override {
        return std::make_unique<Window>(*this);
    }

    const CSoundDoc* watched = nullptr;
    int heldAtPolls = 0;
    int allPolls = 0;

  private:
    class Window : public ProgressWindow {
      public:
        explicit Window(WatchingProgress& owner) : owner_(owner) {}
        void SetRange(int, int) override {}
        void SetPosition(int) override {}
        bool Poll() override {
            owner_.heldAtPolls += owner_.watched && owner_.watched->IsBeingChanged() ? 1 : 0;
            ++owner_.allPolls;
            return false;
        }

      private:
        WatchingProgress& owner_;
    };
};

TEST_F(OpenSoundsRunTest, NobodyTouchesASoundWhileItsScriptRuns) {
    WatchingProgress watching;
    Workspace own({prompts, watching, clipboard, devices, folder});
    own.SetInitialViewSize(kWidth, kHeight);
    ASSERT_TRUE(own.NewDocument({}));
    watching.watched = own.Active()->document.get();
    const OpenSoundsRun run =
        RunOnOpenSounds({"insert-silence 30000; reverse; undo", {}}, own, codecs, effects);
    ASSERT_TRUE(run.outcome) << run.outcome.Reason();
    EXPECT_GT(watching.allPolls, 3);
    EXPECT_EQ(watching.heldAtPolls, watching.allPolls);
    EXPECT_FALSE(watching.watched->IsBeingChanged());
}

TEST_F(OpenSoundsRunTest, OneProgressWindowShowsTheWholeScript) {
    OpenRamp(60000);
    progress.titles.clear();
    progress.positions.clear();
    ExpectDone("reverse; volume percent=50; invert; volume percent=20");
    EXPECT_EQ(progress.titles, std::vector<std::string>{"Progress Script"});
    EXPECT_TRUE(std::ranges::is_sorted(progress.positions));
    EXPECT_EQ(progress.positions.back(), progress.highest);
}

TEST_F(OpenSoundsRunTest, SoundsThatItOpensOrMakesAreOpenAfterwards) {
    WavParts parts;
    parts.data = ByteBuilder().Little16(1).Little16(2).Little16(3).Bytes();
    const auto path = temporary / "three.wav";
    WriteFileBytes(path, WavBytes(parts));
    OpenRamp(100);
    View().State().SetSelection(10, 30);
    const OpenSoundsRun run = RunText(
        "paste-new\nopen \"three.wav\"; select 0 1; delete\nopen \"three.wav\"\ninfo\nactivate 1");
    ASSERT_TRUE(run.outcome) << run.outcome.Reason();
    EXPECT_EQ(run.newSounds, 3u);
    EXPECT_EQ(run.changedSounds, 0u);
    EXPECT_TRUE(run.printed.starts_with("document 4 title=\"three.wav\" rate=")) << run.printed;
    ASSERT_EQ(sounds.Count(), 4u);
    EXPECT_EQ(sounds.ActiveIndex(), 0u);
    EXPECT_EQ(sounds.At(1).document->Sound().GetFrameCount(), 20u);
    // The file's own document, with what the script did to it as one step.
    CSoundDoc& opened = *sounds.At(2).document;
    EXPECT_EQ(opened.Path(), path);
    EXPECT_EQ(opened.Sound().GetFrameCount(), 2u);
    ASSERT_TRUE(opened.Undo());
    EXPECT_EQ(opened.Sound().GetFrameCount(), 3u);
    // One file is open once, so the second is a sound of its own.
    EXPECT_TRUE(sounds.At(3).document->Path().empty());
    EXPECT_EQ(sounds.At(3).document->Sound().GetFrameCount(), 3u);
}

TEST_F(OpenSoundsRunTest, AScriptPastesThePersonsClipAndKeepsItsOwn) {
    OpenRamp(100);
    View().State().SetSelection(10, 13);
    ASSERT_TRUE(Run(view_command::kCopy));
    ExpectDone("select 0 0; cursor 0; paste; select 50 60; cut");
    EXPECT_EQ(Samples(0, 4), (std::vector<int>{10, 11, 12, 0}));
    View().State().SetSelection(0, 0);
    View().State().SetCursor(0);
    ASSERT_TRUE(Run(view_command::kPaste));
    EXPECT_EQ(Samples(0, 3), (std::vector<int>{10, 11, 12}));
}

TEST_F(OpenSoundsRunTest, AScriptThatChangesNothingLeavesNoStep) {
    OpenRamp(100);
    ExpectDone("reverse; reverse; info; select 3 8; zoom-selection");
    EXPECT_EQ(Document().History().Count(), 0u);
    EXPECT_FALSE(Document().GetModified());
    EXPECT_EQ(View().State().GetSelection().start, 3u);
}

}  // namespace
}  // namespace sonavel::script
