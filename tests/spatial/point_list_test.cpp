#include "spatial/point_list.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

using Points = std::vector<NamedPoint>;

TEST(PointListTest, ReadsPointsWithAndWithoutNames) {
    const std::pair<const char*, Points> cases[] = {
        {"1,2,3", {{"", {1, 2, 3}}}},
        {"1,2,3,4,5,6\nDog,0,0,1,0,0,2,0,0,3",
         {{"", {1, 2, 3}, {{4, 5, 6}}}, {"Dog", {0, 0, 1}, {{0, 0, 2}, {0, 0, 3}}}}},
        {"\xEF\xBB\xBFx,y,z\r\n 1 , -2.5 ,3e-1\r\n\r\n", {{"", {1, -2.5f, 0.3f}}}},
        {"name,x,y,z\nDoor,0,1,0\n\"Far, \"\"high\"\"\" ,0,0,9\n",
         {{"Door", {0, 1, 0}}, {"Far, \"high\"", {0, 0, 9}}}},
    };
    for (const auto& [text, wanted] : cases) {
        const Result<Points> points = ParsePoints(text);
        ASSERT_TRUE(points) << text << points.Reason();
        EXPECT_EQ(*points, wanted) << text;
    }
}

TEST(PointListTest, NamesTheLineThatIsNoPoint) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "There are no points."},
        {"x,y,z\n", "There are no points."},
        {"1,2", "Line 1"},
        {"a,1,2,3,4,5,x", "Line 1"},
        {"1,2,3\nx,y,z", "Line 2"},
        {"1,2,3\n1,2,3,4,5", "Line 2"},
        {"1,2,nan", "Line 1"},
        {"1,2,1e30", "Line 1"},
        {"1,2,3\n\"a,1,2,3", "Line 2"},
        {"\"a\"b,1,2,3", "Line 1"},
        {"1,2,", "Line 1"},
        {std::string("1,2,3\0", 6), "Line 1"},
    };
    for (const auto& [text, reason] : cases)
        EXPECT_EQ(ParsePoints(text).Reason().find(reason), 0u) << text;
    std::string many;
    for (std::size_t i = 0; i <= kMostListedPoints; ++i) many += "1,2,3\n";
    EXPECT_EQ(ParsePoints(many).Reason(), "There are too many points.");
}

TEST(PointListTest, NamesFilesByThePattern) {
    const Points points = {{"", {1, 0, 0}}, {"a/b", {0, -2, 0}},           {"", {0, 0, -1}},
                           {"", {2, 0, 0}}, {"..", {-0.001f, 10, -0.01f}}, {"", {1, 0, 0}}};
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"{name}_{azimuth}_{elevation}",
         {"dog_90_0", "a_b_180_0", "dog_0_-90", "dog_90_0_2", "_.._0_0", "dog_90_0_3"}},
        {"{number} {distance}",
         {"01 1.00", "02 2.00", "03 1.00", "04 2.00", "05 10.00", "06 1.00"}},
        {"", {"_", "__2", "__3", "__4", "__5", "__6"}},
    };
    for (const auto& [pattern, wanted] : cases) {
        const auto names = NamesOfPlaces(pattern, points, "dog");
        ASSERT_TRUE(names) << pattern;
        EXPECT_EQ(*names, wanted);
    }
    for (const char* pattern : {"{names}", "{name", "{}", "a{name}{"})
        EXPECT_FALSE(NamesOfPlaces(pattern, points, "dog")) << pattern;
    EXPECT_EQ(NamesOfPlaces(std::string(201, 'x'), points, "dog").Reason(),
              "A file name would become too long.");
}

}  // namespace
}  // namespace sonavel
