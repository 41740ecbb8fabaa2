// One progress window for a whole script: what the commands report lies within the share of each.
#pragma once

#include <memory>
#include <string_view>

#include "platform/progress_window.h"
#include "script/script_runner.h"

namespace sonavel::script {

class ScriptProgress : public ProgressFactory, public ScriptWatcher {
  public:
    explicit ScriptProgress(ProgressFactory& host);

    // Goes on where the script stands, under the one title.
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override;
    GoOn Watch(std::size_t done, std::size_t count) override;

  private:
    class Part;

    // `share`: of the command that runs, 0 to 1. False when the person has cancelled.
    void Show(double share);
    bool Poll();

    std::unique_ptr<ProgressWindow> window_;
    std::size_t done_ = 0;
    std::size_t count_ = 1;
    bool cancelled_ = false;
};

}  // namespace sonavel::script
