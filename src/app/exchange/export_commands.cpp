#include "app/command_ids.h"
#include "app/exchange/sound_exporter.h"

namespace sonavel {

namespace {

CommandState WithFrames(const SoundExporter& exporter) {
    return {exporter.HasFrames(), false};
}

CommandState WithSelection(const SoundExporter& exporter) {
    return {exporter.HasSelection(), false};
}

constexpr Command<SoundExporter> kCommands[] = {
    {{app_command::kExport, "", "&Export...", "Ctrl+Shift+X",
      "Write the sound into a file of another kind; the sound stays as it is"},
     Call<SoundExporter, &SoundExporter::Export>,
     WithFrames},
    {{app_command::kSaveCopy, "", "Save a Cop&y As...", "",
      "Write a copy of the sound as it is now; the sound keeps its own file"},
     Call<SoundExporter, &SoundExporter::SaveCopy>,
     WithFrames},
    {{app_command::kExportSelection, "", "Export Se&lection As...", "",
      "Write the selected part into a file of its own"},
     Call<SoundExporter, &SoundExporter::ExportSelection>,
     WithSelection},
};

}  // namespace

std::span<const Command<SoundExporter>> ExportCommands() {
    return kCommands;
}

}  // namespace sonavel
