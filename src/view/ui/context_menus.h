// The menus that a right click on the waveform opens, with and without a selection.
#pragma once

#include <span>

#include "view/ui/command_menu.h"

namespace sonavel {

enum class ContextMenu { kSoundViewNormal, kSoundViewSelection };

const char* NameOf(ContextMenu menu);
std::span<const MenuEntry> EntriesOf(ContextMenu menu);

}  // namespace sonavel
