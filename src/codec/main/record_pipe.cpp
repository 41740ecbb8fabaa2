#include "codec/main/record_pipe.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace sonavel {
namespace {

bool WriteAll(int descriptor, std::span<const std::uint8_t> head,
              std::span<const std::uint8_t> content) {
    while (!head.empty() || !content.empty()) {
        // The system takes what it is to write as if it might change it.
        const iovec parts[] = {{const_cast<std::uint8_t*>(head.data()), head.size()},
                               {const_cast<std::uint8_t*>(content.data()), content.size()}};
        const ssize_t written = writev(descriptor, parts, 2);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        const auto bytes = static_cast<std::size_t>(written);
        const std::size_t ofHead = std::min(bytes, head.size());
        head = head.subspan(ofHead);
        content = content.subspan(bytes - ofHead);
    }
    return true;
}

}  // namespace

RecordOutput::RecordOutput(int descriptor) : descriptor_(descriptor) {
    good_ = WriteAll(descriptor_, wire::Greeting(), {});
    sent_ = wire::kGreetingBytes;
}

void RecordOutput::Send(wire::RecordType type, std::span<const std::uint8_t> content) {
    const wire::RecordHead head{type, static_cast<std::uint32_t>(content.size())};
    good_ = good_ && WriteAll(descriptor_, wire::Pack(head), content);
    sent_ += wire::kRecordHeadBytes + content.size();
}

void RecordOutput::SendLasting(std::span<const std::uint8_t> frames) {
    if (!splices_) return Send(wire::RecordType::kFrames, frames);
    const wire::RecordHead head{wire::RecordType::kFrames,
                                static_cast<std::uint32_t>(frames.size())};
    good_ = good_ && WriteAll(descriptor_, wire::Pack(head), {}) && Splice(frames);
    sent_ += wire::kRecordHeadBytes + frames.size();
}

bool RecordOutput::Splice(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const iovec part = {const_cast<std::uint8_t*>(bytes.data()), bytes.size()};
        const ssize_t taken = vmsplice(descriptor_, &part, 1, 0);
        if (taken < 0 && errno == EINTR) continue;
        // No pipe, or a system without this: the same bytes, copied.
        if (taken < 0 && errno != EPIPE) splices_ = false;
        if (taken <= 0) return !splices_ && WriteAll(descriptor_, bytes, {});
        bytes = bytes.subspan(static_cast<std::size_t>(taken));
    }
    return true;
}

void RecordOutput::WaitUntilRead(std::uint64_t sent) {
    while (good_ && splices_) {
        int unread = 0;
        if (ioctl(descriptor_, FIONREAD, &unread) != 0) return;
        if (sent_ - static_cast<std::uint64_t>(unread) >= sent) return;
        pollfd reader = {descriptor_, 0, 0};
        if (poll(&reader, 1, 1) > 0) good_ = false;  // it is gone
    }
}

void RecordOutput::SendFailure(wire::FailureCode code, std::string_view text) {
    Send(wire::RecordType::kFailure, wire::Pack(wire::Failure{code, std::string(text)}));
}

bool RecordInput::ReadAll(std::span<std::uint8_t> to) {
    while (!to.empty()) {
        const ssize_t got = read(descriptor_, to.data(), to.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        to = to.subspan(static_cast<std::size_t>(got));
    }
    return true;
}

bool RecordInput::TakeGreeting() {
    std::uint8_t bytes[wire::kGreetingBytes];
    return ReadAll(bytes) && wire::IsGreeting(bytes);
}

std::optional<wire::RecordType> RecordInput::Next() {
    std::uint8_t bytes[wire::kRecordHeadBytes];
    if (!ReadAll(bytes)) return std::nullopt;
    const auto head = wire::ParseHead(bytes);
    if (!head) return std::nullopt;
    if (content_.size() < head->bytes) content_.resize(head->bytes);
    bytes_ = head->bytes;
    if (!ReadAll({content_.data(), bytes_})) return std::nullopt;
    return head->type;
}

}  // namespace sonavel
