// What was done to a document, as a script that does it again.
#include "document/step_script.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <sstream>

#include "document/edit_operations.h"
#include "effects/convert_format.h"
#include "effects/effect_runner.h"
#include "effects/resample.h"
#include "platform/headless/headless_progress.h"
#include "script/command_rows.h"
#include "script/script_runner.h"
#include "spatial/crosstalk.h"
#include "spatial/spatializer.h"
#include "view/commands/label_commands.h"
#include "view/commands/marker_commands.h"
#include "view/view_fixture.h"

namespace sonavel::script {
namespace {

class StepScriptTest : public OpenViewTest {
  protected:
    void Open(sonavel::Sound&& sound) override {
        sounds.NewDocumentFromSound(std::move(sound), "Ramp_");
    }
    CSoundView& View() override { return *sounds.Active()->view; }
    SoundViewCommands& Commands() override { return *sounds.Active()->commands; }

    void OpenNoise(std::uint32_t frames, unsigned channels, unsigned bits, unsigned seed) {
        SetInitialSize();
        OpenRamp(frames, channels, bits, 8000);
        std::mt19937 noise(seed);
        for (std::uint32_t frame = 0; frame < frames; ++frame)
            for (unsigned channel = 0; channel < channels; ++channel)
                Sound().SetSample(channel, frame,
                                  static_cast<int>(noise() % 200) * (bits == 8 ? 1 : 100) - 99);
        auto copy = Sound().Copy();
        ASSERT_TRUE(copy);
        original = std::move(*copy);
    }
    void SetInitialSize() { sounds.SetInitialViewSize(kWidth, kHeight); }

    std::string Text() {
        Document().EndMarkerEdit();
        return Document().Steps().Text();
    }

    // What the script makes of the sound as it was.
    sonavel::Sound Replayed(const std::string& text) {
        std::ostringstream out;
        ScriptedPrompts scripted(out);
        MemoryClipboard own;
        HeadlessProgress silent;
        ScriptSession session({scripted, silent, own, devices, folder}, {scripted, codecs, out});
        auto copy = original.Copy();
        session.Sounds().NewDocumentFromSound(std::move(*copy), "Again");
        const ParsedScript parsed = ParseScript(text, AllCommandRows());
        for (const GrammarMistake& mistake : parsed.mistakes)
            ADD_FAILURE() << mistake.line << ' ' << mistake.text;
        ScriptWatcher watcher;
        const ScriptEnd end = RunCommands(parsed, session, watcher);
        EXPECT_EQ(end.kind, ScriptEnd::Kind::kSucceeded)
            << end.line << ' ' << end.command << ' ' << end.reason;
        return session.Document().Sound().Exchange({});
    }
    void ExpectReplayed() {
        const std::string text = Text();
        const sonavel::Sound again = Replayed(text);
        EXPECT_EQ(FileBytes(again.Bytes().begin(), again.Bytes().end()) == Bytes(), true) << text;
        EXPECT_EQ(again.GetFormat(), Sound().GetFormat()) << text;
        EXPECT_EQ(again.Markers(), Sound().Markers()) << text;
    }

    // --- Edits by chance

    std::uint32_t Any(std::uint32_t most) {
        return most == 0 ? 0 : static_cast<std::uint32_t>(random() % (std::uint64_t{most} + 1));
    }
    void AnyPlace() {
        const std::uint32_t frames = View().FrameCount();
        const bool selects = Any(2) > 0;
        const std::uint32_t a = Any(frames);
        View().State().SetSelection(a, selects ? Any(frames) : a);
        View().State().SetCursor(Any(frames));
    }
    Outcome AnyEffect() {
        const auto rows = Effects();
        const Effect& effect = rows[Any(static_cast<std::uint32_t>(rows.size()) - 1)];
        std::vector<double> values;
        for (const EffectParameter& parameter : effect.parameters) {
            const double decimals = std::pow(10, std::max(parameter.decimals, 0));
            const double share = Any(1000) / 1000.0;
            const double value = parameter.least + share * (parameter.greatest - parameter.least);
            values.push_back(std::round(value * decimals) / decimals);
        }
        // Its filters go on from one run to the next, and a long sound is no better test.
        if (effect.commandId == effect_command::kEqualizer ||
            effect.commandId == effect_command::kTempo)
            return Done();
        const Applying applying = Any(1) ? Applying::kAlways : Applying::kAsOk;
        return ApplyEffectTo(View(), effects, effect, values, applying);
    }
    Outcome AnyMarkers() {
        const auto& markers = Sound().Markers().All();
        const std::uint32_t place = Any(View().FrameCount());
        if (View().FrameCount() == 0) return Done();
        const std::uint32_t kind = Any(3);
        if (kind == 0 || markers.empty()) {
            AddMarker(View(), place, Any(1) ? "a \"b\" \\c;#" : "", Any(100));
            return Done();
        }
        const std::uint32_t id = markers[Any(static_cast<std::uint32_t>(markers.size()) - 1)].id;
        if (kind == 1) return SetMarker(View(), id, place, "", Any(100));
        if (kind == 2) return RemoveMarker(View(), id);
        DragMarker(View(), id, place);
        return Done();
    }
    Outcome AnyPlacing() {
        const Selection at = View().State().GetSelection();
        const auto number = [&] { return static_cast<float>(Any(1000000)) / 77777.0f - 5; };
        Placing placing{.points = {{number(), number(), number()}}};
        if (Any(1)) {
            placing.kind = PlacingKind::kPath;
            placing.points.push_back({number(), number(), number()});
            placing.doppler = Any(1) ? Doppler::kOn : Doppler::kOff;
        }
        if (Any(1)) placing.smoothness = Smoothness::kSmooth;
        return SpatializePlaced({Document(), at.start, at.end, "x"}, placing, ears);
    }
    Outcome AnyFormat() {
        static constexpr unsigned kBits[] = {8, 16, 32};
        const auto choice = static_cast<ChannelChoice>(Any(2));
        if (Any(1)) return edit::ConvertFormat(Document(), 1 + Any(1), choice, kBits[Any(2)]);
        const unsigned bits = kBits[Any(2)];
        const bool isFloat = Sound().GetBits() == 32;
        return ConvertView(View(), {.samplesPerSecond = 4000 + 1000 * Any(4),
                                    .rate = Any(1) ? FormatChange::Rate::kResampled
                                                   : FormatChange::Rate::kNewSpeed,
                                    .bits = bits,
                                    .rounding = isFloat ? Rounding::kDithered : Rounding::kPlain,
                                    .channels = 1 + Any(1),
                                    .choice = choice});
    }
    Outcome AnyEdit() {
        using namespace view_command;
        static constexpr int kPlain[] = {kCut,
                                         kCopy,
                                         kPaste,
                                         kPaste,
                                         kDelete,
                                         kCrop,
                                         kPasteOverwrite,
                                         kPasteBlockOverwrite,
                                         kPasteBlockCopy,
                                         kUndo,
                                         kUndo,
                                         kRedo,
                                         kDropMarker,
                                         kMarkerFromSelection};
        const Selection at = View().State().GetSelection();
        switch (Any(16)) {
            case 0:
                return AnyMarkers();
            case 1:
                return AnyMarkers();
            case 2:
            case 3:
                return AnyEffect();
            case 4:
                return RunAnswered(kMix) ? Done() : ended;
            case 5:
                return RunAnswered(kCrossfadeMix) ? Done() : ended;
            case 6:
                return RunAnswered(kPasteReplicate) ? Done() : ended;
            case 7:
                return InsertSilence(View(), Any(300));
            case 8:
                return Any(3) ? Done() : AnyFormat();
            case 9:
                return Any(5) ? Done() : ResampleView(View(), 4000 + 1000 * Any(8));
            case 10:
                return Any(5) ? Done() : AnyPlacing();
            case 11:
                return LearnNoiseFrom({Document(), at.start, at.end, effects});
            case 12:
                return CancelCrosstalk(Document(), at.start, at.end, 5 + Any(85), ears);
            default:
                return Run(kPlain[Any(std::size(kPlain) - 1)]) ? Done() : ended;
        }
    }

    ChildCodecs codecs;
    EffectState effects;
    Listener ears;
    Workspace sounds{services};
    sonavel::Sound original;
    std::mt19937 random;
};

TEST_F(StepScriptTest, RandomEditsComeOutTheSame) {
    std::set<std::string> commands;
    int compared = 0;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        random.seed(seed);
        effects = {};
        SCOPED_TRACE(seed);
        OpenNoise(2000, 1 + seed % 2, seed % 3 == 0 ? 8 : 16, seed);
        for (int i = 0; i < 30 && View().FrameCount() < 50000; ++i) {
            AnyPlace();
            static_cast<void>(AnyEdit());
        }
        const std::string text = Text();
        // A clip or a noise of a state that the script does not come to is said to be missing.
        if (text.find("from elsewhere") != std::string::npos) continue;
        EXPECT_FALSE(text.starts_with("# ") || text.find("\n# ") != std::string::npos) << text;
        ExpectReplayed();
        if (HasFailure()) return;
        ++compared;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);)
            commands.insert(line.substr(0, line.find(' ')));
    }
    EXPECT_GE(compared, 4);
    EXPECT_GE(commands.size(), 20u);
}

TEST_F(StepScriptTest, SaysEachEditWithItsPlaceAndLeavesOutWhatWasUndone) {
    using namespace view_command;
    OpenNoise(1000, 1, 16, 1);
    EXPECT_TRUE(Document().Steps().IsEmpty());
    View().State().SetSelection(100, 200);
    ASSERT_TRUE(Run(kCut));
    View().State().SetCursor(5);
    ASSERT_TRUE(Run(kPaste));
    AddMarker(View(), 7, "say \"a\"", 3);
    ASSERT_TRUE(Run(kUndo));
    ASSERT_TRUE(Run(kUndo));
    EXPECT_EQ(Text(), "select 100 200\ncut\n");
    ASSERT_TRUE(Run(kRedo));
    const std::string pasted = "select 100 200\ncut\nselect 0 0\ncursor 5\npaste\n";
    EXPECT_EQ(Text(), pasted);
    ASSERT_TRUE(Run(kRedo));
    EXPECT_EQ(Text(), pasted + "marker-add 7 name=\"say \\\"a\\\"\" length=3\n");
    ASSERT_TRUE(Run(kUndo));
    View().State().SetSelection(1, 3);
    ASSERT_TRUE(Run(kDelete));  // what could be redone is gone
    EXPECT_EQ(Text(), pasted + "select 1 3\ndelete\n");
}

TEST_F(StepScriptTest, AClipThatWasCopiedBeforeIsCopiedInItsPlace) {
    using namespace view_command;
    OpenNoise(1000, 1, 16, 1);
    View().State().SetSelection(100, 200);
    ASSERT_TRUE(Run(kCut));
    ASSERT_TRUE(Run(kUndo));
    View().State().SetSelection(0, 10);
    ASSERT_TRUE(Run(kDelete));
    View().State().SetSelection(0, 0);
    View().State().SetCursor(0);
    ASSERT_TRUE(Run(kPaste));
    EXPECT_EQ(Text(), "select 100 200\ncopy\nselect 0 10\ndelete\nselect 0 0\ncursor 0\npaste\n");
    ExpectReplayed();
}

// It is known by where it comes from and not by what it holds, which would take long to read.
TEST_F(StepScriptTest, ALargeClipIsItsOwnUntilAnotherOneIsCopied) {
    using namespace view_command;
    constexpr std::uint32_t kFrames = (17u << 20) + 5;
    const std::string all = "select 0 " + std::to_string(kFrames) + "\n";
    const std::string pasted = all + "copy\n" + all + "delete\nselect 0 0\ncursor 0\npaste\n";
    enum { kSame, kCopiedAgain, kOfAnotherSound, kOfAnotherProgram };
    for (const int where : {kSame, kCopiedAgain, kOfAnotherSound, kOfAnotherProgram}) {
        SCOPED_TRACE(where);
        SetInitialSize();
        while (sounds.Count() > 0) sounds.Close(0);
        OpenRamp(kFrames, 1, 8, 8000);
        View().State().SetSelection(0, kFrames);
        ASSERT_TRUE(Run(kCopy));
        if (where == kCopiedAgain) {
            ASSERT_TRUE(Run(kCopy));
        } else if (where == kOfAnotherSound) {
            OpenRamp(kFrames, 1, 8, 8000);
            View().State().SetSelection(0, kFrames);
            ASSERT_TRUE(Run(kCopy));
            sounds.Activate(0);
        } else if (where == kOfAnotherProgram) {
            const std::optional<std::vector<std::uint8_t>> image = clipboard.GetImage();
            clipboard.PutFromElsewhere(*image);
        }
        ASSERT_TRUE(Run(kDelete));
        ASSERT_TRUE(Run(kPaste));
        if (where == kSame || where == kCopiedAgain)
            EXPECT_EQ(Text(), pasted);
        else
            EXPECT_NE(Text().find(", of a clip from elsewhere\n"), std::string::npos) << Text();
    }
}

TEST_F(StepScriptTest, WhatNoScriptCanDoIsAComment) {
    using namespace view_command;
    OpenRamp(50, 1, 16, 8000);
    View().State().SetSelection(0, 20);
    ASSERT_TRUE(Run(kCopy));
    OpenNoise(1000, 1, 16, 1);
    ASSERT_TRUE(Run(kPaste));
    EXPECT_EQ(Text(), "# An edit that no script can do: Copy Sample, of a clip from elsewhere\n");
    ASSERT_TRUE(Run(kUndo));
    View().State().SetSelection(0, 20);
    ASSERT_TRUE(Run(kCopy));  // as many frames of its own
    View().State().SetSelection(5, 5);
    ASSERT_TRUE(Run(kPaste));
    ExpectReplayed();
    EXPECT_EQ(Text().find('#'), std::string::npos);
    // A placing that was cancelled is kept as far as it came.
    progress.cancelAtPoll = 0;
    ASSERT_TRUE(SpatializePlaced({Document(), 0, 0, "x"}, {.points = {{1, 2, 3}}}, ears));
    EXPECT_TRUE(Text().ends_with("# An edit that no script can do: Copy Sample\n")) << Text();
}

}  // namespace
}  // namespace sonavel::script
