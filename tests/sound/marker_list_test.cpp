#include "sound/marker_list.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

MarkerList AtPositions(std::initializer_list<std::uint32_t> positions) {
    MarkerList markers;
    for (const std::uint32_t position : positions) markers.Add(position, "", 0);
    return markers;
}

TEST(MarkerListTest, FillsANewMarker) {
    MarkerList markers = AtPositions({1, 2, 3});
    EXPECT_EQ(markers.Add(77, "", 9), 4u);
    const Marker& marker = markers.All().back();
    EXPECT_EQ(marker.name, "Marker 4");
    EXPECT_EQ(marker.position, 77u);
    EXPECT_EQ(marker.sampleOffset, 77u);
    EXPECT_EQ(marker.length, 9u);
    EXPECT_EQ(marker.labelId, 4u);
    EXPECT_EQ(marker.textId, 4u);
    EXPECT_EQ(marker.chunkId, 0x61746164u);  // "data"
    EXPECT_EQ(marker.purpose, 0x206E6772u);  // "rgn "
}

TEST(MarkerListTest, RemovingRenumbersNothingAndIdsMayRepeat) {
    MarkerList markers = AtPositions({10, 20, 30});
    EXPECT_TRUE(markers.Remove(1));
    EXPECT_FALSE(markers.Remove(1));
    EXPECT_EQ(markers.Add(40, "again", 0), 3u);
    EXPECT_EQ(markers.Find(3)->position, 30u);
    EXPECT_TRUE(markers.Set(3, 31, "", 5));
    EXPECT_EQ(markers.Find(3)->name, "Marker 3");
    EXPECT_EQ(markers.Find(3)->sampleOffset, 31u);
    EXPECT_EQ(markers.All().back().position, 40u);
    EXPECT_FALSE(markers.Set(9, 0, "x", 0));
}

TEST(MarkerListTest, FindsNeighbours) {
    const MarkerList markers = AtPositions({50, 0, 10, 30, 200});
    const struct {
        std::uint32_t position, before, after;
    } cases[] = {{0, 0, 10},    {9, 0, 10},     {10, 10, 30},   {49, 30, 50},
                 {50, 50, 100}, {100, 50, 100}, {250, 200, 100}};
    for (const auto& c : cases) {
        EXPECT_EQ(markers.Before(c.position), c.before) << c.position;
        EXPECT_EQ(markers.After(c.position, 100), c.after) << c.position;
    }
    EXPECT_EQ(MarkerList().Before(5), 0u);
    EXPECT_EQ(MarkerList().After(5, 100), 100u);
}

TEST(MarkerListTest, ShiftingStaysInRange) {
    MarkerList markers = AtPositions({0xFFFFFFF0, 5});
    markers.ShiftForInsertion(5, 0x20);
    EXPECT_EQ(markers.All()[0].position, 0xFFFFFFFFu);
    EXPECT_EQ(markers.All()[1].position, 0x25u);
    EXPECT_EQ(markers.All()[1].sampleOffset, 0x25u);
    markers.ShiftForRemoval(9, 9);
    EXPECT_EQ(markers.Count(), 2u);
    markers.ShiftForRemoval(0x20, 0x24);
    EXPECT_EQ(markers.All()[1].position, 0x21u);
    EXPECT_EQ(markers.All()[1].sampleOffset, 0x21u);
}

}  // namespace
}  // namespace sonavel
