// Work that survives the tool: scripts that end without saving, and runs that are killed.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <random>
#include <sstream>
#include <system_error>
#include <thread>

#include "batch/batch_call.h"
#include "support/patience.h"
#include "support/sound_files.h"

namespace sonavel::batch {
namespace {

struct RunResult {
    int status = 0;
    std::string out;
    std::string errors;
};

class RecoveryTest : public ::testing::Test {
  protected:
    RecoveryTest() {
        WriteFileBytes(folder_ / "Options.ini",
                       BytesOf("[__SOUND_GENERAL_OPTIONS]\nSAVE UNDO REDO INFOMATION=1\n"
                               "마커 저장=1\n"));
        WavParts parts;
        ByteBuilder data;
        for (unsigned i = 1; i <= 5000; ++i) data.Little16(i);
        parts.data = data.Bytes();
        WriteFileBytes(folder_ / "in.wav", WavBytes(parts));
    }

    std::string Records() const { return (folder_ / "records").string(); }
    std::string Input() const { return "open \"" + (folder_ / "in.wav").string() + "\"\n"; }
    std::string Recover(const std::string& number = "") const {
        return "recover \"" + Records() + "\" " + number + "\n";
    }

    RunResult Run(const std::string& script, bool keeps) const {
        std::vector<std::string> words{"--folder", folder_.Path().string(), "-c", script};
        if (keeps) words.insert(words.end(), {"--recover", Records()});
        std::istringstream in;
        std::ostringstream out, errors;
        const int status = RunBatchTool(words, {in, out, errors});
        return {status, out.str(), errors.str()};
    }
    std::string Left() const { return Run(Recover(), false).out; }

    TemporaryFolder folder_;
};

constexpr const char* kReport = "samples 0 6000; markers; history; info\n";

TEST_F(RecoveryTest, OpensWhatAScriptLeftUnsaved) {
    const std::string edits =
        "select 10 200; cut; cursor 1000; paste; marker-add 50 name=here; "
        "select 0 100; volume percent=50; undo; select 0 0; cursor 0\n";
    const RunResult kept = Run(Input() + edits + kReport, true);
    EXPECT_EQ(kept.status, 0) << kept.errors;
    const std::string path = (folder_ / "in.wav").string();
    const std::string line = "left 1 title=\"in.wav\" path=\"" + path + "\" frames=5000 edits=3\n";
    EXPECT_EQ(Left(), line);
    // Reading it leaves it there.
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Run(Recover("1") + kReport, false).out, kept.out);
    EXPECT_EQ(Left(), line);
    const std::string more = "undo; undo; redo; redo; redo;\n";
    EXPECT_EQ(Run(Recover("1") + more + kReport, false).out,
              Run(Input() + edits + more + kReport, false).out);
}

TEST_F(RecoveryTest, KeepsNothingOfWhatWasSavedClosedOrNotChanged) {
    const std::string out = (folder_ / "out.wav").string();
    for (const std::string& end : {std::string("info"), "select 0 9; cut; save " + out,
                                   std::string("select 0 9; cut; close")}) {
        EXPECT_EQ(Run(Input() + end, true).status, 0);
        EXPECT_EQ(Left(), "") << end;
    }
    EXPECT_EQ(Run(Input() + "select 0 9; cut", false).status, 0);
    EXPECT_EQ(Left(), "");
}

TEST_F(RecoveryTest, TakesTheRecordsAlongWhenWhatWasRecoveredIsSavedOrClosed) {
    const std::string out = (folder_ / "out.wav").string();
    for (const bool keeps : {false, true})
        for (const std::string& end : {"save " + out, std::string("close")}) {
            EXPECT_EQ(Run(Input() + "select 0 9; cut", true).status, 0);
            EXPECT_NE(Left(), "");
            EXPECT_EQ(Run(Recover("1") + end, keeps).status, 0);
            EXPECT_EQ(Left(), "") << end;
        }
}

TEST_F(RecoveryTest, ListsSeveralInTheirOrderAndSaysWhatIsNotThere) {
    EXPECT_EQ(
        Run(Input() + "select 0 9; cut; new rate=8000 bits=16; paste; paste; new", true).status, 0);
    std::istringstream lines(Left());
    std::string first, second, third;
    std::getline(lines, first);
    std::getline(lines, second);
    EXPECT_FALSE(std::getline(lines, third));
    EXPECT_EQ(first.substr(0, 22), "left 1 title=\"in.wav\" ");
    EXPECT_NE(second.find("left 2 title=\"Sound1\" path=\"\" frames=18 edits=2"), std::string::npos)
        << second;
    EXPECT_NE(Run(Recover("3"), false).errors.find("Nothing was left"), std::string::npos);
    EXPECT_NE(Run("recover /no/such/folder", false).errors.find("not a folder"), std::string::npos);
}

TEST_F(RecoveryTest, AsksBeforeASaveOverWhatAnotherOneWrote) {
    // The second document of the same file is the other program.
    const RunResult result = Run(Input() + Input() +
                                     "select 0 9; cut; save; activate 1; answer "
                                     "cancel; try save; save; save; info",
                                 false);
    const std::string question =
        "question: The file was changed by another program. Overwrite, Save As, Cancel -> ";
    EXPECT_EQ(result.out.substr(0, result.out.find("document")),
              question + "cancel\nfailed: Cancelled.\n" + question + "ok\n");
    EXPECT_EQ(result.errors, "");
}

// --- Killed runs

std::uintmax_t JournalBytes(const std::filesystem::path& records) {
    std::error_code error, unreadable;
    std::uintmax_t bytes = 0;
    for (std::filesystem::directory_iterator entry(records, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto size = std::filesystem::file_size(entry->path() / "journal", unreadable);
        if (!unreadable) bytes = std::max(bytes, size);
    }
    return bytes;
}

// When so many bytes of its work have been written, or it has ended.
void KillBehind(std::uintmax_t bytes, const std::filesystem::path& records,
                const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    const auto end = std::chrono::steady_clock::now() + kPatience;
    int status = 0;
    pid_t ended = 0;
    while (ended == 0 && JournalBytes(records) < bytes && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        ended = waitpid(child, &status, WNOHANG);
    }
    if (ended == 0) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
    }
    if (WIFEXITED(status)) {
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
}

// The first of so many edits, each of which tells itself from the others.
std::string FirstEdits(int count) {
    std::mt19937 random(5);
    const auto number = [&] { return std::to_string(random() % 90); };
    std::string script;
    for (int i = 0; i < count; ++i) {
        const std::string start = std::to_string(random() % 4000);
        script += "select " + start + " " + std::to_string(std::stoi(start) + 5) + "\n";
        switch (i % 4) {
            case 0:
                script += "cut\n";
                break;
            case 1:
                script += "select 0 0; cursor " + start + "; paste\n";
                break;
            case 2:
                script += "volume percent=" + number() + "\n";
                break;
            default:
                script += "marker-add " + start + " name=m" + number() + "\n";
        }
    }
    return script;
}

int EditsIn(const std::string& left) {
    const std::size_t at = left.find("edits=");
    return at == std::string::npos ? -1 : std::stoi(left.substr(at + 6));
}

TEST_F(RecoveryTest, LosesNothingThatWasWrittenBeforeAKill) {
    WriteFileBytes(folder_ / "script", BytesOf(Input() + FirstEdits(2000)));
    std::mt19937 random(std::random_device{}());
    int recovered = 0;
    for (int run = 0; run < 8; ++run) {
        std::filesystem::remove_all(Records());
        KillBehind(1 + random() % 20000, Records(),
                   {SONAVEL_BATCH, "--folder", folder_.Path().string(), "--recover", Records(),
                    (folder_ / "script").string()});
        if (!std::filesystem::exists(Records())) continue;
        const std::string left = Left();
        if (left.empty()) continue;
        const int edits = EditsIn(left);
        ASSERT_GE(edits, 0) << left;
        recovered += edits > 0;
        RunResult back = Run(Recover("1") + "select 0 0; cursor 0\n" + kReport, false);
        EXPECT_EQ(back.status, 0) << back.errors;
        // The kill may have torn the last record.
        if (back.out.starts_with("message: ")) back.out.erase(0, back.out.find('\n') + 1);
        RunResult model =
            Run(Input() + FirstEdits(edits) + "select 0 0; cursor 0\n" + kReport, false);
        if (edits > 0) {
            EXPECT_EQ(back.out, model.out) << edits;
        }
    }
    EXPECT_GT(recovered, 0);
}

}  // namespace
}  // namespace sonavel::batch
