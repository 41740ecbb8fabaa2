#include <gtest/gtest.h>

#include <algorithm>

#include "platform/english_meanings.h"
#include "sound/multimedia_errors.h"

namespace sonavel {
namespace {

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

TEST(KoreanTexts, HaveAnEnglishMeaningAndOthersHaveNone) {
    for (int code = 1; code <= 20; ++code) {
        const std::string_view text = MultimediaErrorText(code);
        EXPECT_EQ(EnglishMeaning(text).empty(), IsAscii(text)) << text;
        EXPECT_TRUE(IsAscii(EnglishMeaning(text))) << text;
    }
    EXPECT_FALSE(EnglishMeaning("마커 읽기 실패...").empty());
}

}  // namespace
}  // namespace sonavel
