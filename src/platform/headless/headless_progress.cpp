#include "platform/headless/headless_progress.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>

namespace sonavel {
namespace {

class SilentWindow : public ProgressWindow {
  public:
    void SetRange(int, int) override {}
    void SetPosition(int) override {}
    bool Poll() override { return false; }
};

class PrintedWindow : public ProgressWindow {
  public:
    PrintedWindow(std::ostream& out, std::string_view title) : out_(out), title_(title) {
        Print(0);
    }

    void SetRange(int lowest, int highest) override {
        lowest_ = lowest;
        highest_ = highest;
    }

    void SetPosition(int position) override {
        const std::int64_t range = std::int64_t{highest_} - lowest_;
        if (range <= 0) return;
        const std::int64_t done = std::clamp(position, lowest_, highest_) - std::int64_t{lowest_};
        Print(static_cast<int>(done * 100 / range));
    }

    bool Poll() override { return false; }

  private:
    void Print(int percent) {
        if (percent == shown_) return;
        shown_ = percent;
        out_ << title_ << ": " << percent << "%\n" << std::flush;
    }

    std::ostream& out_;
    std::string title_;
    int lowest_ = 0;
    int highest_ = 100;
    int shown_ = -1;
};

}  // namespace

std::unique_ptr<ProgressWindow> HeadlessProgress::CreateProgress(std::string_view title) {
    if (!out_) return std::make_unique<SilentWindow>();
    return std::make_unique<PrintedWindow>(*out_, title);
}

}  // namespace sonavel
