// The table of all commands, one part for each group.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "script/command_row.h"

namespace sonavel::script {

std::vector<CommandRow> DocumentCommandRows();
std::vector<CommandRow> ImportCommandRows();  // with tags
std::vector<CommandRow> ExportCommandRows();
std::vector<CommandRow> LabelCommandRows();  // pauses, labels and regions as files
std::vector<CommandRow> ReportCommandRows();
std::vector<CommandRow> EditCommandRows();
std::vector<CommandRow> FormatCommandRows();
std::vector<CommandRow> EffectCommandRows();  // with those of 3D sound
std::vector<CommandRow> LevelCommandRows();   // loudness and noise
std::vector<CommandRow> SpatialCommandRows();
std::vector<CommandRow> SpaceCommandRows();  // many places, scenes, loudspeakers, responses
std::vector<CommandRow> ViewCommandRows();
std::vector<CommandRow> SpectrogramCommandRows();
std::vector<CommandRow> RecoveryCommandRows();
std::vector<CommandRow> ScriptCommandRows();  // answer, try

// As the help shows them.
struct CommandGroup {
    const char* title;
    std::vector<CommandRow> (*rows)();
};
std::span<const CommandGroup> CommandGroups();

const std::vector<CommandRow>& AllCommandRows();
// Null when there is none of that name.
const CommandRow* FindCommandRow(const std::vector<CommandRow>& rows, std::string_view name);

}  // namespace sonavel::script
