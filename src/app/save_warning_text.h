// What the Save As dialog says about the save that it is about to ask for.
#pragma once

#include <string>

#include "document/sound_doc.h"

namespace sonavel {

// Empty when the file will hold all of the sound.
std::string SaveWarningText(const CSoundDoc& document, const SaveAsChoice& choice);

}  // namespace sonavel
