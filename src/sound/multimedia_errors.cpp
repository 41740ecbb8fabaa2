#include "sound/multimedia_errors.h"

#include <iterator>

namespace sonavel {
namespace {

constexpr std::string_view kTexts[] = {
    "",
    "예기치 않은 에러",
    "디바이스 ID 범위를 초과하였습니다.",
    "드라이버 활성화 실패",
    "device already allocated",
    "device handle is invalid",
    "no device driver present",
    "memory allocation error",
    "function isn't supported",
    "error value out of range",
    "invalid flag passed",
    "invalid parameter passed",
    "handle being used",
    "specified alias not found",
    "bad registry database",
    "registry key not found",
    "registry read error",
    "registry write error",
    "registry delete error",
    "registry value not found",
    "드라이버가 DriverCallback 함수를 호출 하지 않습니다.",
};
static_assert(std::size(kTexts) == 21);

}  // namespace

std::string_view MultimediaErrorText(int code) {
    return code >= 1 && code <= 20 ? kTexts[code] : std::string_view();
}

}  // namespace sonavel
