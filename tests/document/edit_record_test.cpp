#include "document/edit_record.h"

#include <functional>

#include "document_fixture.h"

namespace sonavel::testing {
namespace {

constexpr Format kShape{2, 16};

// Of 20 frames, as an edit would make it that put 3 frames in the place of 5 to 9.
EditRecord RecordOf(Sound& sound) {
    EditRecord record = PlannedRecord(sound, ReplacesFrames(5, 9));
    EXPECT_TRUE(TakeSamples(record, sound));
    const std::uint64_t before = sound.GetDataSize();
    EXPECT_TRUE(sound.RemoveFrames(5, 9) && sound.InsertFrames(5, PatternBytes(12, 7)));
    NoteResult(record, before, sound);
    return record;
}

TEST(EditRecord, IsItsOwnOpposite) {
    Sound sound = MakeSound(kShape, PatternBytes(80, 1));
    sound.Markers().Add(7, "gone", 0);
    EditRecord record = RecordOf(sound);
    sound.SetRate(1);
    const Bytes after = BytesOf(sound);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(Exchange(record, sound));
        EXPECT_EQ(BytesOf(sound), PatternBytes(80, 1));
        EXPECT_EQ(sound.Markers().Count(), 1u);
        EXPECT_EQ(sound.GetSamplesPerSecond(), kShape.rate);
        EXPECT_EQ(record.samples.Size(), 12u);
        ASSERT_TRUE(Exchange(record, sound));
        EXPECT_EQ(BytesOf(sound), after);
        EXPECT_TRUE(sound.Markers().Empty());
        EXPECT_EQ(sound.GetSamplesPerSecond(), 1u);
        EXPECT_EQ(record.samples.Size(), 16u);
    }
}

TEST(EditRecord, ItsCounterpartDoesToAnotherSoundWhatTheEditDid) {
    Sound sound = MakeSound(kShape, PatternBytes(80, 1));
    Sound other = MakeSound(kShape, PatternBytes(80, 1));
    const EditRecord record = RecordOf(sound);
    Result<EditRecord> made = CounterpartOf(record, sound);
    ASSERT_TRUE(made);
    ASSERT_TRUE(Exchange(*made, other));
    EXPECT_EQ(BytesOf(other), BytesOf(sound));
}

TEST(EditRecord, OneThatDoesNotFitChangesNothing) {
    const struct {
        const char* name;
        std::function<void(EditRecord&)> spoil;
    } cases[] = {
        {"beyond the end", [](EditRecord& r) { r.startByte = 77; }},
        {"far beyond", [](EditRecord& r) { r.startByte = UINT64_MAX; }},
        {"more than is there", [](EditRecord& r) { r.bytesThere = UINT64_MAX; }},
        {"fewer samples than it says", [](EditRecord& r) { r.bytesKept = 100; }},
        {"samples that lie elsewhere", [](EditRecord& r) { r.samples.FreeBuffer(); }},
        {"everything, but only a part", [](EditRecord& r) { r.reach = EditReach::kEverything; }},
        {"markers and samples", [](EditRecord& r) { r.reach = EditReach::kMarkers; }},
        {"no such reach", [](EditRecord& r) { r.reach = static_cast<EditReach>(9); }},
        {"another format", [](EditRecord& r) { r.format = MakePcmFormat(1, 16, 8000); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Sound sound = MakeSound(kShape, PatternBytes(80, 1));
        EditRecord record = RecordOf(sound);
        const Bytes before = BytesOf(sound);
        c.spoil(record);
        EXPECT_FALSE(Exchange(record, sound));
        EXPECT_EQ(BytesOf(sound), before);
        EXPECT_EQ(sound.GetFormat(), MakePcmFormat(2, 16, kShape.rate));
    }
}

}  // namespace
}  // namespace sonavel::testing
