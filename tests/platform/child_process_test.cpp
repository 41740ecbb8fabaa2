// Children that behave and children that do not: none outlives its object, hangs the caller, or
// sees more of this program than its three standard descriptors.
#include "platform/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <signal.h>
#include <cerrno>
#include <filesystem>
#include <iterator>

#include "support/patience.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;
using How = ChildEnd::How;
using Clock = std::chrono::steady_clock;

std::size_t OpenDescriptors() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

class ChildProcessTest : public ::testing::Test {
  protected:
    void SetUp() override { descriptors_ = OpenDescriptors(); }
    void TearDown() override {
        child_.Kill();
        EXPECT_EQ(OpenDescriptors(), descriptors_);
        EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD) << "a child is left";
    }

    static ChildCommand Shell(const char* script, ChildInput input = ChildInput::kNothing) {
        ChildCommand command;
        command.program = "/bin/sh";
        command.arguments = {"-c", script};
        command.input = input;
        return command;
    }
    static std::string OutputOf(ChildProcess& child) {
        std::string text;
        for (;;) {
            std::uint8_t bytes[512];
            const ChildTransfer got = child.Read(bytes, 5s);
            if (got.how != ChildTransfer::How::kSome) return text;
            text.append(reinterpret_cast<const char*>(bytes), got.bytes);
        }
    }
    static std::string OutputOf(const ChildCommand& command) {
        ChildProcess child;
        EXPECT_TRUE(child.Start(command));
        std::string text = OutputOf(child);
        child.Finish(5s);
        return text;
    }

    ChildProcess child_;

  private:
    std::size_t descriptors_ = 0;
};

TEST_F(ChildProcessTest, GivesBackWhatItIsGiven) {
    ChildCommand cat;
    cat.program = "/bin/cat";
    cat.input = ChildInput::kPipe;
    ASSERT_TRUE(child_.Start(cat));
    const std::uint8_t bytes[] = {'a', 0, 255};
    EXPECT_EQ(child_.Write(bytes, 5s).bytes, 3u);
    child_.CloseInput();
    EXPECT_EQ(OutputOf(child_), std::string("a\0\xFF", 3));
    EXPECT_EQ(child_.Finish(5s), (ChildEnd{How::kExited, 0}));
}

// Nothing is looked up, expanded or joined.
TEST_F(ChildProcessTest, PassesArgumentsAsTheyAre) {
    ChildCommand echo;
    echo.program = "/bin/echo";
    echo.arguments = {"$HOME; *", "", "two  blanks"};
    EXPECT_EQ(OutputOf(echo), "$HOME; *  two  blanks\n");
    ChildProcess none;
    ChildCommand lookedUp;
    lookedUp.program = "true";
    EXPECT_FALSE(none.Start(lookedUp));
    EXPECT_EQ(none.Finish(1s).how, How::kUnknown);
}

TEST_F(ChildProcessTest, SaysHowItEnded) {
    const struct {
        const char* script;
        ChildEnd end;
    } cases[] = {{"exit 0", {How::kExited, 0}},
                 {"exit 7", {How::kExited, 7}},
                 {"kill -SEGV $$", {How::kCrashed, SIGSEGV}},
                 {"kill -KILL $$", {How::kCrashed, SIGKILL}},
                 {"sleep 100", {How::kStopped, 0}}};
    for (const auto& row : cases) {
        ChildProcess child;
        ASSERT_TRUE(child.Start(Shell(row.script)));
        const auto began = Clock::now();
        EXPECT_EQ(child.Finish(row.end.how == How::kStopped ? 50ms : kPatience), row.end)
            << row.script;
        EXPECT_LT(Clock::now() - began, kPatience - 10s) << row.script;
    }
}

TEST_F(ChildProcessTest, WaitsNoLongerThanItIsTold) {
    ASSERT_TRUE(child_.Start(Shell("sleep 100", ChildInput::kPipe)));
    std::uint8_t byte;
    auto began = Clock::now();
    EXPECT_EQ(child_.Read({&byte, 1}, 30ms).how, ChildTransfer::How::kLater);
    EXPECT_GE(Clock::now() - began, 29ms);
    const std::vector<std::uint8_t> much(std::size_t{8} << 20);
    ChildTransfer sent = child_.Write(much, 30ms);
    while (sent.how == ChildTransfer::How::kSome) sent = child_.Write(much, 30ms);
    EXPECT_EQ(sent.how, ChildTransfer::How::kLater);
    began = Clock::now();
    child_.Kill();
    EXPECT_LT(Clock::now() - began, kPatience);
}

TEST_F(ChildProcessTest, KeepsTheFirstOfItsErrorsAndIsNotHeldUpByTheRest) {
    ASSERT_TRUE(child_.Start(Shell("echo first >&2; head -c 3000000 /dev/zero >&2; echo done")));
    EXPECT_EQ(OutputOf(child_), "done\n");
    EXPECT_EQ(child_.Finish(5s).how, How::kExited);
    EXPECT_EQ(child_.ErrorText().size(), ChildProcess::kMostErrorText);
    EXPECT_TRUE(child_.ErrorText().starts_with("first\n"));
}

TEST_F(ChildProcessTest, WritingToOneThatIsGoneIsTheEnd) {
    ASSERT_TRUE(child_.Start(Shell("exit 0", ChildInput::kPipe)));
    const std::vector<std::uint8_t> much(std::size_t{1} << 20);
    ChildTransfer sent = child_.Write(much, 5s);
    while (sent.how == ChildTransfer::How::kSome) sent = child_.Write(much, 5s);
    EXPECT_EQ(sent.how, ChildTransfer::How::kEnd);
}

// Also of descriptors that were opened without care, and when this program's own are closed.
TEST_F(ChildProcessTest, InheritsNoDescriptors) {
    const int careless = dup2(STDERR_FILENO, 40);
    ASSERT_EQ(careless, 40);
    const char* script =
        "for n in 0 1 2 3 4 5 6 7 8 9 40; do [ -e /proc/$$/fd/$n ] && echo $n; done";
    EXPECT_EQ(OutputOf(Shell(script)), "0\n1\n2\n");
    close(careless);
    const int kept = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 50);
    close(STDIN_FILENO);
    EXPECT_EQ(OutputOf(Shell(script, ChildInput::kPipe)), "0\n1\n2\n");
    if (kept >= 0) {
        dup2(kept, STDIN_FILENO);
        close(kept);
    }
}

// The limits hold before the child has read a word.
TEST_F(ChildProcessTest, LimitsMemoryTimeAndCoreFiles) {
    ChildCommand command = Shell("read word; ulimit -v; ulimit -t; ulimit -c", ChildInput::kPipe);
    command.memoryBytes = std::uint64_t{256} << 20;
    command.cpuSeconds = 9;
    ASSERT_TRUE(child_.Start(command));
    const std::uint8_t line[] = {'\n'};
    child_.Write(line, 5s);
#if defined(__SANITIZE_ADDRESS__)
    EXPECT_EQ(OutputOf(child_), "unlimited\n9\n0\n");
#else
    EXPECT_EQ(OutputOf(child_), "262144\n9\n0\n");
#endif
}

TEST_F(ChildProcessTest, EndsOneThatComputesForever) {
    ChildCommand command = Shell("while :; do :; done");
    command.cpuSeconds = 1;
    ASSERT_TRUE(child_.Start(command));
    EXPECT_EQ(child_.Finish(60s).how, How::kOutOfTime);
}

// A process that is over but not yet reaped by whoever inherited it counts as gone.
bool IsGone(pid_t pid) {
    std::FILE* file = std::fopen(("/proc/" + std::to_string(pid) + "/stat").c_str(), "r");
    if (file == nullptr) return true;
    char state = '?';
    const int got = std::fscanf(file, "%*d (%*[^)]) %c", &state);
    std::fclose(file);
    return got == 1 && state == 'Z';
}

TEST_F(ChildProcessTest, TakesWhatItStartedWithIt) {
    ASSERT_TRUE(child_.Start(Shell("sleep 100 & echo $!; wait")));
    std::uint8_t bytes[32] = {};
    const ChildTransfer got = child_.Read(bytes, 5s);
    ASSERT_EQ(got.how, ChildTransfer::How::kSome);
    const pid_t grandchild = std::atoi(reinterpret_cast<const char*>(bytes));
    child_.Kill();
    for (int i = 0; i < 200 && !IsGone(grandchild); ++i) usleep(10'000);
    EXPECT_TRUE(IsGone(grandchild));
}

}  // namespace
}  // namespace sonavel
