#include "sound/transfer_progress.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kBlockBytes = 2048;

int RoundedPercent(std::uint64_t part, std::uint64_t whole) {
    return static_cast<int>((200 * part + whole) / (2 * whole));
}

}  // namespace

TransferProgress::TransferProgress(const TransferHost& host, std::string_view title,
                                   std::uint64_t totalBytes)
    : totalBytes_(totalBytes) {
    if (!host.progress) return;
    window_ = host.progress->CreateProgress(title);
    window_->SetRange(0, 100);
}

bool TransferProgress::Advance(std::uint64_t doneBytes) {
    if (!window_) return true;
    if (const std::uint64_t blocks = doneBytes / kBlockBytes)
        window_->SetPosition(RoundedPercent((blocks - 1) * kBlockBytes, totalBytes_));
    return !window_->Poll();
}

void TransferProgress::Finish() {
    if (window_) window_->SetPosition(100);
    window_.reset();
}

}  // namespace sonavel
