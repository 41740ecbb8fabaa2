#include "app/recovery/program_end.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>

namespace sonavel {
namespace {

constexpr int kEndingSignals[] = {SIGTERM, SIGHUP, SIGINT};

// A handler may do little more than write to a descriptor.
int signalEnds[2] = {-1, -1};

void OnEndingSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(signalEnds[0], &byte, 1);
}

}  // namespace

EndSignals::EndSignals(std::function<void()> leave, QObject* parent)
    : QObject(parent), leave_(std::move(leave)) {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, signalEnds) != 0) return;
    auto* notifier = new QSocketNotifier(signalEnds[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { Serve(); });
    for (const int number : kEndingSignals) std::signal(number, OnEndingSignal);
}

EndSignals::~EndSignals() {
    for (const int number : kEndingSignals) std::signal(number, SIG_DFL);
    for (int& end : signalEnds) {
        if (end >= 0) close(end);
        end = -1;
    }
}

void EndSignals::Serve() {
    char bytes[16];
    if (read(signalEnds[1], bytes, sizeof bytes) > 0) leave_();
}

}  // namespace sonavel
