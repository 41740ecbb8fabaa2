// The names that sound files go by which Import reads, beside those of the table of file formats.
#pragma once

#include <span>
#include <string_view>

namespace sonavel {

// With their ".", in small letters. A name promises nothing: what a file is, its content decides.
std::span<const std::string_view> ForeignExtensions();

// Whether sound files have that extension, foreign or not, in letters of either case.
bool IsSoundExtension(std::string_view extension);

}  // namespace sonavel
