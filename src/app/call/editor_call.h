// How the editor is called: its options as a table, from which the parser, --help and the manual
// page are made.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sonavel {

struct EditorCall {
    enum class Task { kRun, kHelp, kVersion };
    // What the window does first, beside opening files.
    enum class First { kNothing, kNew, kRecord };
    enum class Instance { kShared, kSeparate };

    Task task = Task::kRun;
    First first = First::kNothing;
    Instance instance = Instance::kShared;
    std::vector<std::string> files;  // bytes, as they were given
};

struct EditorOption {
    std::string_view letter;  // "-h", or empty
    std::string_view name;    // "--help"
    std::string_view does;
    void (*set)(EditorCall& call);
};

std::span<const EditorOption> EditorOptions();

// The words behind the program's name. Nothing for a word that begins with "-" and is no option;
// `mistake` then says so.
std::optional<EditorCall> ParseEditorCall(const std::vector<std::string>& words,
                                          std::string& mistake);

// Whether the call asks for nothing but a text. Words that the toolkit takes may be among these.
EditorCall::Task TextTaskOf(const std::vector<std::string>& words);

std::string EditorUsage();    // one line without a break
std::string EditorVersion();  // "1.2"
std::string EditorHelp();
std::string FilesHelp();  // which files it opens, one sentence

}  // namespace sonavel
