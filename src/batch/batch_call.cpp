#include "batch/batch_call.h"

#include <fstream>
#include <istream>
#include <iterator>
#include <ostream>

#include "batch/batch_host.h"
#include "batch/help_text.h"
#include "platform/small_file.h"
#include "script/command_rows.h"
#include "script/script_runner.h"

namespace sonavel::batch {
namespace {

class CallParser {
  public:
    CallParser(const std::vector<std::string>& words, std::string& mistake)
        : words_(words), mistake_(mistake) {}

    std::optional<BatchCall> Parse() {
        for (next_ = 0; next_ < words_.size();)
            if (!TakeWord(words_[next_++])) return std::nullopt;
        if (call_.task == BatchCall::Task::kRun && !hasScript_) return Expected("a script");
        return call_;
    }

  private:
    bool TakeWord(const std::string& word) {
        if (word == "--help") return SetTask(BatchCall::Task::kHelp);
        if (word == "--version") return SetTask(BatchCall::Task::kVersion);
        if (word == "--progress") return call_.showsProgress = true;
        if (word == "--folder") return TakeFolder(word, call_.folder);
        if (word == "--recover") return TakeFolder(word, call_.recoverFolder);
        if (word == "-c") return TakeText();
        if (word == "-") return TakeScript(BatchCall::Source::kStandardInput, word);
        if (word.starts_with('-')) {
            Expected("an option or a script, not \"" + word + '"');
            return false;
        }
        return TakeScript(BatchCall::Source::kFile, word);
    }

    bool SetTask(BatchCall::Task task) {
        call_.task = task;
        return true;
    }

    bool TakeFolder(const std::string& option, std::optional<std::filesystem::path>& folder) {
        if (next_ == words_.size()) {
            Expected("a folder behind " + option);
            return false;
        }
        folder = words_[next_++];
        return true;
    }

    bool TakeText() {
        if (next_ == words_.size()) {
            Expected("the text of a script behind -c");
            return false;
        }
        return TakeScript(BatchCall::Source::kText, words_[next_++]);
    }

    bool TakeScript(BatchCall::Source source, const std::string& script) {
        if (hasScript_) {
            Expected("one script, not also \"" + script + '"');
            return false;
        }
        hasScript_ = true;
        call_.source = source;
        call_.script = script;
        return true;
    }

    std::nullopt_t Expected(const std::string& what) {
        mistake_ = "expected " + what;
        return std::nullopt;
    }

    const std::vector<std::string>& words_;
    std::string& mistake_;
    std::size_t next_ = 0;
    bool hasScript_ = false;
    BatchCall call_;
};

constexpr std::size_t kMostScriptBytes = std::size_t{256} << 20;

std::string ReadToEnd(std::istream& in) {
    return {std::istreambuf_iterator<char>(in), {}};
}

std::optional<std::string> ReadScriptFile(const std::filesystem::path& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    // What a shell hands over as <(...) or /dev/stdin has no size to look at first.
    if (type != std::filesystem::file_type::fifo && type != std::filesystem::file_type::character)
        return ReadSmallFile(path, kMostScriptBytes);
    std::ifstream pipe(path, std::ios::binary);
    if (!pipe) return std::nullopt;
    return ReadToEnd(pipe);
}

std::optional<std::string> ReadScript(const BatchCall& call, std::istream& in) {
    if (call.source == BatchCall::Source::kText) return call.script;
    if (call.source == BatchCall::Source::kFile) return ReadScriptFile(call.script);
    return ReadToEnd(in);
}

enum ExitStatus : int { kSucceeded = 0, kCommandFailed = 1, kGrammarMistake = 2 };

int Mistake(const BatchStreams& streams, std::string_view text) {
    streams.errors << "sonavel-batch: " << text << '\n';
    return kGrammarMistake;
}

// `name` stands for the script in messages.
int RunScript(std::string_view name, std::string_view text, script::ScriptSession& session,
              std::ostream& errors) {
    const script::ParsedScript parsed = script::ParseScript(text, script::AllCommandRows());
    for (const script::GrammarMistake& mistake : parsed.mistakes)
        errors << name << ':' << mistake.line << ": " << mistake.text << '\n';
    if (!parsed.mistakes.empty()) return kGrammarMistake;
    script::ScriptWatcher watcher;
    const script::ScriptEnd end = script::RunCommands(parsed, session, watcher);
    session.Out() << std::flush;
    if (end.kind == script::ScriptEnd::Kind::kSucceeded) return kSucceeded;
    errors << name << ':' << end.line << ": " << end.command << ": failed: " << end.reason << '\n';
    return kCommandFailed;
}

int Run(const BatchCall& call, const BatchStreams& streams) {
    const auto script = ReadScript(call, streams.in);
    if (!script) return Mistake(streams, "cannot read the script \"" + call.script + '"');
    std::error_code error;
    if (call.folder && !std::filesystem::is_directory(*call.folder, error))
        return Mistake(streams, '"' + call.folder->string() + "\" is not a folder");
    const ProgramFolder folder =
        call.folder ? ProgramFolder(*call.folder) : ProgramFolder::OfThisProgram();
    BatchHost host(folder, streams.out, call.showsProgress ? &streams.errors : nullptr);
    script::ScriptSession session(host.Services(), host.Script());
    if (call.recoverFolder) {
        const std::filesystem::path records = script::AbsolutePath(*call.recoverFolder);
        if (!recovery::MakePrivateFolder(records))
            return Mistake(streams, "cannot keep records in \"" + records.string() + '"');
        session.KeepWorkIn(records);
    }
    const bool isText = call.source == BatchCall::Source::kText;
    const int status = RunScript(isText ? "-c" : call.script, *script, session, streams.errors);
    if (const std::string fault = session.KeepingFault(); !fault.empty())
        streams.errors << "sonavel-batch: " << fault << '\n';
    return status;
}

int Perform(const BatchCall& call, const BatchStreams& streams) {
    switch (call.task) {
        case BatchCall::Task::kHelp:
            streams.out << HelpText();
            return kSucceeded;
        case BatchCall::Task::kVersion:
            streams.out << "sonavel-batch " SONAVEL_VERSION "\n";
            return kSucceeded;
        case BatchCall::Task::kRun:
            break;
    }
    return Run(call, streams);
}

}  // namespace

std::optional<BatchCall> ParseCall(const std::vector<std::string>& words, std::string& mistake) {
    return CallParser(words, mistake).Parse();
}

int RunBatchTool(const std::vector<std::string>& words, const BatchStreams& streams) {
    std::string mistake;
    const auto call = ParseCall(words, mistake);
    if (!call) return Mistake(streams, mistake + "\n" + UsageText());
    const int status = Perform(*call, streams);
    if (streams.out.flush() || status != kSucceeded) return status;
    streams.errors << "sonavel-batch: cannot write to the standard output\n";
    return kCommandFailed;
}

}  // namespace sonavel::batch
