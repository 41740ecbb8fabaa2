// Several ranges removed as one edit, with what stands in and behind them.
#include "document/document_fixture.h"
#include "document/range_operations.h"

namespace sonavel::testing {
namespace {

class RemoveRangesTest : public DocumentTest {};

TEST_F(RemoveRangesTest, WhatStaysIsJoinedAsOneStep) {
    for (const Format& format : {Format{1, 8}, Format{2, 16}, Format{1, 32}}) {
        SCOPED_TRACE(NameOf(format));
        const std::size_t align = format.channels * format.bits / 8;
        const Bytes before = PatternBytes(100 * align, 3);
        const auto document = MakeDocument(format, before);
        const FrameRange ranges[] = {{0, 10}, {20, 21}, {50, 100}};
        const auto after = edit::RemoveRanges(*document, {15, 60, 21}, ranges);
        ASSERT_TRUE(after);
        EXPECT_EQ(*after, (EditSelection{5, 39, 10}));
        Bytes wanted(before.begin() + 10 * align, before.begin() + 20 * align);
        wanted.insert(wanted.end(), before.begin() + 21 * align, before.begin() + 50 * align);
        EXPECT_EQ(BytesOf(document->Sound()), wanted);
        EXPECT_EQ(document->History().Count(), 1u);
        ASSERT_TRUE(document->Undo());
        EXPECT_EQ(BytesOf(document->Sound()), before);
    }
}

TEST_F(RemoveRangesTest, MarkersStayAtWhatIsLeftAndRegionsShrink) {
    const auto document = MakeDocument({}, Bytes(200));
    MarkerList& markers = document->Sound().Markers();
    markers.Add(5, "before", 40);  // to 45
    markers.Add(15, "inside", 0);
    markers.Add(90, "behind", 5);
    const FrameRange ranges[] = {{10, 20}, {40, 50}};
    ASSERT_TRUE(edit::RemoveRanges(*document, {}, ranges));
    const std::vector<Marker>& all = document->Sound().Markers().All();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].position, 5u);
    EXPECT_EQ(all[0].length, 25u);
    EXPECT_EQ(all[1].position, 10u);
    EXPECT_EQ(all[2].position, 70u);
    EXPECT_EQ(all[2].length, 5u);
}

TEST_F(RemoveRangesTest, WhatIsNoRangeOfTheSoundIsRefused) {
    const auto document = MakeDocument({}, PatternBytes(200, 1));
    const std::vector<std::vector<FrameRange>> wrong = {
        {},         {{0, 100}},           {{0, 40}, {40, 100}},
        {{10, 10}}, {{20, 30}, {10, 15}}, {{10, 20}, {15, 30}},
        {{90, 101}}};
    for (const auto& ranges : wrong)
        EXPECT_FALSE(edit::RemoveRanges(*document, {}, ranges)) << ranges.size();
    EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(200, 1));
    EXPECT_EQ(document->History().Count(), 0u);
}

}  // namespace
}  // namespace sonavel::testing
