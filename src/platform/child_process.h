// Another program run as a child: started by its path and never by a shell, with its own standard
// input, output and error, with limits, and without any other descriptor of this program. Nothing
// here waits longer than it is told to, and no child outlives its object.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace sonavel {

enum class ChildInput { kNothing, kPipe };

struct ChildCommand {
    std::filesystem::path program;       // started as it is, looked up nowhere
    std::vector<std::string> arguments;  // behind the program's own name
    ChildInput input = ChildInput::kNothing;
    std::uint64_t memoryBytes = 0;  // of address space at most; 0 for no limit
    std::uint64_t cpuSeconds = 0;   // of computing time at most; 0 for no limit
};

// How a child ended. kStopped: this side ended it, by Kill or because it did not end in time.
struct ChildEnd {
    enum class How { kExited, kCrashed, kOutOfTime, kStopped, kUnknown };
    How how = How::kUnknown;
    int code = 0;  // the exit status of kExited, the signal of kCrashed

    bool operator==(const ChildEnd&) const = default;
};

// What one Read or Write did. kLater: nothing within the time given. kEnd: the child has closed its
// end. With kSome `bytes` is above 0, else 0.
struct ChildTransfer {
    enum class How { kSome, kLater, kEnd };
    How how = How::kEnd;
    std::size_t bytes = 0;
};

class ChildProcess {
  public:
    using Milliseconds = std::chrono::milliseconds;
    static constexpr std::size_t kMostErrorText = 4096;

    ChildProcess() = default;
    // Ends a child that still runs.
    ~ChildProcess() { Kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Starts the program, once an object. False when it cannot be started. A child that asks to die
    // with its parent dies with the thread that calls this.
    bool Start(const ChildCommand& command);

    // From the child's standard output, as soon as there is something.
    ChildTransfer Read(std::span<std::uint8_t> to, Milliseconds limit);
    // To its standard input, as much as it takes at once.
    ChildTransfer Write(std::span<const std::uint8_t> from, Milliseconds limit);
    // Its standard input ends here.
    void CloseInput() { CloseDescriptor(input_); }
    // What it wrote to its standard error: the first 4 KiB as far as they were read by the calls
    // above and below. Hostile bytes.
    const std::string& ErrorText() const { return errorText_; }

    // Waits for the end of the child, which is ended when the limit passes. What it still writes to
    // its standard output is lost.
    ChildEnd Finish(Milliseconds limit);
    // Ends it at once and reaps it.
    ChildEnd Kill();

  private:
    enum class Waiting { kForOutput, kForInput, kForErrorsAlone };

    // True when the awaited descriptor is ready; false when the limit has passed. Takes what comes
    // on standard error meanwhile, so that a talkative child is not held up.
    bool Await(Waiting waiting, Milliseconds limit);
    void TakeErrorText();
    bool Reap(int options);
    void ReapKilled();
    static void CloseDescriptor(int& descriptor);

    pid_t pid_ = -1;
    int input_ = -1;
    int output_ = -1;
    int error_ = -1;
    std::string errorText_;
    ChildEnd end_;
};

}  // namespace sonavel
