#include "app/document_commands.h"

#include "app/command_ids.h"

namespace sonavel {

namespace {

bool SaveAs(CSoundDoc& document) {
    return document.SaveAs();
}

// Ctrl+S is the key of the crossfading mix, so Save has it with Shift.
constexpr Command<CSoundDoc> kCommands[] = {
    {{app_command::kSave, "save", "&Save", "Ctrl+Shift+S", "Save the active sound"},
     SaveUnderOwnPath},
    {{app_command::kSaveAs, "save-as", "Sa&ve As...", "F12",
      "Save the active sound under a new name or in another format"},
     SaveAs},
};

}  // namespace

std::span<const Command<CSoundDoc>> DocumentCommands() {
    return kCommands;
}

bool SaveUnderOwnPath(CSoundDoc& document) {
    if (document.Path().empty()) return document.SaveAs();
    // The dialog says so before it happens, and asks before the whole sound's file is replaced.
    if (document.SaveCutsSound(document.Path())) return document.SaveAs();
    const std::string warning = document.SaveWarning(document.Path());
    if (!warning.empty()) document.Services().prompts.ShowStatus(warning);
    return document.SaveDocument(document.Path());
}

}  // namespace sonavel
