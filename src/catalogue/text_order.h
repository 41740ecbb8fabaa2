// How people look for text and sort it: without regard to case, and in one order for everyone.
#pragma once

#include <QCollator>
#include <string>
#include <string_view>

namespace sonavel {

// A text that is equal for small and capital letters. What is not UTF-8 becomes U+FFFD.
std::string FoldCase(std::string_view text);

// Small and capital letters are equal, and runs of digits count as numbers: "kick2" comes before
// "kick10". The locale of the person has no part in it, so that a catalogue is the same list
// wherever it is opened.
QCollator TextOrder();

}  // namespace sonavel
