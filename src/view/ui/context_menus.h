// The menus that a right click on the waveform opens, with and without a selection,
// on the flag of a marker, and on the vertical ruler.
#pragma once

#include <span>

#include "view/ui/command_menu.h"

namespace sonavel {

enum class ContextMenu { kSoundViewNormal, kSoundViewSelection, kMarker, kRuler };

const char* NameOf(ContextMenu menu);
std::span<const MenuEntry> EntriesOf(ContextMenu menu);

}  // namespace sonavel
