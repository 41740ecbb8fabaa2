#include "app/application_commands.h"

#include "app/application.h"
#include "app/command_ids.h"

namespace sonavel {

namespace {

CommandState SaveAllState(const Application& application) {
    return {application.HasModifiedSounds(), false};
}

CommandState WithSound(const Application& application) {
    return {application.Sounds().Count() > 0, false};
}

constexpr char kFirstPage[] = "index";
constexpr char kKeysPage[] = "keys";
constexpr char kChangesPage[] = "whats-new";

template <const char* page>
Outcome ShowPage(Application& application) {
    application.Help().Show(QString::fromLatin1(page));
    return Done();
}

using enum WhileWorking;

constexpr Command<Application> kCommands[] = {
    {{app_command::kNew, "", "&New", "Ctrl+N", "Make a new, empty sound"},
     Call<Application, &Application::NewSound>},
    {{app_command::kOpen, "", "&Open...", "Ctrl+O", "Open sound files"},
     Call<Application, &Application::Open>},
    {{app_command::kImport, "", "&Import...", "Ctrl+Shift+O",
      "Open sound files of any kind, found by their content"},
     Call<Application, &Application::Import>},
    {{app_command::kSaveAll, "", "Save &All...", "", "Save every sound that was changed"},
     Call<Application, &Application::SaveAll>,
     SaveAllState},
    {{app_command::kRunScript, "", "Run Scr&ipt...", "",
      "Run a script on the open sounds, as one change of each that Undo takes back"},
     Call<Application, &Application::RunScript>},
    {{app_command::kCopyAsScript, "", "Copy as Script", "",
      "Copy what was done to the active sound since it was opened, as a script that does it again"},
     Call<Application, &Application::CopyAsScript>,
     WithSound},
    {{app_command::kFileProperties, "", "P&roperties...", "Alt+Return",
      "Show the file, the format, the statistics and the markers of the active sound"},
     Call<Application, &Application::ShowFileProperties>,
     WithSound},
    {{app_command::kPreferences, "", "&Preferences...", "Ctrl+,", "Change the settings"},
     Call<Application, &Application::EditPreferences>},
    {{app_command::kSampleDatabase, "", "Sample File Database", "",
      "Keep catalogues of sound files"},
     Call<Application, &Application::ShowSampleDatabase>},
    {{app_command::kManual, "", "&Manual", "F1", "Explain the program, page by page", kAlways},
     ShowPage<kFirstPage>},
    {{app_command::kManualKeys, "", "&Keys", "", "List the keys of all commands", kAlways},
     ShowPage<kKeysPage>},
    {{app_command::kWhatsNew, "", "&What's New", "",
      "Show what this version has that others had not", kAlways},
     ShowPage<kChangesPage>},
    {{app_command::kAbout, "", "&About this program...", "", "Show what this program is"},
     Call<Application, &Application::ShowAbout>},
    {{app_command::kExit, "", "E&xit", "Ctrl+Q", "Leave the program", kAlways},
     Call<Application, &Application::Exit>},
};

}  // namespace

std::span<const Command<Application>> ApplicationCommands() {
    return kCommands;
}

}  // namespace sonavel
