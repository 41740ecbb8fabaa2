// The call of the batch tool: its command line, and what it does.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace sonavel::batch {

struct BatchCall {
    enum class Source { kFile, kStandardInput, kText };
    enum class Task { kRun, kHelp, kVersion };

    Task task = Task::kRun;
    Source source = Source::kFile;
    std::string script;                                  // a path, or with kText the script itself
    std::optional<std::filesystem::path> folder;         // the program folder
    std::optional<std::filesystem::path> recoverFolder;  // for the records of unsaved work
    bool showsProgress = false;
};

// Nothing, with `mistake` saying what was expected, when the words are no call.
std::optional<BatchCall> ParseCall(const std::vector<std::string>& words, std::string& mistake);

struct BatchStreams {
    std::istream& in;
    std::ostream& out;
    std::ostream& errors;
};

// The whole tool; returns its exit status.
int RunBatchTool(const std::vector<std::string>& words, const BatchStreams& streams);

}  // namespace sonavel::batch
