// The layout of the main menu. What a command is called and does stands in the command tables.
#pragma once

#include <span>

#include "view/ui/command_menu.h"

namespace sonavel {

struct MenuLayout {
    const char* title;
    std::span<const MenuEntry> entries;
};

std::span<const MenuLayout> MainMenuLayout();

}  // namespace sonavel
