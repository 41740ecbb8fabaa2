// The window "Progress" of a long operation. An operation that ends soon shows none.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QProgressBar>
#include <chrono>
#include <functional>

#include "platform/progress_window.h"
#include "platform/qt/running_work.h"

namespace sonavel {

class CProgressDlg : public QDialog {
    Q_OBJECT

  public:
    // Over a dialog that is modal the window takes all clicks to itself; over the main window it
    // leaves the rest of the program to whoever watches the running work.
    CProgressDlg(const QString& caption, QWidget* parent, RunningWork* work = nullptr);
    ~CProgressDlg() override;

    QProgressBar& Bar() { return *bar_; }
    bool IsCancelled() const { return cancelled_; }

    // Escape, the Cancel button and closing the window all come here; the operation takes the
    // window away at its next poll.
    void reject() override { cancelled_ = true; }

  private:
    QProgressBar* bar_;
    QPointer<RunningWork> work_;
    bool cancelled_ = false;
};

// The caption for a title that is whole or, beginning with a blank, follows "Progress".
QString ProgressCaption(std::string_view title);

class QtProgress : public ProgressWindow {
  public:
    static constexpr std::chrono::milliseconds kDelayBeforeShow{300};
    static constexpr std::chrono::milliseconds kPollInterval{10};

    QtProgress(std::string_view title, QWidget* parent, RunningWork* work = nullptr);
    ~QtProgress() override;

    void SetRange(int lowest, int highest) override;
    void SetPosition(int position) override;
    bool Poll() override;

    bool IsShown() const { return dialog_ && dialog_->isVisible(); }

  private:
    using Clock = std::chrono::steady_clock;

    void ShowWhenDue(Clock::time_point now);

    // The window may go with its parent while the operation still runs.
    QPointer<CProgressDlg> dialog_;
    Clock::time_point created_ = Clock::now();
    Clock::time_point lastPoll_ = created_;
    int position_ = 0;
};

class QtProgressFactory : public ProgressFactory {
  public:
    void SetMainWindow(QWidget* window) { mainWindow_ = window; }
    RunningWork& Work() { return work_; }
    std::unique_ptr<ProgressWindow> CreateProgress(std::string_view title) override;

  private:
    QPointer<QWidget> mainWindow_;
    RunningWork work_;
};

}  // namespace sonavel
