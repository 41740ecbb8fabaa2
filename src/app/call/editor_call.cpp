#include "app/call/editor_call.h"

#include <algorithm>

#include "sound/file_formats.h"

namespace sonavel {
namespace {

constexpr EditorOption kOptions[] = {
    {"", "--new", "ask for the format of a new sound at once",
     [](EditorCall& call) { call.first = EditorCall::First::kNew; }},
    {"", "--record", "get ready to record into a new sound at once",
     [](EditorCall& call) { call.first = EditorCall::First::kRecord; }},
    {"", "--separate", "a program of its own, also where another one runs already",
     [](EditorCall& call) { call.instance = EditorCall::Instance::kSeparate; }},
    {"-h", "--help", "print this help",
     [](EditorCall& call) { call.task = EditorCall::Task::kHelp; }},
    {"-v", "--version", "print the version",
     [](EditorCall& call) { call.task = EditorCall::Task::kVersion; }},
};

constexpr std::string_view kEndOfOptions = "--";
constexpr std::size_t kNameWidth = 18;

const EditorOption* FindOption(std::string_view word) {
    const auto found = std::ranges::find_if(kOptions, [word](const EditorOption& option) {
        return word == option.name || (!option.letter.empty() && word == option.letter);
    });
    return found == std::end(kOptions) ? nullptr : found;
}

std::string HelpLine(const EditorOption& option) {
    std::string line = option.letter.empty() ? "      " : "  " + std::string(option.letter) + ", ";
    line += option.name;
    line.resize(std::max(kNameWidth, line.size() + 2), ' ');
    return line + std::string(option.does) + '\n';
}

}  // namespace

std::span<const EditorOption> EditorOptions() {
    return kOptions;
}

std::optional<EditorCall> ParseEditorCall(const std::vector<std::string>& words,
                                          std::string& mistake) {
    EditorCall call;
    bool takesOptions = true;
    for (const std::string& word : words) {
        if (!takesOptions || !word.starts_with('-') || word == "-") {
            call.files.push_back(word);
        } else if (word == kEndOfOptions) {
            takesOptions = false;
        } else if (const EditorOption* option = FindOption(word)) {
            option->set(call);
        } else {
            mistake = "there is no option \"" + word + '"';
            return std::nullopt;
        }
    }
    return call;
}

EditorCall::Task TextTaskOf(const std::vector<std::string>& words) {
    EditorCall call;
    for (const std::string& word : words) {
        if (word == kEndOfOptions) break;
        if (const EditorOption* option = FindOption(word)) option->set(call);
    }
    return call.task;
}

std::string EditorUsage() {
    return "usage: sonavel [OPTION]... [FILE]...";
}

std::string EditorVersion() {
    return SONAVEL_VERSION;
}

std::string FilesHelp() {
    return "FILE is a sound to open (" + AllExtensions("", ", ") + ") or to import (any other).";
}

std::string EditorHelp() {
    std::string text = EditorUsage() + "\n\nA sound editor.\n\n";
    for (const EditorOption& option : kOptions) text += HelpLine(option);
    return text + '\n' + FilesHelp() +
           "\nWhere the editor runs already, its window opens the files.\n";
}

}  // namespace sonavel
