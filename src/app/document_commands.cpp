#include "app/document_commands.h"

#include "app/command_ids.h"

namespace sonavel {

namespace {

CommandState ReadAgainState(const DocumentSaver& saver) {
    return {saver.CanReadAgain(), false};
}

// Ctrl+S is the key of the crossfading mix, so Save has it with Shift.
constexpr Command<DocumentSaver> kCommands[] = {
    {{app_command::kSave, "save", "&Save", "Ctrl+Shift+S", "Save the active sound"},
     Call<DocumentSaver, &DocumentSaver::Save>},
    {{app_command::kSaveAs, "save-as", "Sa&ve As...", "F12",
      "Save the active sound under a new name or in another format"},
     Call<DocumentSaver, &DocumentSaver::SaveAs>},
    {{app_command::kReadAgain, "", "Rea&d Again", "",
      "Read the file of the active sound again, which has not been changed here"},
     Call<DocumentSaver, &DocumentSaver::ReadAgain>,
     ReadAgainState},
};

}  // namespace

std::span<const Command<DocumentSaver>> DocumentCommands() {
    return kCommands;
}

}  // namespace sonavel
