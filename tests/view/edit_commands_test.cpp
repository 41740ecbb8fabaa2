#include "view/commands/edit_commands.h"

#include <algorithm>

#include "view/commands/marker_commands.h"
#include "view/commands/view_commands.h"
#include "view/draw/first_difference.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using namespace view_command;

class EditCommandsTest : public ViewTest {
  protected:
    // Puts frames of the ramp on the clipboard.
    void CopyFrames(std::uint32_t start, std::uint32_t end) {
        View().State().SetSelection(start, end);
        ASSERT_TRUE(Run(kCopy));
        View().State().SetSelection(0, 0);
    }

    using MarkerRow = std::tuple<std::uint32_t, std::string, std::uint32_t>;  // with its length
    std::vector<MarkerRow> Markers() {
        std::vector<MarkerRow> rows;
        for (const Marker& marker : Sound().Markers().All())
            rows.emplace_back(marker.position, marker.name, marker.length);
        return rows;
    }
};

TEST_F(EditCommandsTest, EveryCommandLeavesSelectionCursorAndLengthAsStated) {
    const struct {
        const char* name;
        int command;
        Selection selection;
        std::uint32_t cursor;
        std::uint32_t frames;  // afterwards, of 5000 with a clip of 1000
        Selection newSelection;
        std::uint32_t newCursor;
    } cases[] = {
        {"cut", kCut, {100, 400}, 4000, 4700, {0, 0}, 100},
        {"copy", kCopy, {100, 400}, 4000, 5000, {100, 400}, 4000},
        {"delete", kDelete, {100, 400}, 4000, 4700, {0, 0}, 100},
        {"paste at the cursor", kPaste, {0, 0}, 700, 6000, {1700, 1700}, 1700},
        {"paste over a selection", kPaste, {100, 400}, 4000, 5700, {100, 1100}, 100},
        {"replicate", kPasteReplicate, {0, 0}, 700, 8000, {3700, 3700}, 3700},
        {"replicate over", kPasteReplicate, {100, 400}, 9, 7700, {100, 3100}, 100},
        {"overwrite", kPasteOverwrite, {100, 400}, 4000, 5000, {100, 400}, 4000},
        {"block overwrite", kPasteBlockOverwrite, {100, 2600}, 9, 5000, {100, 2600}, 9},
        {"block copy", kPasteBlockCopy, {100, 2600}, 9, 5000, {100, 2600}, 9},
        {"mix a selection", kMix, {100, 400}, 4000, 5000, {100, 400}, 100},
        {"mix at the cursor", kMix, {0, 0}, 4500, 5500, {0, 0}, 4500},
        {"crossfade", kCrossfadeMix, {100, 400}, 4000, 5000, {100, 400}, 100},
    };
    OpenRamp(5000);
    CopyFrames(0, 1000);
    const auto clip = clipboard.GetImage();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        OpenRamp(5000);
        ASSERT_TRUE(clipboard.SetImage(*clip));
        View().Zoom().Time(TimeZoomIn);
        const ScrollState zoom = View().Zoom().Horizontal();
        View().State().SetCursor(c.cursor);
        View().State().SetSelection(c.selection.start, c.selection.end);
        EXPECT_TRUE(RunAnswered(c.command)) << ended.Reason();
        EXPECT_EQ(View().FrameCount(), c.frames);
        EXPECT_EQ(View().State().GetSelection(), c.newSelection);
        EXPECT_EQ(View().State().Cursor(), c.newCursor);
        EXPECT_EQ(View().Zoom().Horizontal().maximum, zoom.maximum);
        EXPECT_EQ(Document().GetModified(), c.command != kCopy);
        EXPECT_TRUE(prompts.questions.empty());
    }
}

TEST_F(EditCommandsTest, APixelNeverStandsForLessThanAFrameAfterACut) {
    const struct {
        std::uint32_t frames;
        Selection cut;
    } cases[] = {{5000, {1000, 3000}}, {700, {100, 200}}, {5000, {0, 5000}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.frames);
        OpenRamp(c.frames);
        View().Zoom().Time(TimeZoomFull);
        View().State().SetSelection(c.cut.start, c.cut.end);
        EXPECT_TRUE(Run(kCut));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, c.frames - (c.cut.end - c.cut.start));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, View().FrameCount());
    }
    EXPECT_EQ(View().State().Cursor(), 0u);
    // Pasted into nothing, the sound fills the window again.
    EXPECT_TRUE(Run(kPaste));
    EXPECT_EQ(View().FrameCount(), 5000u);
    EXPECT_EQ(View().Zoom().TimePercent(), 100.0);
}

TEST_F(EditCommandsTest, TheExtremesFollowAnEdit) {
    OpenRamp(2560);
    View().State().SetSelection(512, 1024);
    EXPECT_TRUE(Run(kDelete));
    EXPECT_EQ(View().Extremes().Over(0, 256, 512), (SampleExtremes{511, 256}));
    EXPECT_EQ(View().Extremes().Over(0, 512, 768), (SampleExtremes{1279, 1024}));
    EXPECT_EQ(View().Extremes().BlockCount(), 8u);
}

TEST_F(EditCommandsTest, CommandsSayWhyTheyAreNotOffered) {
    OpenRamp(5000);
    const auto reason = [&](int command) { return Commands().Offered(command).Reason(); };
    for (const int command : {kCut, kCopy, kDelete, kZoomSelection, kPasteOverwrite})
        EXPECT_EQ(reason(command), "Nothing is selected.");
    for (const int command : {kPaste, kPasteNew, kMix, kPasteReplicate, kClipboardContents})
        EXPECT_EQ(reason(command), "The clipboard holds no wave data.");
    EXPECT_EQ(reason(kUndo), "There is nothing to undo.");
    EXPECT_EQ(reason(kRedo), "There is nothing to redo.");
    View().State().SetSelection(10, 20);
    EXPECT_EQ(reason(kPasteNew), "") << "a selection alone is enough";
    EXPECT_EQ(reason(kPasteBlockCopy), "The clipboard holds no wave data.");
    EXPECT_EQ(reason(kCut), "");
    EXPECT_FALSE(Run(kUndo));
    EXPECT_EQ(ended.Reason(), "There is nothing to undo.");
}

TEST_F(EditCommandsTest, ACommandThatAsksIsRefusedUnlessItIsAnswered) {
    OpenRamp(5000);
    CopyFrames(0, 100);
    const FileBytes before = Bytes();
    for (const int command : {kMix, kCrossfadeMix, kPasteReplicate, kGoToCursor, kZoomUser})
        EXPECT_FALSE(Run(command));
    for (const int count : {0, 1001})
        EXPECT_EQ(PasteReplicate(View(), count), Failed("A clip is pasted 1 to 1000 times."));
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(Document().History().Count(), 0u);
}

TEST_F(EditCommandsTest, TheMixesAskAboutTheirRangeAndTakeGainsInPercent) {
    const auto shown = [&] {
        const Result<MixQuestion> question = PrepareMix(View());
        EXPECT_TRUE(question);
        return std::tuple(question->startFrame, question->endFrame, question->bits);
    };
    OpenRamp(5000);
    CopyFrames(1000, 1100);
    View().State().SetCursor(200);
    EXPECT_EQ(shown(), std::tuple(200u, 299u, 16u));
    EXPECT_TRUE(MixClipboard(View(), {50, 200}));
    EXPECT_EQ(Samples(199, 3), (std::vector<int>{199, 500 + 400, 500 + 402}));
    View().State().SetSelection(3000, 3002);
    EXPECT_EQ(shown(), std::tuple(3000u, 3002u, 16u));
    EXPECT_TRUE(CrossfadeMixClipboard(View(), {100, 0, 0, 100}));
    EXPECT_EQ(Samples(3000, 2), (std::vector<int>{1000, 3001}));
    OpenRamp(100, 1, 8);
    CopyFrames(0, 10);
    EXPECT_EQ(shown(), std::tuple(0u, 9u, 8u));
}

TEST_F(EditCommandsTest, ClipboardContentsShowsAndPlaysTheClip) {
    OpenRamp(5000, 2, 16, 44100);
    CopyFrames(0, 441);
    const Result<ClipboardContents> contents = ReadClipboardContents(View());
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->attributes, "44,100 Hz, 16-bit, Stereo");
    EXPECT_EQ(contents->totalBytes, 441u * 4);
    EXPECT_EQ(contents->samples, 441u);
    EXPECT_DOUBLE_EQ(contents->seconds, 0.01);
    const auto player = MakeClipPlayer(View());
    player->Play();
    EXPECT_TRUE(devices.Out().open);
    player->Stop();
    EXPECT_FALSE(devices.Out().open);
}

TEST_F(EditCommandsTest, UndoFitsTheWindowAndRedoKeepsTheZoomWithTheEditInSight) {
    OpenRamp(6400);
    View().State().SetSelection(3000, 3100);
    EXPECT_TRUE(Run(kDelete));
    const std::pair<std::int64_t, std::int64_t> positions[] = {{2900, 2900},  // in sight already
                                                               {0, 3000 - kWidth / 2}};
    for (const auto& [before, after] : positions) {
        View().Zoom().Time(TimeZoomFull);
        EXPECT_TRUE(Run(kUndo));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
        EXPECT_EQ(View().FrameCount(), 6400u);
        View().Zoom().Time(TimeZoomFull);
        View().Zoom().ScrollHorizontallyTo(before);
        EXPECT_TRUE(Run(kRedo));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, 6300) << "a frame a pixel, as before";
        EXPECT_EQ(View().Zoom().Horizontal().position, after);
    }
}

// Leads from `after` back to `before`.
UndoStep StepBefore(const EditPlan& plan, const class Sound& before, const class Sound& after) {
    EditRecord record = PlannedRecord(before, plan);
    EXPECT_TRUE(TakeSamples(record, before));
    NoteResult(record, before.GetDataSize(), after);
    return MakeUndoStep("E", std::move(record));
}

TEST_F(EditCommandsTest, TheFirstDifferenceIsFoundInSoundsOfAnyLength) {
    constexpr std::uint32_t kFrames = 100'000;
    OpenRamp(kFrames, 2);
    const auto before = *Sound().Copy();
    const UndoStep whole = StepBefore(ReplacesEverything(), before, Sound());
    EXPECT_EQ(FirstDifferentFrame(whole, Sound()), kFrames) << "none";
    for (const std::uint32_t frame : {99'999u, 70'000u, 32'768u, 16'384u, 16'383u, 1u, 0u}) {
        Sound().SetSample(1, frame, 12345);
        EXPECT_EQ(FirstDifferentFrame(whole, Sound()), frame);
    }
    Sound().Adopt({before.GetFormat(), {}, {}});
    EXPECT_EQ(FirstDifferentFrame(StepBefore(ReplacesEverything(), before, Sound()), Sound()), 0u);
    Sound().GrowWithSilence(1);
    EXPECT_EQ(FirstDifferentFrame(StepBefore(ReplacesEverything(), before, Sound()), Sound()), 1u)
        << "the shorter one's end";
    Sound().SetRate(5);
    EXPECT_EQ(FirstDifferentFrame(StepBefore(ReplacesEverything(), before, Sound()), Sound()), 0u)
        << "another format";
}

TEST_F(EditCommandsTest, TheFirstDifferenceMayLieBehindTheFramesThatWereReplaced) {
    OpenRamp(100, 1);
    std::vector<std::uint8_t> bytes(200);
    std::ranges::fill(std::span(bytes).subspan(120), std::uint8_t{1});  // frames 60 to 100
    std::ranges::copy(bytes, Sound().MutableBytes().begin());
    const auto before = *Sound().Copy();
    const auto differs = [&](const EditPlan& plan) {
        return FirstDifferentFrame(StepBefore(plan, before, Sound()), Sound());
    };
    ASSERT_TRUE(Sound().RemoveFrames(20, 30));
    EXPECT_EQ(differs(ReplacesFrames(20, 30)), 50u) << "silence taken from silence";
    Sound().Adopt(*before.Copy());
    ASSERT_TRUE(Sound().InsertFrames(20, std::span(bytes).first(20)));
    EXPECT_EQ(differs(InsertsAt(20)), 60u) << "silence put into silence";
    ASSERT_TRUE(Sound().RemoveFrames(15, 30));
    EXPECT_EQ(differs(ReplacesFrames(15, 20)), 55u) << "less silence than there was";
}

TEST_F(EditCommandsTest, UndoClampsSelectionAndCursorToTheShorterSound) {
    OpenRamp(1000);
    CopyFrames(0, 1000);
    View().State().SetCursor(1000);
    EXPECT_TRUE(Run(kPaste));
    EXPECT_EQ(View().State().Cursor(), 2000u);
    View().State().SetSelection(500, 1900);
    EXPECT_TRUE(Run(kUndo));
    EXPECT_EQ(View().State().Cursor(), 1000u);
    EXPECT_EQ(View().State().GetSelection(), (Selection{500, 1000}));
}

TEST_F(EditCommandsTest, MarkerCommandsClampMarkModifiedAndReportWhatIsMissing) {
    OpenRamp(1000);
    View().State().SetCursor(300);
    EXPECT_TRUE(Run(kDropMarker));
    EXPECT_EQ(Markers(), (std::vector<MarkerRow>{{300, "Marker 1", 0}}));
    EXPECT_TRUE(Document().GetModified());
    const std::uint32_t id = AddMarker(View(), 5000, "end", 10);
    EXPECT_EQ(Markers().at(1), MarkerRow(1000, "end", 0));
    EXPECT_TRUE(SetMarker(View(), id, 900, "", 500));
    EXPECT_EQ(Markers().at(1), MarkerRow(900, "end", 100));
    EXPECT_FALSE(SetMarker(View(), 99, 1, "", 0));
    for (const std::uint32_t frame : {500u, 600u}) EXPECT_EQ(NearestMarkerId(View(), frame), 1u);
    EXPECT_EQ(RemoveMarker(View(), 99), Failed("There is no such marker."));
    EXPECT_EQ(NearestMarkerId(View(), 601), id);
}

TEST_F(EditCommandsTest, TheMarkersAreAskedAboutWithTheSoundAndTheSelectionOrTheCursor) {
    using Start = MarkerDialogRequest::Start;
    OpenRamp(1000, 1, 16, 8000);
    View().State().SetCursor(70);
    EXPECT_EQ(NearestMarkerId(View(), 5), 0u);
    const Result<MarkerDialogRequest> first = QuestionOfMarkers(View(), Start::kAdd, 0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->newPosition, 70u);
    EXPECT_EQ(first->frameCount, 1000u);
    EXPECT_EQ(first->samplesPerSecond, 8000u);
    EXPECT_TRUE(first->markers.Empty());
    EXPECT_TRUE(Run(kDropMarker));
    View().State().SetSelection(400, 450);
    const Result<MarkerDialogRequest> second = QuestionOfMarkers(View(), Start::kEdit, 1);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->start, Start::kEdit);
    EXPECT_EQ(second->markerId, 1u);
    EXPECT_EQ(second->newPosition, 400u);
    EXPECT_EQ(second->newLength, 50u);
    EXPECT_EQ(second->markers.Count(), 1u);
    OpenRamp(0);
    EXPECT_FALSE(QuestionOfMarkers(View(), Start::kAdd, 0));
}

TEST_F(EditCommandsTest, TheAnsweredEditsOfMarkersAreOneEditOrNone) {
    using Kind = MarkerEdit::Kind;
    OpenRamp(1000);
    AddMarker(View(), 100, "a", 0);
    AddMarker(View(), 200, "b", 0);
    Watch();
    const MarkerEdit edits[] = {
        {Kind::kDelete, 1, 0, "", 0}, {Kind::kSet, 2, 250, "c", 5}, {Kind::kAdd, 0, 400, "d", 50}};
    EXPECT_TRUE(EditMarkers(View(), edits));
    EXPECT_EQ(Markers(), (std::vector<MarkerRow>{{250, "c", 5}, {400, "d", 50}}));
    for (const ViewArea area : {ViewArea::kMarkerStrip, ViewArea::kWaveform})
        EXPECT_EQ(std::ranges::count(window.areas, area), 1);
    EXPECT_TRUE(Run(kUndo));
    EXPECT_EQ(Markers(), (std::vector<MarkerRow>{{100, "a", 0}, {200, "b", 0}}));
    const MarkerEdit twice[] = {{Kind::kDelete, 1, 0, "", 0}, {Kind::kDelete, 1, 0, "", 0}};
    EXPECT_EQ(EditMarkers(View(), twice), Failed("There is no such marker."));
    EXPECT_EQ(Markers().size(), 2u);
    EXPECT_TRUE(Document().CanRedo());
}

TEST_F(EditCommandsTest, MarkerStepsFitTheWindowOnUndoAndShowTheMarkerOnRedo) {
    OpenRamp(6400);
    AddMarker(View(), 3000, "a", 0);
    AddMarker(View(), 5000, "b", 0);
    EXPECT_TRUE(RemoveMarker(View(), 1));
    EXPECT_TRUE(SetMarker(View(), 2, 4000, "", 0));
    const std::uint32_t places[] = {3000, 5000, 3000, 4000};
    for (std::size_t i = std::size(places); i-- > 0;) {
        EXPECT_EQ(Commands().MenuTextOfCommand(kUndo), "&UndoMarker");
        View().Zoom().Time(TimeZoomFull);
        EXPECT_TRUE(Run(kUndo));
        EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
        EXPECT_EQ(Markers().size(), std::size_t{i == 0 ? 0u : i == 2 ? 2u : 1u});
    }
    View().Zoom().Time(TimeZoomFull);
    for (const std::uint32_t place : places) {
        View().Zoom().ScrollHorizontallyTo(0);
        EXPECT_TRUE(Run(kRedo));
        EXPECT_EQ(View().Zoom().Horizontal().position, place - kWidth / 2);
    }
    EXPECT_EQ(Markers(), (std::vector<MarkerRow>{{4000, "b", 0}}));
}

TEST_F(EditCommandsTest, WhatRunsBesideLongWorkAsksNothingAndChangesNoSound) {
    OpenRamp(5000);
    View().State().SetCursor(300);
    ASSERT_TRUE(Run(kDropMarker));
    Document().SetModified(false);
    const std::vector<std::uint8_t> before(Sound().Bytes().begin(), Sound().Bytes().end());
    const std::vector<MarkerRow> markers = Markers();
    for (const auto& row : ViewCommands()) {
        if (row.info.whileWorking == WhileWorking::kWaits) continue;
        SCOPED_TRACE(row.info.prompt);
        ASSERT_TRUE(row.run);
        View().State().SetSelection(100, 400);
        static_cast<void>(Run(row.info.id));  // some find nothing to go to
        EXPECT_TRUE(std::ranges::equal(Sound().Bytes(), before));
        EXPECT_EQ(Markers(), markers);
        EXPECT_FALSE(Document().GetModified());
    }
}

}  // namespace
}  // namespace sonavel
