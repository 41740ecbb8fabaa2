// Checks the commands of a script against their rows.
#pragma once

#include <string_view>
#include <vector>

#include "script/command_row.h"
#include "script/script_lexer.h"

namespace sonavel::script {

struct ParsedCommand {
    int line = 1;
    const CommandRow* row = nullptr;
    Arguments arguments{};
    bool tried = false;      // goes on when it fails
    bool previewed = false;  // presses the Preview button
};

struct ParsedScript {
    std::vector<ParsedCommand> commands;
    std::vector<GrammarMistake> mistakes;  // in line order; with any of them nothing may be run
};

// The rows must outlive the result.
ParsedScript ParseScript(std::string_view text, const std::vector<CommandRow>& rows);

}  // namespace sonavel::script
