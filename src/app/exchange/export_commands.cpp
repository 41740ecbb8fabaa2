#include "app/command_ids.h"
#include "app/exchange/sound_exporter.h"

namespace sonavel {

namespace {

CommandState WithFrames(const SoundExporter& exporter) {
    return {exporter.HasFrames(), false};
}

CommandState WithMarkers(const SoundExporter& exporter) {
    return {exporter.HasMarkers(), false};
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
    {{app_command::kExportRegions, "", "Export Re&gions...", "Ctrl+Shift+E",
      "Write every region, or every stretch between markers, into a file of its own"},
     Call<SoundExporter, &SoundExporter::ExportRegions>,
     WithMarkers},
    {{app_command::kImportMarkers, "", "&Import Markers...", "",
      "Add the markers of a label track, a table, captions or a cue sheet"},
     Call<SoundExporter, &SoundExporter::ImportLabels>,
     WithFrames},
    {{app_command::kExportMarkers, "", "E&xport Markers...", "",
      "Write the markers as a label track, a table, captions or a cue sheet"},
     Call<SoundExporter, &SoundExporter::ExportLabels>,
     WithMarkers},
};

}  // namespace

std::span<const Command<SoundExporter>> ExportCommands() {
    return kCommands;
}

}  // namespace sonavel
