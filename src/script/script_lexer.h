// Splits the text of a script into commands and their words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sonavel::script {

// A positional word, or with a key the value of a key=value word.
struct ScriptWord {
    std::string key;
    std::string text;
};

struct ScriptCommand {
    int line = 1;
    std::vector<ScriptWord> words;  // at least one
};

struct GrammarMistake {
    int line = 1;
    std::string text;  // what was expected
};

// Commands end at a line break or ";", words at blanks; "…" quotes a word or a part of one, with \"
// and \\ inside it (any other \ stands for itself); # starts a comment outside quotes. A word is
// key=value when what stands before its first "=" is an unquoted name of lower-case letters,
// digits and "-". Words may hold bytes that are not UTF-8, as file names do. Mistakes are added to
// `mistakes`.
std::vector<ScriptCommand> LexScript(std::string_view text, std::vector<GrammarMistake>& mistakes);

}  // namespace sonavel::script
