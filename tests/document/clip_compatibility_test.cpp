#include "document/clip_image.h"
#include "document_fixture.h"

namespace sonavel::testing {
namespace {

class ClipCompatibilityTest : public DocumentTest {
  protected:
    void PutOnClipboard(const Format& format, const Bytes& samples) {
        clipboard_.SetImage(
            *WriteClipImage(MakePcmFormat(format.channels, format.bits, format.rate), samples));
    }

    ClipRecord clip_;
};

TEST_F(ClipCompatibilityTest, FormatsAndAnswersDecide) {
    struct Case {
        Format sound, clip;
        bool warningAnswer;
        std::optional<ChannelChoice> channelAnswer;
        bool accepted;
        std::size_t warnings, channelQuestions;
    };
    constexpr auto kBoth = ChannelChoice::kBothOrMix;
    const Case cases[] = {
        {{2, 16, 8000}, {2, 16, 8000}, true, kBoth, true, 0, 0},
        // Cancelled at the warning.
        {{2, 16, 8000}, {1, 16, 8000}, false, kBoth, false, 1, 0},
        // Other rate, other bits, both: never pasted.
        {{2, 16, 8000}, {2, 16, 9000}, true, kBoth, false, 1, 0},
        {{2, 16, 8000}, {2, 8, 8000}, true, kBoth, false, 1, 0},
        {{1, 8, 8000}, {1, 16, 44100}, true, kBoth, false, 1, 0},
        // Other channels: asked for, and accepted or cancelled.
        {{2, 16, 8000}, {1, 16, 8000}, true, kBoth, true, 1, 1},
        {{2, 16, 8000}, {1, 16, 8000}, true, std::nullopt, false, 1, 1},
        {{1, 8, 8000}, {2, 16, 44100}, true, ChannelChoice::kLeft, true, 1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(NameOf(c.sound) + " <- " + NameOf(c.clip));
        prompts_ = {};
        prompts_.answers = {c.warningAnswer};
        prompts_.channelAnswer = c.channelAnswer;
        auto document = MakeDocument(c.sound, PatternBytes(40, 1));
        PutOnClipboard(c.clip, PatternBytes(24, 2));
        EXPECT_EQ(edit::PrepareClip(*document, clip_).IsDone(), c.accepted);
        EXPECT_EQ(prompts_.questions.size(), c.warnings);
        EXPECT_EQ(prompts_.conversions.size(), c.channelQuestions);
        if (c.accepted) {
            EXPECT_EQ(clip_.GetFormat(), document->Sound().GetFormat());
            EXPECT_TRUE(edit::Paste(*document, clip_, {}));
        }
    }
}

TEST_F(ClipCompatibilityTest, AsksInItsOwnWordsAndForTheRightDirection) {
    for (const unsigned channels : {2u, 1u}) {
        auto document = MakeDocument({channels, 16}, PatternBytes(8, 1));
        PutOnClipboard({3 - channels, 16}, PatternBytes(8, 1));
        ASSERT_TRUE(edit::PrepareClip(*document, clip_));
    }
    EXPECT_EQ(prompts_.questions[0], "원본 포맷과 같지 않습니다...");
    EXPECT_EQ(prompts_.conversions,
              (std::vector{ChannelConversion::kMonoToStereo, ChannelConversion::kStereoToMono}));
}

TEST_F(ClipCompatibilityTest, ChannelsAreConvertedByTheChoice) {
    using enum ChannelChoice;
    const struct {
        Format from, to;
        Bytes samples;
        ChannelChoice choice;
        Bytes expected;
    } cases[] = {
        {{2, 8}, {1, 8}, {255, 254, 1, 0}, kBothOrMix, {254, 0}},
        {{2, 8}, {1, 8}, {255, 254, 1, 0}, kLeft, {255, 1}},
        {{1, 8}, {2, 8}, {5, 6}, kRight, {0, 5, 0, 6}},
        // The bits come first, as a sound's would be converted: -32768 and 256 on the right.
        {{1, 8}, {2, 16}, {0, 127}, kRight, {0, 0, 0, 0x80, 0, 0, 0, 1}},
    };
    for (const auto& c : cases) {
        auto document = MakeDocument(c.to, PatternBytes(16, 1));
        PutOnClipboard(c.from, c.samples);
        prompts_.channelAnswer = c.choice;
        ASSERT_TRUE(edit::PrepareClip(*document, clip_));
        EXPECT_EQ(BytesOf(clip_), c.expected);
    }
}

TEST_F(ClipCompatibilityTest, NothingUsableOnTheClipboardFailsWithoutAQuestion) {
    auto document = MakeDocument({2, 16}, PatternBytes(8, 1));
    EXPECT_FALSE(edit::PrepareClip(*document, clip_));
    clipboard_.SetImage(PatternBytes(200, 5));
    EXPECT_FALSE(edit::PrepareClip(*document, clip_));
    PutOnClipboard({2, 16}, {});
    EXPECT_FALSE(edit::PrepareClip(*document, clip_)) << "no clip was ever read";
    EXPECT_TRUE(prompts_.questions.empty());
    EXPECT_TRUE(prompts_.messages.empty());
}

}  // namespace
}  // namespace sonavel::testing
