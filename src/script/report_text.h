// How reports write texts and numbers.
#pragma once

#include <string>
#include <string_view>

namespace sonavel::script {

// In quotes, as a script would write it, line breaks as \n; bytes of unknown origin become
// readable.
std::string QuotedText(std::string_view bytes);
std::string FixedText(double value, int decimals);

}  // namespace sonavel::script
