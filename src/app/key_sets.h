// The keys of all commands: the ready sets, what a person has changed, and both as a text that can
// be handed on.
#pragma once

#include <QString>
#include <map>
#include <optional>

#include "view/ui/command_menu.h"

namespace sonavel {

// Of commands whose keys are other than those of the command tables; several are parted by "; ".
using ChangedKeys = std::map<int, QString>;

// Nothing changed: the editor's own keys.
inline ChangedKeys SonavelKeys() {
    return {};
}
// Where other editors have them: Ctrl+S saves, Ctrl+Shift+Z redoes.
ChangedKeys UsualKeys();

// A line "NUMBER=KEYS" for each changed command, and back; nothing for a text with other lines.
QString KeysAsText(const ChangedKeys& keys);
std::optional<ChangedKeys> KeysFromText(const QString& text);

// As the person left them.
ChangedKeys StoredKeys();
void StoreKeys(const ChangedKeys& keys);

}  // namespace sonavel
