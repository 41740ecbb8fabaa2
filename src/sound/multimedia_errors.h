// The texts of the platform's multimedia error codes.
#pragma once

#include <string_view>

namespace sonavel {

// Of the codes 1 to 20; empty for any other.
std::string_view MultimediaErrorText(int code);

}  // namespace sonavel
