// What messages mean that are Korean alone, for those who do not read them.
#pragma once

#include <string_view>

namespace sonavel {

// Empty for a text that needs none.
std::string_view EnglishMeaning(std::string_view text);

}  // namespace sonavel
