// How wide a host draws a text; what decides which labels of rulers and grid have room.
#pragma once

#include <functional>
#include <string_view>

namespace sonavel {

// The width in pixels of a line of text in the host's ruler font.
using TextWidth = std::function<int(std::string_view)>;

}  // namespace sonavel
