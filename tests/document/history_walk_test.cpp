// Random walks through edits, undos and redos beside a history of plain whole copies.
#include <random>

#include "document_fixture.h"

namespace sonavel::testing {
namespace {

enum class EditKind { kSound, kMarkers, kUnrecorded };

// What a history means: a row of states with a place in it.
struct PlainHistory {
    struct State {
        Bytes bytes;
        PcmFormat format;
        MarkerList markers;
        bool onlyMarkersDiffer = false;  // from the state before
    };

    explicit PlainHistory(const CWave& sound) : states{StateOf(sound)} {}

    static State StateOf(const CWave& sound) {
        return {BytesOf(sound), sound.GetFormat(), sound.Markers()};
    }
    void Edit(const CWave& sound, EditKind kind) {
        states.resize(place + 1);
        State now = StateOf(sound);
        if (kind != EditKind::kUnrecorded) {
            now.onlyMarkersDiffer = kind == EditKind::kMarkers;
            states.push_back(std::move(now));
            ++place;
            return;
        }
        // What no step holds stays when the markers before it are taken back.
        now.onlyMarkersDiffer = states[place].onlyMarkersDiffer;
        states[place] = std::move(now);
        for (std::size_t i = place; i > 0 && states[i].onlyMarkersDiffer; --i) {
            states[i - 1].bytes = states[i].bytes;
            states[i - 1].format = states[i].format;
        }
    }

    std::vector<State> states;
    std::size_t place = 0;
};

// Does with another document what the records say, as a journal would, and hears nothing else.
struct Follower : HistoryListener {
    CSoundDoc* copy = nullptr;
    Outcome last = Done();

    void OnHistoryChange(const HistoryChange& change, const Sound& now) override {
        switch (change.kind) {
            case HistoryChange::Kind::kUndone:
                last = copy->Undo();
                return;
            case HistoryChange::Kind::kRedone:
                last = copy->Redo();
                return;
            case HistoryChange::Kind::kForgotten:
                return;
            default:
                last = Repeat(change, now);
        }
    }
    Outcome Repeat(const HistoryChange& change, const Sound& now) {
        Result<EditRecord> made = CounterpartOf(*change.record, now);
        return made ? copy->ApplyRecord(change.stepName, std::move(*made)) : made.Ended();
    }
};

struct WalkCase {
    unsigned seed;
    Format format;
    std::size_t bytes;       // of the sound to start with
    std::size_t clipFrames;  // up to so many are pasted
    std::uint64_t budget;    // of the history
};

class HistoryWalk : public DocumentTest, public ::testing::WithParamInterface<WalkCase> {
  protected:
    HistoryWalk() { follower_.copy = (copy_ = MakeDocument()).get(); }

    std::uint32_t Below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(random_()) % limit;
    }
    EditSelection RandomSelection(std::uint32_t frames) {
        const std::uint32_t a = Below(frames + 1), b = Below(frames + 1);
        return {std::min(a, b), std::max(a, b), Below(frames + 1)};
    }
    ClipRecord RandomClip(const CWave& sound) {
        const Format format{sound.GetChannels(), sound.GetBits(), sound.GetSamplesPerSecond()};
        const std::size_t frames = 1 + Below(static_cast<std::uint32_t>(GetParam().clipFrames));
        return MakeClip(format, PatternBytes(frames * sound.GetBlockAlign(), Below(1000)));
    }
    // All three: false when nothing came about.
    bool RandomMarkerEdit(CSoundDoc& document) {
        MarkerList markers = document.Sound().Markers();
        const std::uint32_t frame = Below(document.Sound().GetFrameCount() + 1);
        if (Below(2) == 0)
            markers.Add(frame, "", 0);
        else if (Below(2) == 0 || !markers.Remove(1))
            markers.Set(1, frame, "set", 1);
        const bool changes = markers != document.Sound().Markers();
        document.SetMarkers(std::move(markers));
        return changes;
    }
    bool RandomUnrecordedEdit(CSoundDoc& document, const EditSelection& at) {
        const ClipRecord clip = RandomClip(document.Sound());
        switch (Below(6)) {
            case 0:
                return bool(edit::ReplaceWithClip(document, clip));
            case 1:
                return bool(edit::PasteOverwrite(document, clip, at));
            default:
                return bool(edit::PasteBlockOverwrite(document, clip, at));
        }
    }
    bool RandomSoundEdit(CSoundDoc& document, const EditSelection& at) {
        const ClipRecord clip = RandomClip(document.Sound());
        switch (Below(9)) {
            case 0:
                return bool(edit::Cut(document, at));
            case 1:
                return bool(edit::Delete(document, at));
            case 2:
                return bool(edit::Paste(document, clip, at));
            case 3:
                return bool(edit::Paste(document, clip, at, 3));
            case 4:
                return bool(edit::Mix(document, clip, at, {0.5, 0.5}));
            case 5:
                return bool(edit::CrossfadeMix(document, clip, at, {}));
            case 6:
                return Record(document, at.cursorFrame);
            case 7:
                return SetRate(document, 8000 + Below(3));
            default:
                return Below(4) == 0 && Convert(document, 1 + Below(2), Below(2) == 0 ? 8 : 16);
        }
    }
    bool Record(CSoundDoc& document, std::uint32_t frame) {
        EXPECT_TRUE(document.StartRecording());
        devices_.In().Arrive(PatternBytes(document.Sound().GetBlockAlign() * (1 + Below(8)), 5));
        return bool(document.StopRecording(frame));
    }
    bool SetRate(CSoundDoc& document, std::uint32_t rate) {
        Result<SoundEdit> edit = document.BeginEdit("Copy Sample", ReplacesFormat());
        document.Sound().SetRate(rate);
        edit->Commit(0);
        return true;
    }
    bool Convert(CSoundDoc& document, unsigned channels, unsigned bits) {
        const PcmFormat before = document.Sound().GetFormat();
        EXPECT_TRUE(edit::ConvertFormat(document, channels, ChannelChoice::kBothOrMix, bits));
        return !(document.Sound().GetFormat() == before);
    }
    bool RandomEdit(CSoundDoc& document, EditKind& kind) {
        const EditSelection at = RandomSelection(document.Sound().GetFrameCount());
        const unsigned draw = Below(8);
        kind = draw < 4 ? EditKind::kSound : draw < 6 ? EditKind::kMarkers : EditKind::kUnrecorded;
        // An empty sound makes a recording an edit without a step.
        if (kind != EditKind::kMarkers && !document.Sound().HasData()) kind = EditKind::kUnrecorded;
        switch (kind) {
            case EditKind::kSound:
                return RandomSoundEdit(document, at);
            case EditKind::kMarkers:
                return RandomMarkerEdit(document);
            default:
                return document.Sound().HasData() ? RandomUnrecordedEdit(document, at)
                                                  : Record(document, 0);
        }
    }
    static void ExpectState(const CSoundDoc& document, const PlainHistory& model) {
        const PlainHistory::State& state = model.states[model.place];
        ASSERT_EQ(document.Sound().GetFormat(), state.format);
        ASSERT_EQ(BytesOf(document.Sound()), state.bytes);
        ASSERT_EQ(document.Sound().Markers(), state.markers);
        ASSERT_EQ(document.CanUndo(), model.place > 0);
        ASSERT_EQ(document.CanRedo(), model.place + 1 < model.states.size());
    }
    void Step(CSoundDoc& document, PlainHistory& model) {
        const unsigned choice = Below(5);
        EditKind kind{};
        if (choice < 2) {
            const bool can = model.place > 0;
            ASSERT_EQ(document.Undo().IsDone(), can);
            if (can) --model.place;
        } else if (choice == 2) {
            const bool can = model.place + 1 < model.states.size();
            ASSERT_EQ(document.Redo().IsDone(), can);
            if (can) ++model.place;
        } else if (RandomEdit(document, kind)) {
            model.Edit(document.Sound(), kind);
        }
    }

    std::mt19937 random_{GetParam().seed};
    std::unique_ptr<CSoundDoc> copy_;
    Follower follower_;
};

TEST_P(HistoryWalk, AgreesWithARowOfStatesAndSoDoesADocumentThatFollowsTheRecords) {
    auto document = MakeDocument(GetParam().format, PatternBytes(GetParam().bytes, 1));
    document->History().SetLimits({GetParam().budget, folder_ / "spilled"});
    copy_->Sound().Adopt(MakeSound(GetParam().format, PatternBytes(GetParam().bytes, 1)));
    document->SetHistoryListener(&follower_);
    PlainHistory model(document->Sound());
    bool spilled = false;
    for (int step = 0; step < 1500; ++step) {
        SCOPED_TRACE(step);
        Step(*document, model);
        ExpectState(*document, model);
        ASSERT_TRUE(follower_.last) << follower_.last.Reason();
        ExpectState(*copy_, model);
        if (HasFatalFailure()) return;
        ASSERT_LE(document->History().MemoryBytes(), GetParam().budget);
        spilled = spilled || document->History().SpilledBytes() > 0;
    }
    EXPECT_EQ(spilled, GetParam().budget < 1000);
    EXPECT_EQ(document->History().TakeGivenUpCount(), 0u);
}

constexpr std::uint64_t kPlenty = 1 << 30;
INSTANTIATE_TEST_SUITE_P(Walks, HistoryWalk,
                         ::testing::Values(WalkCase{1, {2, 16}, 80, 9, kPlenty},
                                           WalkCase{2, {1, 8}, 3000, 50, kPlenty},
                                           WalkCase{3, {2, 16}, 83, 9, kPlenty},  // a cut frame
                                           WalkCase{4, {2, 16}, 400, 9, 100},
                                           WalkCase{5, {1, 16}, 401, 30, 0},
                                           WalkCase{6, {2, 8}, 0, 20, kPlenty}),
                         [](const auto& walk) { return "Seed" + std::to_string(walk.param.seed); });

}  // namespace
}  // namespace sonavel::testing
