// What an edit leaves behind: everything when it came about, nothing when it did not.
#include <functional>

#include "document_fixture.h"

namespace sonavel::testing {
namespace {

class SoundEditTest : public DocumentTest {
  protected:
    // Something can be redone, and nothing is modified.
    std::unique_ptr<CSoundDoc> MakeUndone(const Bytes& bytes) {
        auto document = MakeDocument({2, 16}, bytes);
        EXPECT_TRUE(edit::Paste(*document, clip_, {}));
        EXPECT_TRUE(document->Undo());
        document->SetModified(false);
        return document;
    }

    ClipRecord clip_ = MakeClip({2, 16}, PatternBytes(12, 9));
};

TEST_F(SoundEditTest, OneThatFailsOrIsRefusedLeavesNoTrace) {
    const Bytes sound = PatternBytes(40, 1);
    const ClipRecord stranger = MakeClip({1, 8}, PatternBytes(5, 2));
    const struct {
        const char* name;
        std::function<Outcome(CSoundDoc&)> attempt;
    } cases[] = {
        {"dropped",
         [&](CSoundDoc& document) {
             EXPECT_TRUE(document.BeginEdit("Copy Sample"));
             return Cancelled();
         }},
        {"dropped without a step",
         [&](CSoundDoc& document) {
             EXPECT_TRUE(document.BeginUnrecordedEdit());
             return Cancelled();
         }},
        {"cut with the clipboard taken",
         [&](CSoundDoc& document) {
             clipboard_.taken = true;
             return edit::Cut(document, {1, 3, 0}).Ended();
         }},
        {"nothing selected",
         [&](CSoundDoc& d) {
             return edit::Delete(d, {3, 3, 3}).Ended();
         }},
        {"a clip that does not fit",
         [&](CSoundDoc& document) { return edit::Paste(document, stranger, {}).Ended(); }},
        {"too many copies", [&](CSoundDoc& d) { return edit::Paste(d, clip_, {}, 1001).Ended(); }},
        {"mix",
         [&](CSoundDoc& d) {
             return edit::Mix(d, stranger, {}, {1, 1}).Ended();
         }},
        {"block too small",
         [&](CSoundDoc& document) {
             return edit::PasteBlockCopy(document, clip_, {1, 2, 0}).Ended();
         }},
        {"save as with bits that cannot be",
         [&](CSoundDoc& document) {
             return document.SaveAs({.path = folder_ / "a.wav", .channels = 1, .bits = 12});
         }},
        {"recording without a device",
         [&](CSoundDoc& document) {
             document.Sound().SetRecordDevice(kNoWaveDevice);
             return document.StartRecording();
         }},
        {"recording nothing",
         [&](CSoundDoc& document) {
             EXPECT_TRUE(document.StartRecording());
             return document.StopRecording(2);
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto document = MakeUndone(sound);
        const std::size_t steps = document->History().Count();
        EXPECT_FALSE(c.attempt(*document));
        EXPECT_EQ(BytesOf(document->Sound()), sound);
        EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 8000));
        EXPECT_FALSE(document->GetModified());
        EXPECT_EQ(document->History().Count(), steps);
        ASSERT_TRUE(document->Redo());
        EXPECT_EQ(document->Sound().GetFrameCount(), 13u);
    }
    EXPECT_EQ(folder_.FileCount(), 1u) << "the options alone";
}

TEST_F(SoundEditTest, OneThatComesAboutDiscardsWhatCouldBeRedone) {
    const std::function<Outcome(CSoundDoc&)> edits[] = {
        [&](CSoundDoc& d) {
            return edit::Cut(d, {1, 3, 0}).Ended();
        },
        [&](CSoundDoc& d) {
            return edit::PasteOverwrite(d, clip_, {1, 3, 0}).Ended();
        },
        [&](CSoundDoc& d) {
            return d.SaveAs({.path = folder_ / "a.au", .channels = 1, .bits = 8});
        },
        [&](CSoundDoc& d) {
            EXPECT_TRUE(d.StartRecording());
            devices_.In().Arrive(Bytes{1, 2, 3, 4});
            return d.StopRecording(0);
        }};
    for (const auto& edit : edits) {
        auto document = MakeUndone(PatternBytes(40, 1));
        EXPECT_TRUE(edit(*document));
        EXPECT_FALSE(document->CanRedo());
    }
}

TEST_F(SoundEditTest, ARecordingIntoAnEmptySoundCannotBeReplacedByARedo) {
    auto document = MakeUndone({});
    ASSERT_TRUE(document->StartRecording());
    devices_.In().Arrive(Bytes{1, 2, 3, 4});
    ASSERT_TRUE(document->StopRecording(0));
    EXPECT_FALSE(document->Redo());
    EXPECT_EQ(BytesOf(document->Sound()), (Bytes{1, 2, 3, 4}));
}

TEST_F(SoundEditTest, AChangeOfChannelsAndBitsIsWholeOrNotAtAll) {
    for (const Format& from : kFormats)
        for (const Format& to : kFormats) {
            const Bytes bytes = PatternBytes(48, 3);
            auto document = MakeDocument(from, bytes);
            auto stepwise = MakeDocument(from, bytes);
            CWave& sound = document->Sound();
            ASSERT_TRUE(sound.ConvertFormat(to.channels, ChannelChoice::kBothOrMix, to.bits));
            stepwise->Sound().ConvertChannels(to.channels, ChannelChoice::kBothOrMix);
            stepwise->Sound().ConvertBits(to.bits);
            EXPECT_EQ(BytesOf(sound), BytesOf(stepwise->Sound()));
            EXPECT_EQ(sound.GetFormat(), stepwise->Sound().GetFormat());
            EXPECT_EQ(sound.GetModified(),
                      sound.GetFormat() != MakePcmFormat(from.channels, from.bits, 8000));
        }
}

}  // namespace
}  // namespace sonavel::testing
