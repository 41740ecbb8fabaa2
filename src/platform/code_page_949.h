// Text between UTF-8 and the Korean code page 949.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace sonavel {

// The bytes of the character at the start of a text that is not empty; 0 when there is no valid
// one.
std::size_t Utf8CharacterLength(std::string_view bytes);
bool IsValidUtf8(std::string_view bytes);
// Nothing when the bytes are not code page 949.
std::optional<std::string> Utf8FromCodePage949(std::string_view bytes);
// Nothing when the text has characters that the code page lacks.
std::optional<std::string> CodePage949FromUtf8(std::string_view text);
// What a person is shown for bytes of unknown origin: themselves when they are UTF-8, else read as
// code page 949, else with "?" for every byte outside ASCII.
std::string DisplayText(std::string_view bytes);

}  // namespace sonavel
