// Changes of the markers as edits of a document.
#include "document_fixture.h"

namespace sonavel::testing {
namespace {

class MarkerEditsTest : public DocumentTest {
  protected:
    using Editing = CSoundDoc::MarkerEditing;

    MarkerEditsTest() { document_->SetModified(false); }

    static MarkerList MarkersAt(std::initializer_list<std::uint32_t> positions) {
        MarkerList markers;
        for (const std::uint32_t position : positions) markers.Add(position, "", 0);
        return markers;
    }
    std::vector<std::uint32_t> Positions() const {
        std::vector<std::uint32_t> positions;
        for (const Marker& marker : document_->Sound().Markers().All())
            positions.push_back(marker.position);
        return positions;
    }
    using Places = std::vector<std::uint32_t>;

    std::unique_ptr<CSoundDoc> document_ = MakeDocument({1, 8}, PatternBytes(100, 1));
};

TEST_F(MarkerEditsTest, EveryUndoTakesBackExactlyTheLastThingDone) {
    ASSERT_TRUE(edit::Delete(*document_, {0, 10, 0}));
    document_->SetMarkers(MarkersAt({50}));
    document_->SetMarkers(MarkersAt({50, 60}));
    ASSERT_TRUE(edit::Delete(*document_, {0, 10, 0}));
    EXPECT_EQ(Positions(), (Places{40, 50}));
    const struct {
        const char* name;
        Places positions;
        std::uint32_t frames;
    } before[] = {{"Source Sample", {50, 60}, 90},
                  {"Marker", {50}, 90},
                  {"Marker", {}, 90},
                  {"Source Sample", {}, 100}};
    for (const auto& state : before) {
        const UndoHistory& history = document_->History();
        EXPECT_EQ(history.StepAt(*history.CurrentPosition()).name, state.name);
        ASSERT_TRUE(document_->Undo());
        EXPECT_EQ(Positions(), state.positions);
        EXPECT_EQ(document_->Sound().GetFrameCount(), state.frames);
    }
    for (const Places& after : {Places{}, Places{50}, Places{50, 60}, Places{40, 50}}) {
        ASSERT_TRUE(document_->Redo());
        EXPECT_EQ(Positions(), after);
    }
    EXPECT_FALSE(document_->Redo());
}

TEST_F(MarkerEditsTest, ItsStepHoldsNoSamples) {
    const std::uint8_t* const samples = document_->Sound().Bytes().data();
    document_->SetMarkers(MarkersAt({5}));
    EXPECT_TRUE(document_->GetModified());
    EXPECT_EQ(document_->History().StepAt(0).kind, kCopyingStepKind);
    for (const bool undone : {false, true}) {
        if (undone) {
            ASSERT_TRUE(document_->Undo());
        }
        EXPECT_EQ(document_->History().MemoryBytes(), 0u);
        EXPECT_EQ(document_->Sound().Bytes().data(), samples);
    }
}

TEST_F(MarkerEditsTest, WithUndoOffItIsStoredNowhere) {
    WriteOptions("");
    document_->ReloadOptions();
    document_->SetMarkers(MarkersAt({5}));
    EXPECT_EQ(document_->History().Count(), 0u);
    EXPECT_TRUE(document_->GetModified());
    EXPECT_EQ(Positions(), Places{5});
}

TEST_F(MarkerEditsTest, ADragIsOneStepAndNoneWhenItEndsWhereItBegan) {
    document_->SetMarkers(MarkersAt({5}));
    ASSERT_TRUE(document_->Undo());
    document_->SetModified(false);
    for (const std::uint32_t position : {6u, 7u, 0u}) {
        MarkerList markers = position == 0 ? MarkerList{} : MarkersAt({position});
        document_->SetMarkers(std::move(markers), Editing::kGoesOn);
    }
    document_->EndMarkerEdit();
    EXPECT_TRUE(document_->CanRedo()) << "nothing has changed";
    EXPECT_FALSE(document_->GetModified());
    for (const std::uint32_t position : {6u, 7u, 8u})
        document_->SetMarkers(MarkersAt({position}), Editing::kGoesOn);
    document_->EndMarkerEdit();
    document_->EndMarkerEdit();
    EXPECT_FALSE(document_->CanRedo());
    EXPECT_EQ(document_->History().Count(), 1u);
    ASSERT_TRUE(document_->Undo());
    EXPECT_EQ(Positions(), Places{});
}

TEST_F(MarkerEditsTest, AnyOtherEditEndsADrag) {
    const auto drag = [&](std::uint32_t position) {
        document_->SetMarkers(MarkersAt({position}), Editing::kGoesOn);
    };
    drag(20);
    ASSERT_TRUE(edit::Delete(*document_, {0, 10, 0}));
    drag(30);
    document_->SetMarkers(MarkersAt({30, 40}));
    drag(50);
    // Undo begins with what the drag has done so far.
    for (const Places& before : {Places{30, 40}, Places{30}, Places{10}, Places{20}, Places{}}) {
        ASSERT_TRUE(document_->Undo());
        EXPECT_EQ(Positions(), before);
    }
    EXPECT_FALSE(document_->Undo());
    EXPECT_EQ(document_->Sound().GetFrameCount(), 100u);
}

TEST_F(MarkerEditsTest, RedoAndTheEndOfARecordingEndADrag) {
    document_->SetMarkers(MarkersAt({5}));
    ASSERT_TRUE(document_->Undo());
    document_->SetMarkers(MarkersAt({8}), Editing::kGoesOn);
    EXPECT_FALSE(document_->Redo()) << "the drag has come about";
    EXPECT_EQ(Positions(), Places{8});

    ASSERT_TRUE(document_->StartRecording());
    document_->SetMarkers(MarkersAt({9}), Editing::kGoesOn);
    devices_.In().Arrive(Bytes{1, 2, 3});
    ASSERT_TRUE(document_->StopRecording(0));
    for (const Places& before : {Places{9}, Places{8}, Places{}}) {
        ASSERT_TRUE(document_->Undo());
        EXPECT_EQ(Positions(), before);
    }
}

TEST_F(MarkerEditsTest, PlayingAndRecordingGoOn) {
    ASSERT_TRUE(document_->Sound().Play(0));
    document_->SetMarkers(MarkersAt({5}));
    EXPECT_TRUE(document_->Sound().IsPlaying());

    ASSERT_TRUE(document_->StartRecording());
    document_->SetMarkers(MarkersAt({5, 60}));
    devices_.In().Arrive(Bytes{1, 2, 3});
    ASSERT_TRUE(document_->StopRecording(0));
    ASSERT_TRUE(document_->Undo());
    EXPECT_EQ(document_->Sound().GetFrameCount(), 100u);
    EXPECT_EQ(Positions(), (Places{5, 60})) << "set during the recording, and a step of its own";
    ASSERT_TRUE(document_->Undo());
    EXPECT_EQ(Positions(), Places{5});
}

}  // namespace
}  // namespace sonavel::testing
