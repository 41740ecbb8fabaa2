#include "document/undo_history.h"

#include <random>

#include "document_fixture.h"
#include "support/address_space_limit.h"

namespace sonavel::testing {
namespace {

class UndoHistoryTest : public DocumentTest {
  protected:
    // One 8-bit frame that holds the number of edits made.
    static Sound State(std::uint8_t edits) { return MakeSound({1, 8}, {edits}); }
    void Edit(UndoHistory& history, std::string name, std::uint8_t after) {
        history.Add({.name = std::move(name), .sound = *sound_.Copy()});
        sound_.Adopt(State(after));
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
    history.Add({.name = "Copy Sample", .sound = State(0), .canUndo = false});
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
        history.Add({.name = "E", .sound = *sound_.Copy()});
        sound_.Adopt(MakeSound({1, 8}, Bytes(bytesAfter)));
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
    for (std::size_t i = 0; i <= UndoHistory::kCapacity; ++i)
        history.Add({.name = std::to_string(i), .sound = {}});
    EXPECT_EQ(history.Count(), UndoHistory::kCapacity);
    EXPECT_EQ(history.StepAt(0).name, "1");
    EXPECT_TRUE(history.Undo(sound_));
    EXPECT_EQ(history.Count(), UndoHistory::kCapacity);
    EXPECT_EQ(history.StepAt(0).name, "2");
    int undone = 1;
    while (history.Undo(sound_)) ++undone;
    EXPECT_EQ(undone, 999);
}

enum class EditKind { kSound, kMarkers, kUnrecorded };

// What a history means: a row of states with a place in it.
struct PlainHistory {
    struct State {
        Bytes bytes;
        MarkerList markers;
        bool onlyMarkersDiffer = false;  // from the state before
    };

    explicit PlainHistory(const CWave& sound) : states{{BytesOf(sound), sound.Markers()}} {}

    void Edit(const CWave& sound, EditKind kind) {
        states.resize(place + 1);
        if (kind != EditKind::kUnrecorded) {
            states.push_back({BytesOf(sound), sound.Markers(), kind == EditKind::kMarkers});
            ++place;
            return;
        }
        // What no step holds stays when the markers before it are taken back.
        std::size_t i = place;
        states[i].bytes = BytesOf(sound);
        for (; i > 0 && states[i].onlyMarkersDiffer; --i) states[i - 1].bytes = states[i].bytes;
    }

    std::vector<State> states;
    std::size_t place = 0;
};

class HistoryWalk : public DocumentTest, public ::testing::WithParamInterface<unsigned> {
  protected:
    EditSelection RandomSelection(std::uint32_t frames) {
        std::uint32_t a = random_() % (frames + 1), b = random_() % (frames + 1);
        return {std::min(a, b), std::max(a, b),
                static_cast<std::uint32_t>(random_() % (frames + 1))};
    }
    // False when nothing came about.
    bool RandomMarkerEdit(CSoundDoc& document) {
        MarkerList markers = document.Sound().Markers();
        const auto frame =
            static_cast<std::uint32_t>(random_() % (document.Sound().GetFrameCount() + 1));
        if (random_() % 2 == 0)
            markers.Add(frame, "", 0);
        else if (random_() % 2 == 0 || !markers.Remove(1))
            markers.Set(1, frame, "set", 1);
        const bool changes = markers != document.Sound().Markers();
        document.SetMarkers(std::move(markers));
        return changes;
    }
    bool RandomEdit(CSoundDoc& document, EditKind& edit) {
        const unsigned kind = random_() % 8;
        edit = kind < 5 ? EditKind::kSound : kind < 7 ? EditKind::kMarkers : EditKind::kUnrecorded;
        return edit == EditKind::kMarkers ? RandomMarkerEdit(document)
                                          : bool(RandomSoundEdit(document, kind));
    }
    Result<EditSelection> RandomSoundEdit(CSoundDoc& document, unsigned kind) {
        const EditSelection at = RandomSelection(document.Sound().GetFrameCount());
        const ClipRecord clip = MakeClip({2, 16}, PatternBytes(4 * (1 + random_() % 9), random_()));
        switch (kind) {
            case 0:
                return edit::Cut(document, at);
            case 1:
                return edit::Delete(document, at);
            case 2:
                return edit::Paste(document, clip, at);
            case 3:
                return edit::Paste(document, clip, at, 3);
            case 4:
                return edit::Mix(document, clip, at, {0.5, 0.5});
            default:
                return edit::PasteBlockOverwrite(document, clip, at);
        }
    }

    std::mt19937 random_{GetParam()};
};

TEST_P(HistoryWalk, AgreesWithARowOfStates) {
    auto document = MakeDocument({2, 16}, PatternBytes(80, 1));
    PlainHistory model(document->Sound());
    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE(step);
        const unsigned choice = random_() % 3;
        if (choice == 0) {
            const bool can = model.place > 0;
            ASSERT_EQ(document->Undo().IsDone(), can);
            if (can) --model.place;
        } else if (choice == 1) {
            const bool can = model.place + 1 < model.states.size();
            ASSERT_EQ(document->Redo().IsDone(), can);
            if (can) ++model.place;
        } else {
            EditKind kind{};
            if (RandomEdit(*document, kind)) model.Edit(document->Sound(), kind);
        }
        ASSERT_EQ(BytesOf(document->Sound()), model.states[model.place].bytes);
        ASSERT_EQ(document->Sound().Markers(), model.states[model.place].markers);
        ASSERT_EQ(document->CanUndo(), model.place > 0);
        ASSERT_EQ(document->CanRedo(), model.place + 1 < model.states.size());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryWalk, ::testing::Range(1u, 9u));

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

TEST_F(UndoHistoryTest, UndoneStatesAreMovedAndNotCopied) {
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    ASSERT_TRUE(edit::Paste(*document, MakeClip({1, 8}, PatternBytes(4, 2)), {}));
    const std::uint8_t* const present = document->Sound().Bytes().data();
    ASSERT_TRUE(document->Undo());
    EXPECT_NE(document->Sound().Bytes().data(), present);
    ASSERT_TRUE(document->Redo());
    EXPECT_EQ(document->Sound().Bytes().data(), present);
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
            EXPECT_EQ(bool(edit::Delete(*document, {0, 100, 0})), goOn);
        }
        EXPECT_EQ(prompts_.questions.size(), 1u);
        EXPECT_EQ(document->Sound().GetFrameCount(), kBytes - (goOn ? 100 : 0));
        EXPECT_EQ(document->CanRedo(), !goOn) << "an edit that was given up keeps the history";
        EXPECT_FALSE(document->CanUndo());
    }
}

#endif

}  // namespace
}  // namespace sonavel::testing
