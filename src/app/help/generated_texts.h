// What the manual says in the words of the program's own tables: an effect's controls, the keys of
// all commands.
#pragma once

#include <QString>

namespace sonavel {

struct Effect;

// Markdown tables.
QString ControlsText(const Effect& effect);
QString KeysText();

// The page with "<!-- controls: NAME -->" and "<!-- keys -->" replaced.
QString WithGeneratedTexts(QString page);

}  // namespace sonavel
