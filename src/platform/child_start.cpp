#include "platform/child_start.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <utility>

namespace sonavel {
namespace {

// Large pieces cross a pipe in fewer turns; a system that allows less keeps its own size.
constexpr int kPipeBytes = 1 << 20;
constexpr int kFirstOwnDescriptor = 3;

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) close(value_);
    }
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }

    int Get() const { return value_; }
    int Release() { return std::exchange(value_, -1); }
    bool IsOpen() const { return value_ >= 0; }

    // Above the standard ones, which this program may have closed and the child's are put into.
    bool Raise() {
        if (value_ >= kFirstOwnDescriptor) return true;
        *this = Descriptor(fcntl(value_, F_DUPFD_CLOEXEC, kFirstOwnDescriptor));
        return value_ >= kFirstOwnDescriptor;
    }

  private:
    int value_ = -1;
};

struct Channel {
    Descriptor ours;
    Descriptor theirs;

    bool Raise() { return ours.Raise() && theirs.Raise(); }
};

bool MakeOutputPipe(Channel& channel) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return false;
    channel = {Descriptor(ends[0]), Descriptor(ends[1])};
    return channel.Raise();
}

bool MakeInput(ChildInput input, Channel& channel) {
    if (input == ChildInput::kNothing) {
        channel.theirs = Descriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
        return channel.theirs.Raise();
    }
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return false;
    channel = {Descriptor(ends[0]), Descriptor(ends[1])};
    return channel.Raise();
}

// The actions and attributes of one start, given back at its end.
class SpawnPlan {
  public:
    SpawnPlan() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
    }
    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    bool Put(const Descriptor& from, int to) {
        return posix_spawn_file_actions_adddup2(&actions_, from.Get(), to) == 0;
    }
    bool CloseTheRest() {
        return posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOwnDescriptor) == 0;
    }
    // A group of its own, so that the child and what it starts can be ended as a whole, with the
    // signals as a fresh program finds them. No session of its own: the system shares the processor
    // out by sessions, and the child works for this one.
    bool Isolate() {
        sigset_t none, all;
        sigemptyset(&none);
        sigfillset(&all);
        return posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
               posix_spawnattr_setsigdefault(&attributes_, &all) == 0 &&
               posix_spawnattr_setpgroup(&attributes_, 0) == 0 &&
               posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK |
                                                          POSIX_SPAWN_SETSIGDEF |
                                                          POSIX_SPAWN_SETPGROUP) == 0;
    }
    pid_t Spawn(const ChildCommand& command) {
        std::string program = command.program.string();
        std::vector<std::string> words = command.arguments;
        std::vector<char*> pointers = {program.data()};
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        pid_t pid = -1;
        const int error =
            posix_spawn(&pid, program.c_str(), &actions_, &attributes_, pointers.data(), environ);
        return error == 0 ? pid : -1;
    }

  private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

void Limit(pid_t pid, __rlimit_resource what, rlim_t soft, rlim_t hard) {
    const rlimit limit{soft, hard};
    prlimit(pid, what, &limit, nullptr);
}

// The child has begun by now, but has read nothing of its file yet. At the soft limit of its time
// it gets the signal that tells why it ended; a second later, if it has caught that, the other one.
void SetLimits(pid_t pid, const ChildCommand& command) {
    Limit(pid, RLIMIT_CORE, 0, 0);
    if (command.cpuSeconds != 0) Limit(pid, RLIMIT_CPU, command.cpuSeconds, command.cpuSeconds + 1);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // Sanitizers reserve terabytes of address space.
    if (command.memoryBytes != 0) Limit(pid, RLIMIT_AS, command.memoryBytes, command.memoryBytes);
#endif
}

}  // namespace

pid_t StartChild(const ChildCommand& command, ChildDescriptors& ours) {
    Channel input, output, error;
    if (!MakeInput(command.input, input) || !MakeOutputPipe(output) || !MakeOutputPipe(error))
        return -1;
    fcntl(output.ours.Get(), F_SETPIPE_SZ, kPipeBytes);
    SpawnPlan plan;
    if (!plan.Put(input.theirs, STDIN_FILENO) || !plan.Put(output.theirs, STDOUT_FILENO) ||
        !plan.Put(error.theirs, STDERR_FILENO) || !plan.CloseTheRest() || !plan.Isolate())
        return -1;
    const pid_t pid = plan.Spawn(command);
    if (pid == -1) return -1;
    SetLimits(pid, command);
    ours = {input.ours.Release(), output.ours.Release(), error.ours.Release()};
    return pid;
}

}  // namespace sonavel
