#include "platform/qt/running_work.h"

#include "platform/qt/qt_progress.h"

namespace sonavel {

QString RunningWork::Caption() const {
    return windows_.empty() ? QString() : windows_.front()->windowTitle();
}

void RunningWork::CancelAll() {
    for (CProgressDlg* window : windows_) window->reject();
}

void RunningWork::Add(CProgressDlg& window) {
    windows_.push_back(&window);
    if (windows_.size() == 1) Q_EMIT Begun();
}

void RunningWork::Remove(CProgressDlg& window) {
    if (std::erase(windows_, &window) > 0 && windows_.empty()) Q_EMIT Ended();
}

}  // namespace sonavel
