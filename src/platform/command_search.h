// Finds commands by a few letters of their names.
#pragma once

#include <optional>
#include <string_view>

namespace sonavel {

// How well what was typed fits a command's name, the less the better: its letters stand in the name
// in their order, best at the beginnings of words and side by side. Nothing where they do not. Case
// and blanks do not count; nothing typed fits everything alike.
std::optional<int> CommandFit(std::string_view typed, std::string_view name);

}  // namespace sonavel
