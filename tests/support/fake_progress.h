// A ProgressFactory that notes what its windows showed and can cancel at a chosen poll.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/progress_window.h"

namespace sonavel {

class FakeProgress : public ProgressFactory {
  public:
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override {
        titles.emplace_back(title);
        ++openWindows;
        return std::make_unique<Window>(*this);
    }

    std::vector<std::string> titles;
    std::vector<int> positions;  // of all windows, in order
    int lowest = 0;
    int highest = 100;
    int openWindows = 0;
    int polls = 0;
    // The poll, counted from 0, from which on the person has cancelled.
    std::optional<int> cancelAtPoll;

  private:
    class Window : public ProgressWindow {
      public:
        explicit Window(FakeProgress& owner) : owner_(owner) {}
        ~Window() override { --owner_.openWindows; }

        void SetRange(int from, int to) override {
            owner_.lowest = from;
            owner_.highest = to;
        }
        void SetPosition(int position) override { owner_.positions.push_back(position); }
        bool Poll() override {
            const int poll = owner_.polls++;
            return owner_.cancelAtPoll && poll >= *owner_.cancelAtPoll;
        }

      private:
        FakeProgress& owner_;
    };
};

}  // namespace sonavel
