#include "platform/qt/qt_progress.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

QWidget* WindowInUse(QWidget* mainWindow) {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return mainWindow;
}

}  // namespace

CProgressDlg::CProgressDlg(const QString& caption, QWidget* parent, RunningWork* work)
    : QDialog(parent), bar_(new QProgressBar(this)), work_(work) {
    setWindowTitle(caption);
    // What a modal dialog shows would change under the operation that it began.
    const bool isOverModal = parent && parent->window()->isModal();
    setWindowModality(work && !isOverModal ? Qt::NonModal : Qt::ApplicationModal);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &CProgressDlg::reject);
    auto* column = new QVBoxLayout(this);
    column->setSpacing(12);
    column->addWidget(bar_);
    column->addWidget(new QLabel(tr("Press ESC or Cancel button to abort"), this));
    column->addWidget(buttons);
    setMinimumWidth(380);
    bar_->setRange(0, 100);
    if (work_) work_->Add(*this);
}

CProgressDlg::~CProgressDlg() {
    if (work_) work_->Remove(*this);
}

QString ProgressCaption(std::string_view title) {
    QString text = Utf8Text(title);
    if (text.isEmpty() || text.startsWith(u' ')) return QStringLiteral("Progress") + text;
    return text;
}

QtProgress::QtProgress(std::string_view title, QWidget* parent, RunningWork* work)
    : dialog_(new CProgressDlg(ProgressCaption(title), parent, work)) {}

QtProgress::~QtProgress() {
    delete dialog_.data();
}

void QtProgress::SetRange(int lowest, int highest) {
    if (dialog_) dialog_->Bar().setRange(lowest, highest);
}

void QtProgress::SetPosition(int position) {
    if (position == position_) return;
    position_ = position;
    if (dialog_) dialog_->Bar().setValue(position);
}

bool QtProgress::Poll() {
    if (!dialog_) return true;
    const Clock::time_point now = Clock::now();
    if (now - lastPoll_ < kPollInterval) return dialog_->IsCancelled();
    ShowWhenDue(now);
    // Without the window, a key or a click would reach the sound that is being worked on.
    QApplication::processEvents(IsShown() ? QEventLoop::AllEvents
                                          : QEventLoop::ExcludeUserInputEvents);
    lastPoll_ = Clock::now();
    return !dialog_ || dialog_->IsCancelled();
}

void QtProgress::ShowWhenDue(Clock::time_point now) {
    if (!dialog_->isVisible() && now - created_ >= kDelayBeforeShow) dialog_->show();
}

std::unique_ptr<ProgressWindow> QtProgressFactory::CreateProgress(std::string_view title) {
    return std::make_unique<QtProgress>(title, WindowInUse(mainWindow_), &work_);
}

}  // namespace sonavel
