#include "document/undo_history.h"

#include <functional>

#include "document_fixture.h"
#include "support/address_space_limit.h"

namespace sonavel::testing {
namespace {

class UndoHistoryTest : public DocumentTest {
  protected:
    // One 8-bit frame that holds the number of edits made.
    static Sound State(std::uint8_t edits) { return MakeSound({1, 8}, {edits}); }
    // Replaces the whole sound.
    void Edit(UndoHistory& history, std::string_view name, Sound after) {
        StoredRecord record(PlannedRecord(sound_, ReplacesEverything()));
        ASSERT_TRUE(history.Keep(record, sound_));
        NoteResult(record.Record(), sound_.GetDataSize(), after);
        sound_.Adopt(std::move(after));
        history.Add(MakeUndoStep(name, std::move(record)));
    }
    void Edit(UndoHistory& history, std::string_view name, std::uint8_t after) {
        Edit(history, name, State(after));
    }
    unsigned Shown() const { return sound_.Bytes()[0]; }

    CWave sound_{prompts_, progress_};
};

TEST_F(UndoHistoryTest, MenuTextsNameTheEditThatWouldBeUndoneAndTheOneThatWouldBeRedone) {
    using enum UndoHistory::MenuPass;
    UndoHistory history;
    const auto texts = [&] { return history.UndoMenuText(kFirst) + "|" + history.RedoMenuText(); };
    sound_.Adopt(State(0));
    EXPECT_EQ(texts(), "&Undo|&Redo");
    Edit(history, "A", 1);
    Edit(history, "B", 2);
    EXPECT_EQ(texts(), "&UndoB|&Redo");
    ASSERT_TRUE(history.Undo(sound_));
    EXPECT_EQ(texts(), "&UndoA|&RedoB");
    ASSERT_TRUE(history.Undo(sound_));
    EXPECT_EQ(texts(), "&Undo|&RedoA");
    EXPECT_FALSE(history.CurrentPosition().has_value());
    ASSERT_TRUE(history.Redo(sound_));
    EXPECT_EQ(texts(), "&UndoA|&RedoB");
}

TEST_F(UndoHistoryTest, AStepThatCannotBeUndoneSaysSoInBothSpellings) {
    UndoHistory history;
    history.Add({.name = "Copy Sample", .canUndo = false});
    EXPECT_EQ(history.UndoMenuText(UndoHistory::MenuPass::kFirst), "Cant't &UndoCopy Sample");
    EXPECT_EQ(history.UndoMenuText(UndoHistory::MenuPass::kSecond), "Can't &UndoCopy Sample");
    EXPECT_FALSE(history.Undo(sound_));
}

TEST_F(UndoHistoryTest, ThePresentIsStoredOncePerRunAndCountsAmongTheSteps) {
    UndoHistory history;
    sound_.Adopt(State(0));
    for (std::uint8_t i = 1; i <= 3; ++i) Edit(history, "E", i);
    ASSERT_TRUE(history.Undo(sound_));
    EXPECT_EQ(history.Count(), 4u);
    EXPECT_EQ(history.CurrentPosition(), 1u);
    ASSERT_TRUE(history.Undo(sound_));
    EXPECT_EQ(history.Count(), 4u);
    ASSERT_TRUE(history.Redo(sound_));
    ASSERT_TRUE(history.Redo(sound_));
    EXPECT_EQ(Shown(), 3u);
    EXPECT_EQ(history.Count(), 3u);
    EXPECT_FALSE(history.Redo(sound_));
}

TEST_F(UndoHistoryTest, TheMemoryIsThatOfTheSamplesWhicheverOfTheStatesTheDocumentShows) {
    UndoHistory history;
    EXPECT_EQ(history.MemoryBytes(), 0u);
    const auto edit = [&](std::size_t bytesAfter) {
        Edit(history, "E", MakeSound({1, 8}, Bytes(bytesAfter)));
    };
    sound_.Adopt(MakeSound({1, 8}, Bytes(100)));
    edit(20);
    edit(3000);
    EXPECT_EQ(history.MemoryBytes(), 120u);
    ASSERT_TRUE(history.Undo(sound_));  // the document shows 20 bytes, the history keeps the rest
    EXPECT_EQ(history.MemoryBytes(), 3100u);
    ASSERT_TRUE(history.Undo(sound_));
    EXPECT_EQ(history.MemoryBytes(), 3020u);
    ASSERT_TRUE(history.Redo(sound_));
    ASSERT_TRUE(history.Redo(sound_));
    EXPECT_EQ(history.MemoryBytes(), 120u);
    history.Clear();
    EXPECT_EQ(history.MemoryBytes(), 0u);
}

TEST_F(UndoHistoryTest, TheThousandAndFirstStepPushesTheOldestOut) {
    UndoHistory history;
    sound_.Adopt(State(0));
    for (std::size_t i = 0; i <= UndoHistory::kCapacity; ++i)
        Edit(history, std::to_string(i), static_cast<std::uint8_t>(i));
    EXPECT_EQ(history.Count(), UndoHistory::kCapacity);
    EXPECT_EQ(history.StepAt(0).name, "1");
    EXPECT_TRUE(history.Undo(sound_));
    EXPECT_EQ(history.Count(), UndoHistory::kCapacity);
    EXPECT_EQ(history.StepAt(0).name, "2");
    int undone = 1;
    while (history.Undo(sound_)) ++undone;
    EXPECT_EQ(undone, 999);
}

TEST_F(UndoHistoryTest, UndoBringsBackFormatAndMarkersAndMarksModified) {
    auto document = MakeDocument({2, 16}, PatternBytes(40, 1));
    document->Sound().Markers().Add(3, "three", 2);
    const MarkerList markers = document->Sound().Markers();
    Result<SoundEdit> edit = document->BeginEdit("Copy Sample");
    ASSERT_TRUE(edit);
    ASSERT_TRUE(document->Sound().ConvertChannels(1, ChannelChoice::kLeft));
    document->Sound().SetRate(11025);
    document->Sound().Markers().Clear();
    edit->Commit(0);
    document->SetModified(false);
    NotingObserver observer;
    document->AddObserver(&observer);
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 8000));
    EXPECT_EQ(document->Sound().Markers(), markers);
    EXPECT_TRUE(document->GetModified());
    EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{0});
    ASSERT_TRUE(document->Redo());
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(1, 16, 11025));
    EXPECT_TRUE(document->Sound().Markers().Empty());
}

TEST_F(UndoHistoryTest, UndoAndRedoStopPlaying) {
    auto document = MakeDocument({1, 16}, PatternBytes(60000, 1));
    ASSERT_TRUE(edit::Delete(*document, {0, 10, 0}));
    for (Outcome (CSoundDoc::*const step)() : {&CSoundDoc::Undo, &CSoundDoc::Redo}) {
        ASSERT_TRUE(document->Sound().Play(0));
        ASSERT_TRUE(((*document).*step)());
        EXPECT_TRUE(document->Sound().IsStopped());
    }
}

TEST_F(UndoHistoryTest, WithUndoOffEditsStoreNothingAndUndoDoesNothing) {
    WriteOptions("");
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    ASSERT_TRUE(edit::Delete(*document, {2, 4, 0}));
    EXPECT_EQ(document->History().Count(), 0u);
    EXPECT_FALSE(document->Undo());
    EXPECT_EQ(document->Sound().GetFrameCount(), 8u);
}

TEST_F(UndoHistoryTest, AStepKeepsNoMoreThanWhatItsEditReplacedOrMade) {
    const ClipRecord clip = MakeClip({2, 16}, PatternBytes(40, 2));
    const struct {
        const char* name;
        std::function<Outcome(CSoundDoc&)> edit;
        std::uint64_t before, after;  // bytes of frames replaced, and made
    } cases[] = {
        {"delete",
         [](CSoundDoc& d) {
             return edit::Delete(d, {10, 30, 0}).Ended();
         },
         80, 0},
        {"paste",
         [&](CSoundDoc& d) {
             return edit::Paste(d, clip, {0, 0, 5}).Ended();
         },
         0, 40},
        {"replicate",
         [&](CSoundDoc& d) {
             return edit::Paste(d, clip, {2, 4, 0}, 3).Ended();
         },
         8, 120},
        {"mix",
         [&](CSoundDoc& d) {
             return edit::Mix(d, clip, {0, 0, 20}, {1, 1}).Ended();
         },
         40, 40},
        {"mix that grows",
         [&](CSoundDoc& d) {
             return edit::Mix(d, clip, {0, 0, 995}, {1, 1}).Ended();
         },
         20, 40},
        {"mono", [](CSoundDoc& d) { return edit::ConvertFormat(d, 1, ChannelChoice::kLeft, 16); },
         4000, 2000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto document = MakeDocument({2, 16}, PatternBytes(4000, 1));
        ASSERT_TRUE(c.edit(*document));
        EXPECT_EQ(document->History().MemoryBytes(), c.before);
        ASSERT_TRUE(document->Undo());
        EXPECT_EQ(document->History().MemoryBytes(), c.after);
        ASSERT_TRUE(document->Redo());
        EXPECT_EQ(document->History().MemoryBytes(), c.before);
    }
}

#ifndef __SANITIZE_ADDRESS__

TEST_F(UndoHistoryTest, WithoutMemoryForAStepThePersonDecides) {
    constexpr std::size_t kBytes = 64 << 20;
    for (const bool goOn : {false, true}) {
        auto document = MakeDocument({1, 8}, PatternBytes(kBytes, 1));
        ASSERT_TRUE(edit::Delete(*document, {0, 10, 0}));
        ASSERT_TRUE(document->Undo());
        prompts_.questions.clear();
        prompts_.answers = {goOn};
        {
            const AddressSpaceLimit limit(kBytes / 2);
            EXPECT_EQ(bool(edit::Delete(*document, {0, kBytes - 100, 0})), goOn);
        }
        EXPECT_EQ(prompts_.questions.size(), 1u);
        EXPECT_EQ(document->Sound().GetFrameCount(), goOn ? 100 : kBytes);
        EXPECT_EQ(document->CanRedo(), !goOn) << "an edit that was given up keeps the history";
        EXPECT_FALSE(document->CanUndo());
    }
}

#endif

}  // namespace
}  // namespace sonavel::testing
