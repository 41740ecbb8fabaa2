#include "platform/code_page_949.h"

#include <gtest/gtest.h>

namespace sonavel {
namespace {

TEST(CodePage949, ConvertsBothWays) {
    const std::pair<const char*, const char*> pairs[] = {
        {"plain \\ ASCII", "plain \\ ASCII"},
        {"마커 저장", "\xB8\xB6\xC4\xBF \xC0\xFA\xC0\xE5"},
        {"경고", "\xB0\xE6\xB0\xED"},
        {"똠", "\x8C\x63"},  // outside the older KS X 1001 set, its second byte a letter
    };
    for (const auto& [utf8, codePage] : pairs) {
        EXPECT_EQ(Utf8FromCodePage949(codePage), utf8);
        EXPECT_EQ(CodePage949FromUtf8(utf8), codePage);
    }
    EXPECT_EQ(CodePage949FromUtf8("\xF0\x9F\x98\x80"), std::nullopt);
    EXPECT_EQ(Utf8FromCodePage949("\xB8"), std::nullopt);
    EXPECT_EQ(Utf8FromCodePage949("\xFF\xFF"), std::nullopt);
}

TEST(CodePage949, KnowsValidUtf8) {
    for (const char* text :
         {"", "a", "é", "\xE0\xA0\x80", "마", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(IsValidUtf8(text)) << text;
    for (const char* text : {"\x80", "\xC0\xAF", "\xC3", "\xE0\x80\xAF", "\xED\xA0\x80", "\xEB\xA7",
                             "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "a\xFF"})
        EXPECT_FALSE(IsValidUtf8(text));
}

TEST(CodePage949, ShowsBytesOfUnknownOrigin) {
    EXPECT_EQ(DisplayText("마커"), "마커");
    EXPECT_EQ(DisplayText("\xB8\xB6\xC4\xBF"), "마커");
    EXPECT_EQ(DisplayText("a\xFF\x80z"), "a??z");
}

}  // namespace
}  // namespace sonavel
