// The menus that a right click on the waveform opens, with and without a selection,
// and on the flag of a marker.
#pragma once

#include <span>

#include "view/ui/command_menu.h"

namespace sonavel {

enum class ContextMenu { kSoundViewNormal, kSoundViewSelection, kMarker };

const char* NameOf(ContextMenu menu);
std::span<const MenuEntry> EntriesOf(ContextMenu menu);

}  // namespace sonavel
