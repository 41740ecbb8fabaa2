#include "document/sound_difference.h"

#include "document/document_fixture.h"

namespace sonavel::testing {
namespace {

class SoundDifferenceTest : public DocumentTest {
  protected:
    // Takes the sound over and goes back and forth.
    void ExpectTakenOver(const std::string& name, const Bytes& before, const Format& format,
                         const Bytes& after, std::uint64_t mostKept) {
        auto document = MakeDocument(Format{}, before);
        Sound wanted = MakeSound(format, after);
        wanted.Markers().Add(1, "m", 0);
        auto taking = TakingOver::Prepare(*document, wanted, "Step");
        ASSERT_TRUE(taking) << name;
        EXPECT_TRUE(taking->IsEdit()) << name;
        EXPECT_EQ(BytesOf(document->Sound()), before) << name;
        taking->Apply();
        EXPECT_LE(document->History().MemoryBytes(), mostKept) << name;
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(BytesOf(document->Sound()), after) << name;
            EXPECT_EQ(document->Sound().GetFormat(),
                      MakeSoundFormat(format.channels, format.bits, format.rate))
                << name;
            EXPECT_EQ(document->Sound().Markers().Count(), 1u) << name;
            ASSERT_TRUE(document->Undo()) << name;
            EXPECT_EQ(BytesOf(document->Sound()), before) << name;
            EXPECT_EQ(document->Sound().GetSamplesPerSecond(), 8000u) << name;
            EXPECT_TRUE(document->Sound().Markers().Empty()) << name;
            ASSERT_TRUE(document->Redo()) << name;
        }
    }
};

TEST_F(SoundDifferenceTest, GivesTheSoundAndItsWayBackAndKeepsWhatDiffersAlone) {
    const Bytes before = PatternBytes(1000, 1);
    Bytes middle = before, longer = before, shorter = before, repeated(1000, 7), grown(1200, 7);
    middle[500] ^= 1;
    longer.insert(longer.begin() + 400, 60, 9);
    shorter.erase(shorter.begin() + 400, shorter.begin() + 460);
    ExpectTakenOver("a byte", before, {}, middle, 1);
    ExpectTakenOver("insertion", before, {}, longer, 0);
    ExpectTakenOver("removal", before, {}, shorter, 60);
    ExpectTakenOver("all", before, {}, PatternBytes(800, 2), 1000);
    // Where beginning and end are alike, no byte may count for both.
    ExpectTakenOver("more of the same", repeated, {}, grown, 0);
    ExpectTakenOver("less of the same", grown, {}, repeated, 200);
    ExpectTakenOver("nothing left", before, {}, {}, 1000);
    ExpectTakenOver("markers", before, {}, before, 0);
    ExpectTakenOver("rate", before, {1, 16, 11025}, before, 0);
    ExpectTakenOver("channels", before, {2, 16, 8000}, before, 1000);
    ExpectTakenOver("bits", before, {1, 8, 8000}, PatternBytes(500, 1), 1000);
}

TEST_F(SoundDifferenceTest, EqualSoundsAreNoEdit) {
    const Bytes bytes = PatternBytes(100, 1);
    auto document = MakeDocument(Format{}, bytes);
    Sound wanted = MakeSound({}, bytes);
    auto taking = TakingOver::Prepare(*document, wanted, "Step");
    ASSERT_TRUE(taking);
    EXPECT_FALSE(taking->IsEdit());
    taking->Apply();
    EXPECT_EQ(document->History().Count(), 0u);
    EXPECT_FALSE(document->GetModified());
}

}  // namespace
}  // namespace sonavel::testing
