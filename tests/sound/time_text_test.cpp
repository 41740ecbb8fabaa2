// Times as they are typed.
#include "sound/time_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace sonavel::testing {
namespace {

constexpr std::uint32_t kTimeRate = 44100;

TEST(TimeTextTest, EveryWayOfWritingATimeIsReadToTheNearestFrame) {
    const struct {
        const char* text;
        BareNumber bare;
        TypedTime time;
    } cases[] = {
        {"1:02:03.5", BareNumber::kFrames, {164206350, TimeFrom::kStart}},
        {"17:21.5", BareNumber::kSeconds, {45930150, TimeFrom::kStart}},
        {"62.5", BareNumber::kSeconds, {2756250, TimeFrom::kStart}},
        {"62", BareNumber::kFrames, {62, TimeFrom::kStart}},
        {"62.5s", BareNumber::kFrames, {2756250, TimeFrom::kStart}},
        {" 250 ms ", BareNumber::kFrames, {11025, TimeFrom::kStart}},
        {"441000#", BareNumber::kSeconds, {441000, TimeFrom::kStart}},
        {"90:00", BareNumber::kSeconds, {238140000, TimeFrom::kStart}},
        {"+5", BareNumber::kSeconds, {220500, TimeFrom::kHere}},
        {"-0:02", BareNumber::kSeconds, {-88200, TimeFrom::kHere}},
        {"\xE2\x88\x92"
         "0:02",
         BareNumber::kSeconds,
         {-88200, TimeFrom::kHere}},
        {"0.00001s", BareNumber::kFrames, {0, TimeFrom::kStart}},
        {"0.00002s", BareNumber::kFrames, {1, TimeFrom::kStart}},
    };
    for (const auto& [text, bare, time] : cases)
        EXPECT_EQ(ParseTime(text, kTimeRate, bare), std::optional(time)) << text;
}

TEST(TimeTextTest, NothingIsDroppedSilently) {
    for (const char* text : {"",
                             " ",
                             "x",
                             "1x",
                             "5 m",
                             "1:60",
                             "1:2:3:4",
                             "1:",
                             ":1",
                             "1:0.5:0",
                             "1.5#",
                             "1.",
                             ".5",
                             "1.5.5",
                             "--1",
                             "+",
                             "s",
                             "#",
                             "1e3",
                             "1e3s",
                             "nan",
                             "inf",
                             "0x10",
                             "1,5",
                             "99999999999s",
                             "1099511627777#"})
        EXPECT_EQ(ParseTime(text, kTimeRate, BareNumber::kSeconds), std::nullopt) << text;
    EXPECT_EQ(ParseTime("62.5", kTimeRate, BareNumber::kFrames), std::nullopt);
}

}  // namespace
}  // namespace sonavel::testing
