#include "platform/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>

#include "platform/child_start.h"

namespace sonavel {
namespace {

using Clock = std::chrono::steady_clock;

// A child that is being torn down may hang in the kernel on a dead disk or network; then a thread
// of its own goes on waiting for it.
constexpr std::chrono::milliseconds kKilledWithin(2000);
// How long the wait for an end sleeps between looks, which grows up to this.
constexpr std::chrono::microseconds kLongestSleep(5000);

int PollMilliseconds(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1 << 30));
}

ChildEnd EndFromStatus(int status) {
    if (WIFEXITED(status)) return {ChildEnd::How::kExited, WEXITSTATUS(status)};
    const int by = WTERMSIG(status);
    return {by == SIGXCPU ? ChildEnd::How::kOutOfTime : ChildEnd::How::kCrashed, by};
}

}  // namespace

void ChildProcess::CloseDescriptor(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

bool ChildProcess::Start(const ChildCommand& command) {
    if (pid_ != -1) return false;
    ChildDescriptors ours;
    pid_ = StartChild(command, ours);
    input_ = ours.input;
    output_ = ours.output;
    error_ = ours.error;
    return pid_ != -1;
}

bool ChildProcess::Await(Waiting waiting, Milliseconds limit) {
    const Clock::time_point deadline = Clock::now() + limit;
    for (;;) {
        // A negative descriptor is passed over.
        std::array<pollfd, 2> polled = {
            pollfd{waiting == Waiting::kForErrorsAlone ? -1
                   : waiting == Waiting::kForOutput    ? output_
                                                       : input_,
                   static_cast<short>(waiting == Waiting::kForInput ? POLLOUT : POLLIN), 0},
            pollfd{error_, POLLIN, 0}};
        const int ready = poll(polled.data(), polled.size(), PollMilliseconds(deadline));
        if (ready > 0 && polled[1].revents != 0) TakeErrorText();
        if (ready > 0 && polled[0].revents != 0) return true;
        if (Clock::now() >= deadline) return false;
        if (ready < 0 && errno != EINTR && errno != EAGAIN) return false;
    }
}

// At most one piece, so that a flood there cannot hold the caller.
void ChildProcess::TakeErrorText() {
    std::array<char, 4096> piece;
    const ssize_t got = read(error_, piece.data(), piece.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (got <= 0) return CloseDescriptor(error_);
    const std::size_t room = kMostErrorText - errorText_.size();
    errorText_.append(piece.data(), std::min(room, static_cast<std::size_t>(got)));
}

ChildTransfer ChildProcess::Read(std::span<std::uint8_t> to, Milliseconds limit) {
    if (output_ < 0) return {};
    if (!Await(Waiting::kForOutput, limit)) return {ChildTransfer::How::kLater};
    const ssize_t got = read(output_, to.data(), to.size());
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) return {ChildTransfer::How::kLater};
    if (got <= 0) return {};
    return {ChildTransfer::How::kSome, static_cast<std::size_t>(got)};
}

ChildTransfer ChildProcess::Write(std::span<const std::uint8_t> from, Milliseconds limit) {
    if (input_ < 0) return {};
    if (!Await(Waiting::kForInput, limit)) return {ChildTransfer::How::kLater};
    // Standard input is a socket because a write to a pipe that the child has closed raises a
    // signal.
    const ssize_t sent = send(input_, from.data(), from.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && (errno == EINTR || errno == EAGAIN)) return {ChildTransfer::How::kLater};
    if (sent <= 0) return {};
    return {ChildTransfer::How::kSome, static_cast<std::size_t>(sent)};
}

bool ChildProcess::Reap(int options) {
    int status = 0;
    const pid_t reaped = waitpid(pid_, &status, options);
    if (reaped == 0 || (reaped < 0 && errno == EINTR)) return false;
    end_ = reaped == pid_ ? EndFromStatus(status) : ChildEnd{};
    pid_ = -1;
    return true;
}

ChildEnd ChildProcess::Finish(Milliseconds limit) {
    if (pid_ == -1) return end_;
    CloseDescriptor(input_);
    CloseDescriptor(output_);
    const Clock::time_point deadline = Clock::now() + limit;
    std::chrono::microseconds sleep(100);
    while (!Reap(WNOHANG)) {
        if (Clock::now() >= deadline) return Kill();
        if (error_ >= 0)
            Await(Waiting::kForErrorsAlone, std::chrono::ceil<Milliseconds>(sleep));
        else
            std::this_thread::sleep_for(sleep);
        sleep = std::min(sleep * 2, kLongestSleep);
    }
    while (error_ >= 0 && errorText_.size() < kMostErrorText) {
        pollfd rest{error_, POLLIN, 0};
        if (poll(&rest, 1, 0) <= 0) break;
        TakeErrorText();
    }
    CloseDescriptor(error_);
    return end_;
}

ChildEnd ChildProcess::Kill() {
    if (pid_ != -1) {
        // The child leads a group of its own: what it has started goes with it.
        kill(-pid_, SIGKILL);
        kill(pid_, SIGKILL);
        ReapKilled();
        end_ = {ChildEnd::How::kStopped, 0};
    }
    CloseDescriptor(input_);
    CloseDescriptor(output_);
    CloseDescriptor(error_);
    return end_;
}

void ChildProcess::ReapKilled() {
    const Clock::time_point deadline = Clock::now() + kKilledWithin;
    std::chrono::microseconds sleep(50);
    while (Clock::now() < deadline) {
        if (Reap(WNOHANG)) return;
        std::this_thread::sleep_for(sleep);
        sleep = std::min(sleep * 2, kLongestSleep);
    }
    std::thread([pid = pid_] { waitpid(pid, nullptr, 0); }).detach();
    pid_ = -1;
}

}  // namespace sonavel
