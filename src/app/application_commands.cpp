#include "app/application_commands.h"

#include "app/application.h"
#include "app/command_ids.h"

namespace sonavel {

namespace {

template <bool (Application::*operation)()>
bool Do(Application& application) {
    return (application.*operation)();
}

CommandState SaveAllState(const Application& application) {
    return {application.HasModifiedSounds(), false};
}

CommandState WithSound(const Application& application) {
    return {application.Sounds().Count() > 0, false};
}

constexpr Command<Application> kCommands[] = {
    {{app_command::kNew, "", "&New", "Ctrl+N", "Make a new, empty sound"},
     Do<&Application::NewSound>},
    {{app_command::kOpen, "", "&Open...", "Ctrl+O", "Open sound files"},
     Do<&Application::OpenFiles>},
    {{app_command::kSaveAll, "", "Save &All...", "", "Save every sound that was changed"},
     Do<&Application::SaveAll>,
     SaveAllState},
    {{app_command::kFileProperties, "", "P&roperties...", "Alt+Return",
      "Show the file, the format, the statistics and the markers of the active sound"},
     Do<&Application::ShowFileProperties>,
     WithSound},
    {{app_command::kPreferences, "", "&Preferences...", "Ctrl+,", "Change the settings"},
     Do<&Application::EditPreferences>},
    {{app_command::kSampleDatabase, "", "Sample File Database", "",
      "Keep catalogues of sound files"},
     Do<&Application::ShowSampleDatabase>},
    {{app_command::kAbout, "", "&About this program...", "", "Show what this program is"},
     Do<&Application::ShowAbout>},
    {{app_command::kExit, "", "E&xit", "Ctrl+Q", "Leave the program"}, Do<&Application::Exit>},
};

}  // namespace

std::span<const Command<Application>> ApplicationCommands() {
    return kCommands;
}

}  // namespace sonavel
