// The command table of the document: saving.
#pragma once

#include <span>

#include "document/sound_doc.h"
#include "platform/command_table.h"

namespace sonavel {

std::span<const Command<CSoundDoc>> DocumentCommands();

// Saves under the document's own path, or asks for one when it has none, and also when only the
// beginning of the sound would be written there. What else the file will not hold is said in the
// status bar before it is written.
bool SaveUnderOwnPath(CSoundDoc& document);

}  // namespace sonavel
