#include "batch/help_text.h"

#include "script/command_rows.h"

namespace sonavel::batch {
namespace {

constexpr const char* kGrammar =
    R"(The editor's commands from a script, without a display or a sound device.

  --folder DIR   the program folder, where Options.ini and Display.ini lie
  --recover DIR  keep records of unsaved work in DIR, as the editor does
  --progress     show the percentage of long operations on standard error

Commands end at a line break or ";". Words are separated by blanks; "..." quotes
a word or a part of one, with \" and \\ inside it; # starts a comment.
Words in capitals come first, then key=value words in any order.)";

constexpr const char* kExitStatus =
    "0 every command succeeded, 1 a command failed or its output was lost, 2 a\n"
    "mistake in the call or in the grammar of the script.";

}  // namespace

std::string UsageText() {
    return "usage: sonavel-batch [--folder DIR] [--recover DIR] [--progress] SCRIPT\n"
           "       sonavel-batch [--folder DIR] [--recover DIR] [--progress] -c TEXT\n"
           "       sonavel-batch --help | --version\n"
           "SCRIPT \"-\" reads standard input.";
}

std::string GrammarText() {
    return kGrammar;
}

std::string ExitStatusText() {
    return kExitStatus;
}

std::string HelpText() {
    std::string text = UsageText() + "\n\n" + kGrammar + "\n\nExit status: " + kExitStatus + '\n';
    for (const script::CommandGroup& group : script::CommandGroups()) {
        text += '\n' + std::string(group.title) + "\n\n";
        for (const script::CommandRow& row : group.rows())
            text += "  " + script::SignatureOf(row) + "\n      " + row.does + '\n';
    }
    return text;
}

}  // namespace sonavel::batch
