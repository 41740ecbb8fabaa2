#include "platform/english_meanings.h"

namespace sonavel {
namespace {

struct Meaning {
    std::string_view korean;
    std::string_view english;
};

constexpr Meaning kMeanings[] = {
    {"예기치 않은 에러", "Unexpected error."},
    {"디바이스 ID 범위를 초과하였습니다.", "There is no device of that number."},
    {"드라이버 활성화 실패", "The sound driver could not be started."},
    {"드라이버가 DriverCallback 함수를 호출 하지 않습니다.", "The sound driver does not answer."},
    {"원본 포맷과 같지 않습니다...",
     "The clipboard's sound has another format than this one. Convert it?"},
    {"마커 읽기 실패...", "The markers could not be read."},
};

}  // namespace

std::string_view EnglishMeaning(std::string_view text) {
    for (const Meaning& meaning : kMeanings)
        if (meaning.korean == text) return meaning.english;
    return {};
}

}  // namespace sonavel
