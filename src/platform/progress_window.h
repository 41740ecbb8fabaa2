// The window that a long operation shows while it runs.
#pragma once

#include <memory>
#include <string_view>

namespace sonavel {

class ProgressWindow {
  public:
    // Closes the window.
    virtual ~ProgressWindow() = default;

    virtual void SetRange(int lowest, int highest) = 0;
    virtual void SetPosition(int position) = 0;
    // Lets the host's toolkit run, at most every 10 ms by the steady clock, and tells whether the
    // person has cancelled. Cheap enough to be called once a block of a few hundred frames.
    virtual bool Poll() = 0;
};

class ProgressFactory {
  public:
    virtual ~ProgressFactory() = default;

    // A window with the range 0 to 100; `title` is its whole caption.
    virtual std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) = 0;
};

}  // namespace sonavel
