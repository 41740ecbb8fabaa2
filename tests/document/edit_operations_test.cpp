#include "document/edit_operations.h"

#include <optional>

#include "document/clip_image.h"
#include "document_fixture.h"

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kFrames = 12;
constexpr std::uint32_t kClipFrames = 5;

// A sound as a row of frames, edited in the plainest way.
struct PlainSound {
    std::vector<Bytes> frames;
    std::vector<std::uint32_t> markers;

    static PlainSound Of(const CWave& sound) {
        PlainSound plain;
        const unsigned align = sound.GetBlockAlign();
        for (std::size_t at = 0; at < sound.GetDataSize(); at += align)
            plain.frames.emplace_back(
                sound.Bytes().begin() + static_cast<std::ptrdiff_t>(at),
                sound.Bytes().begin() + static_cast<std::ptrdiff_t>(at + align));
        for (const Marker& marker : sound.Markers().All()) plain.markers.push_back(marker.position);
        return plain;
    }
    void Remove(std::uint32_t start, std::uint32_t end) {
        frames.erase(frames.begin() + start, frames.begin() + end);
        std::erase_if(markers, [&](std::uint32_t m) { return m >= start && m < end; });
        for (std::uint32_t& m : markers)
            if (m >= end) m -= end - start;
    }
    void Insert(std::uint32_t at, const std::vector<Bytes>& more) {
        frames.insert(frames.begin() + at, more.begin(), more.end());
        for (std::uint32_t& m : markers)
            if (m >= at) m += static_cast<std::uint32_t>(more.size());
    }
    bool operator==(const PlainSound&) const = default;
};

// Every format with every place that a selection and a cursor can have.
class EveryState : public DocumentTest {
  protected:
    template <class Check>
    void ForEach(Check check) {
        const EditSelection places[] = {
            {0, 0, 0},       {0, 0, 6},        {0, 0, kFrames}, {0, 4, 9},       {4, 8, 0},
            {8, kFrames, 3}, {0, kFrames, 12}, {7, 8, 7},       {5, 5, kFrames},
        };
        for (const Format& format : kFormats) {
            for (const EditSelection& at : places) {
                SCOPED_TRACE(NameOf(format) + ", " + std::to_string(at.startFrame) + ".." +
                             std::to_string(at.endFrame) + " at " + std::to_string(at.cursorFrame));
                const unsigned align = format.channels * format.bits / 8;
                auto document = MakeDocument(format, PatternBytes(kFrames * align, 1));
                for (const std::uint32_t position : {0u, 3u, 4u, 7u, 8u, 11u, 12u})
                    document->Sound().Markers().Add(position, "", 0);
                const ClipRecord clip = MakeClip(format, PatternBytes(kClipFrames * align, 2));
                check(*document, clip, at);
            }
        }
    }
    static std::vector<Bytes> FramesOf(const ClipRecord& clip, unsigned count = 1) {
        std::vector<Bytes> frames;
        const unsigned align = clip.GetBlockAlign();
        for (unsigned i = 0; i < count; ++i)
            for (std::size_t at = 0; at < clip.GetDataSize(); at += align)
                frames.emplace_back(clip.Bytes().data() + at, clip.Bytes().data() + at + align);
        return frames;
    }
};

TEST_F(EveryState, CutTakesTheSelectionToTheClipboard) {
    ForEach([&](CSoundDoc& document, const ClipRecord&, const EditSelection& at) {
        PlainSound expected = PlainSound::Of(document.Sound());
        const Bytes before = BytesOf(document.Sound());
        NotingObserver observer;
        document.AddObserver(&observer);
        const Result<EditSelection> result = edit::Cut(document, at);
        ASSERT_EQ(bool(result), !at.IsEmpty());
        if (!result) {
            EXPECT_EQ(BytesOf(document.Sound()), before);
            EXPECT_EQ(document.History().Count(), 0u);
            return;
        }
        expected.Remove(at.startFrame, at.endFrame);
        EXPECT_EQ(PlainSound::Of(document.Sound()), expected);
        EXPECT_EQ(*result, (EditSelection{0, 0, at.startFrame}));
        EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{at.startFrame});
        EXPECT_TRUE(document.GetModified());
        EXPECT_EQ(document.History().StepAt(0).name, "Source Sample");
        ClipRecord clip;
        ASSERT_TRUE(ReadClipboard(clipboard_, clip));
        EXPECT_EQ(clip.GetFrameCount(), at.Frames());
        ASSERT_TRUE(document.Undo());
        EXPECT_EQ(BytesOf(document.Sound()), before);
        EXPECT_EQ(document.Sound().Markers().Count(), 7u);
    });
}

TEST_F(EveryState, DeleteRemovesAndLeavesTheClipboardAlone) {
    ForEach([&](CSoundDoc& document, const ClipRecord&, const EditSelection& at) {
        PlainSound expected = PlainSound::Of(document.Sound());
        if (!at.IsEmpty()) expected.Remove(at.startFrame, at.endFrame);
        EXPECT_EQ(bool(edit::Delete(document, at)), !at.IsEmpty());
        EXPECT_EQ(PlainSound::Of(document.Sound()), expected);
        EXPECT_FALSE(clipboard_.OffersWave());
    });
}

TEST_F(EveryState, PasteInsertsAtTheCursorOrInPlaceOfTheSelection) {
    for (const unsigned count : {1u, 3u}) {
        ForEach([&](CSoundDoc& document, const ClipRecord& clip, const EditSelection& at) {
            PlainSound expected = PlainSound::Of(document.Sound());
            const std::uint32_t point = at.IsEmpty() ? at.cursorFrame : at.startFrame;
            const std::uint32_t inserted = kClipFrames * count;
            if (!at.IsEmpty()) expected.Remove(at.startFrame, at.endFrame);
            expected.Insert(point, FramesOf(clip, count));
            NotingObserver observer;
            document.AddObserver(&observer);
            const Result<EditSelection> result = edit::Paste(document, clip, at, count);
            document.RemoveObserver(&observer);
            ASSERT_TRUE(result);
            EXPECT_EQ(PlainSound::Of(document.Sound()), expected);
            EXPECT_EQ(observer.changes, std::vector<std::uint32_t>{point});
            EXPECT_EQ(document.History().Count(), 1u);
            EXPECT_EQ(document.History().StepAt(0).name, "Copy Sample");
            if (at.IsEmpty()) {
                EXPECT_TRUE(result->IsEmpty());
                EXPECT_EQ(result->cursorFrame, point + inserted);
            } else {
                EXPECT_EQ(*result, (EditSelection{point, point + inserted, point}));
            }
        });
    }
}

TEST_F(EveryState, OverwritingCommandsFillTheSelectionAndStoreNoStep) {
    using Overwrite =
        Result<EditSelection> (*)(CSoundDoc&, const ClipRecord&, const EditSelection&);
    const struct {
        Overwrite command;
        std::uint32_t (*framesWritten)(std::uint32_t selected);
    } cases[] = {
        {edit::PasteOverwrite, [](std::uint32_t s) { return std::min(s, kClipFrames); }},
        {edit::PasteBlockOverwrite, [](std::uint32_t s) { return s; }},
        {edit::PasteBlockCopy, [](std::uint32_t s) { return s / kClipFrames * kClipFrames; }},
    };
    for (const auto& c : cases) {
        ForEach([&](CSoundDoc& document, const ClipRecord& clip, const EditSelection& at) {
            PlainSound expected = PlainSound::Of(document.Sound());
            const auto pattern = FramesOf(clip);
            const std::uint32_t written = c.framesWritten(at.Frames());
            for (std::uint32_t i = 0; i < written; ++i)
                expected.frames[at.startFrame + i] = pattern[i % kClipFrames];
            const Result<EditSelection> result = c.command(document, clip, at);
            ASSERT_EQ(bool(result), written > 0);
            if (result) {
                EXPECT_EQ(*result, at);
            }
            EXPECT_EQ(PlainSound::Of(document.Sound()), expected);
            EXPECT_EQ(document.GetModified(), written > 0);
            EXPECT_EQ(document.History().Count(), 0u);
        });
    }
}

class EditOperationsTest : public DocumentTest {};

TEST_F(EditOperationsTest, BlockCopyNamesATooSmallSelection) {
    auto document = MakeDocument({1, 8}, PatternBytes(20, 1));
    EXPECT_FALSE(edit::PasteBlockCopy(*document, MakeClip({1, 8}, {1, 2, 3, 4}), {2, 5, 0}));
    EXPECT_EQ(prompts_.messages, std::vector<std::string>{"Too small block.................."});
}

TEST_F(EditOperationsTest, CutChangesNothingWhenTheClipboardIsTaken) {
    auto document = MakeDocument({1, 16}, PatternBytes(20, 1));
    clipboard_.taken = true;
    EXPECT_EQ(edit::Cut(*document, {2, 5, 0}).Reason(), "The clipboard cannot be opened.");
    EXPECT_EQ(document->Sound().GetFrameCount(), 10u);
    EXPECT_EQ(document->History().Count(), 0u);
    EXPECT_TRUE(edit::CopyRange(*document, 5, 5)) << "an empty range needs no clipboard";
}

TEST_F(EditOperationsTest, SelectionsBehindTheEndAreClamped) {
    auto document = MakeDocument({1, 8}, PatternBytes(10, 1));
    EXPECT_TRUE(edit::Delete(*document, {7, 0xFFFFFFFF, 0}));
    EXPECT_EQ(document->Sound().GetFrameCount(), 7u);
    const Result<EditSelection> pasted =
        edit::Paste(*document, MakeClip({1, 8}, {9}), {0, 0, 0xFFFFFFFF});
    ASSERT_TRUE(pasted);
    EXPECT_EQ(pasted->cursorFrame, 8u);
    EXPECT_EQ(BytesOf(document->Sound()).back(), 9);
    EXPECT_EQ(*edit::PasteBlockOverwrite(*document, MakeClip({1, 8}, {5}), {6, 99, 0}),
              (EditSelection{6, 8, 0}));
    EXPECT_EQ(BytesOf(document->Sound()).back(), 5);
    EXPECT_EQ(edit::PasteBlockOverwrite(*document, MakeClip({1, 8}, {5}), {50, 99, 0}).Reason(),
              "Nothing is selected.");
}

TEST_F(EditOperationsTest, AThousandCopiesAreTheMost) {
    auto document = MakeDocument({1, 8}, {1, 2});
    EXPECT_TRUE(edit::Paste(*document, MakeClip({1, 8}, {7}), {0, 0, 1}, 1000));
    Bytes expected(1002, 7);
    expected.front() = 1;
    expected.back() = 2;
    EXPECT_EQ(BytesOf(document->Sound()), expected);
    for (const std::uint32_t count : {0u, 1001u})
        EXPECT_EQ(edit::Paste(*document, MakeClip({1, 8}, {7}), {0, 0, 1}, count).Reason(),
                  "The clip can be pasted 1 to 1000 times at once.");
    EXPECT_EQ(document->Sound().GetFrameCount(), 1002u);
}

TEST_F(EditOperationsTest, PasteIntoAnEmptySoundCanBeUndone) {
    auto document = MakeDocument({2, 16}, {});
    ASSERT_TRUE(edit::Paste(*document, MakeClip({2, 16}, PatternBytes(12, 2)), {0, 0, 5}));
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(12, 2));
    ASSERT_TRUE(document->Undo());
    EXPECT_FALSE(document->Sound().HasData());
    ASSERT_TRUE(document->Redo());
    EXPECT_EQ(document->Sound().GetFrameCount(), 3u);
}

TEST_F(EditOperationsTest, AClipThatDoesNotFitIsRefused) {
    auto document = MakeDocument({2, 16}, PatternBytes(16, 1));
    const ClipRecord none;
    ClipRecord gone = MakeClip({2, 16}, PatternBytes(8, 2));
    gone.present = false;
    const ClipRecord narrow = MakeClip({2, 8}, PatternBytes(8, 2));
    for (const ClipRecord* clip : std::initializer_list<const ClipRecord*>{&none, &gone, &narrow}) {
        EXPECT_EQ(edit::Paste(*document, *clip, {0, 2, 0}).Reason(),
                  clip == &narrow ? "The clip has another format than the sound."
                                  : "There is no sound on the clipboard.");
        EXPECT_FALSE(edit::PasteBlockOverwrite(*document, *clip, {0, 2, 0}));
        EXPECT_FALSE(edit::Mix(*document, *clip, {0, 2, 0}, {}));
    }
    const ClipRecord good = MakeClip({2, 16}, Bytes(4'000'000));
    // The last is refused for its four gigabytes.
    for (const unsigned count : {0u, 1001u, 1000u})
        EXPECT_FALSE(edit::Paste(*document, good, {0, 2, 0}, count)) << count;
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(16, 1));
    EXPECT_EQ(document->History().Count(), 0u);
}

TEST_F(EditOperationsTest, ReplaceTakesTheClipsFormatAndData) {
    auto document = MakeDocument({1, 8, 8000}, PatternBytes(10, 1));
    ASSERT_TRUE(edit::ReplaceWithClip(*document, MakeClip({2, 16, 44100}, PatternBytes(8, 2))));
    EXPECT_EQ(document->Sound().GetFormat(), MakePcmFormat(2, 16, 44100));
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(8, 2));
    EXPECT_TRUE(document->GetModified());
    EXPECT_FALSE(edit::ReplaceWithClip(*document, {}));
}

TEST_F(EditOperationsTest, AnEditStopsPlaying) {
    auto document = MakeDocument({1, 16}, PatternBytes(60000, 1));
    ASSERT_TRUE(document->Sound().Play(0));
    ASSERT_TRUE(edit::Delete(*document, {0, 20000, 0}));
    EXPECT_TRUE(document->Sound().IsStopped());
}

TEST_F(EveryState, ManyCopiesShowProgressAndCanBeCancelled) {
    const Bytes before = PatternBytes(4000, 1);
    const ClipRecord clip = MakeClip({2, 16}, PatternBytes(40'000, 2));
    for (const std::optional<int> cancelled : {std::optional<int>(), std::optional(700)}) {
        auto document = MakeDocument({2, 16}, before);
        progress_ = {};
        progress_.cancelAtPoll = cancelled;
        const auto pasted = edit::Paste(*document, clip, {100, 200, 0}, 1000);
        EXPECT_EQ(pasted.Ended().IsCancelled(), cancelled.has_value());
        EXPECT_EQ(progress_.titles.size(), 1u);
        EXPECT_EQ(progress_.openWindows, 0);
        EXPECT_EQ(progress_.positions.back(), cancelled ? 70 : 100);
        EXPECT_EQ(document->CanUndo(), !cancelled);
        EXPECT_EQ(document->GetModified(), !cancelled);
        EXPECT_EQ(document->Undo().IsDone(), !cancelled);
        EXPECT_EQ(BytesOf(document->Sound()), before);
    }
    progress_ = {};
    ASSERT_TRUE(edit::Paste(*MakeDocument({2, 16}, before), clip, {}, 10));
    EXPECT_TRUE(progress_.titles.empty()) << "done before a window could be read";
}

}  // namespace
}  // namespace sonavel::testing
