// The progress window of reading or writing the data of a sound. Positions follow the rule of
// blocks of 2048 bytes, while the data itself moves in larger pieces.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "sound/transfer_host.h"

namespace sonavel {

// How many bytes one read or write moves between two looks at the progress window.
inline constexpr std::size_t kTransferPieceBytes = std::size_t{1} << 20;

class TransferProgress {
  public:
    TransferProgress(const TransferHost& host, std::string_view title, std::uint64_t totalBytes);

    // Shows the position of the last whole block of 2048 bytes that is done: the rounded percentage
    // of the bytes before that block. False when the person has cancelled.
    bool Advance(std::uint64_t doneBytes);
    // Whether the person has cancelled, with nothing new to be shown.
    bool Poll() { return window_ && window_->Poll(); }
    // Shows 100 and closes the window.
    void Finish();

  private:
    std::unique_ptr<ProgressWindow> window_;  // null: nothing is shown
    std::uint64_t totalBytes_;
};

}  // namespace sonavel
