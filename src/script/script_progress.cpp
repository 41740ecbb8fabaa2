#include "script/script_progress.h"

#include <algorithm>

namespace sonavel::script {
namespace {

constexpr int kSteps = 1000;  // of the whole window

}  // namespace

class ScriptProgress::Part : public ProgressWindow {
  public:
    explicit Part(ScriptProgress& whole) : whole_(whole) {}

    void SetRange(int lowest, int highest) override {
        lowest_ = lowest;
        highest_ = std::max(highest, lowest + 1);
    }
    void SetPosition(int position) override {
        const double extent = static_cast<double>(highest_) - lowest_;
        whole_.Show((static_cast<double>(position) - lowest_) / extent);
    }
    bool Poll() override { return whole_.Poll(); }

  private:
    ScriptProgress& whole_;
    int lowest_ = 0;
    int highest_ = 100;
};

ScriptProgress::ScriptProgress(ProgressFactory& host)
    : window_(host.CreateProgress("Progress Script")) {
    window_->SetRange(0, kSteps);
}

std::unique_ptr<ProgressWindow> ScriptProgress::CreateProgress(std::string_view) {
    return std::make_unique<Part>(*this);
}

GoOn ScriptProgress::Watch(std::size_t done, std::size_t count) {
    done_ = done;
    count_ = std::max<std::size_t>(count, 1);
    Show(0);
    return Poll() ? GoOn::kNo : GoOn::kYes;
}

void ScriptProgress::Show(double share) {
    const double whole =
        (static_cast<double>(done_) + std::clamp(share, 0.0, 1.0)) / static_cast<double>(count_);
    window_->SetPosition(static_cast<int>(std::min(whole, 1.0) * kSteps));
}

bool ScriptProgress::Poll() {
    // Once cancelled it stays so, whatever the window says of itself.
    cancelled_ = cancelled_ || window_->Poll();
    return cancelled_;
}

}  // namespace sonavel::script
