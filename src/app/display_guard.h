// The toolkit ends a program that finds no display with a page of text and a core dump. While a
// guard exists it ends with one line instead.
#pragma once

#include <QtGlobal>

namespace sonavel {

class DisplayGuard {
  public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

  private:
    QtMessageHandler before_;
};

}  // namespace sonavel
