// Progress windows without a display: silent, or lines of title and percentage on a stream.
#pragma once

#include <iosfwd>

#include "platform/progress_window.h"

namespace sonavel {

// Never cancels.
class HeadlessProgress : public ProgressFactory {
  public:
    // Null: silent. Else every whole percentage reached is written once, as "TITLE: N%".
    explicit HeadlessProgress(std::ostream* out = nullptr) : out_(out) {}

    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override;

  private:
    std::ostream* out_;
};

}  // namespace sonavel
