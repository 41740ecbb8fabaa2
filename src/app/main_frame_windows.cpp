// The main frame's sounds: how their windows come and go.
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLayout>
#include <QMimeData>
#include <QStatusTipEvent>
#include <QUrl>

#include "app/exchange/origin_line.h"
#include "app/main_frame.h"
#include "platform/qt/file_names.h"
#include "view/ui/record_dialog.h"

namespace sonavel {

namespace {

QStringList LocalFiles(const QMimeData& data) {
    QStringList files;
    for (const QUrl& url : data.urls())
        if (const QString file = FileTextOf(url); !file.isEmpty()) files << QDir::cleanPath(file);
    return files;
}

}  // namespace

void CMainFrame::OnDocumentAdded(OpenSound& sound) {
    auto* frame = new CChildFrame(sound, actions_, area_);
    area_->addSubWindow(frame);
    connect(frame, &CChildFrame::CloseRequested, this, [this, frame] {
        const auto index = workspace_->IndexOf(*frame->Sound().document);
        const Outcome held = gate_->HoldAll();
        if (index) Tell(held ? closer_->Close(*index) : held);
    });
    bars_->AddSound(*frame);
    connect(frame, &CChildFrame::TitleChanged, this, &CMainFrame::ScheduleRefresh);
    connect(frame, &CChildFrame::StateChanged, this, [this] {
        UpdatePanes();
        ScheduleRefresh();
    });
    layout()->activate();  // the first comes before the frame is shown
    area_->Add(*frame);
    // Once the frame around it is built.
    if (sound.document->Options().openAndMaximize && !sound.document->Path().empty())
        QMetaObject::invokeMethod(frame, &CChildFrame::showMaximized, Qt::QueuedConnection);
}

void CMainFrame::OnDocumentClosing(OpenSound& sound) {
    CChildFrame* frame = area_->FrameOf(sound);
    if (!frame) return;
    if (workspace_->Active() == &sound) ForgetSoundCommands();
    bars_->RemoveSound(*frame);
    area_->Remove(*frame);
}

void CMainFrame::OnActivated(OpenSound* sound) {
    ForgetSoundCommands();
    if (sound) {
        soundCommands_.Take(*workspace_, *sound, this);
        area_->setActiveSubWindow(area_->FrameOf(*sound));
    }
    bars_->GiveMeterTo(sound);
    ScheduleRefresh();
}

void CMainFrame::ActivateSoundOf(CChildFrame& frame) {
    if (const auto index = workspace_->IndexOf(*frame.Sound().document))
        workspace_->Activate(*index);
}

OriginLine* CMainFrame::ActiveOrigin() const {
    OpenSound* active = workspace_->Active();
    CChildFrame* frame = active ? area_->FrameOf(*active) : nullptr;
    return frame ? &frame->Origin() : nullptr;
}

bool CMainFrame::HasOriginLine() const {
    const OriginLine* line = ActiveOrigin();
    return line && !line->Text().isEmpty();
}

bool CMainFrame::ShowsOriginLine() const {
    return HasOriginLine() && !ActiveOrigin()->isHidden();
}

void CMainFrame::SwitchOriginLine() {
    OriginLine& line = *ActiveOrigin();
    line.setVisible(line.isHidden());
}

bool CMainFrame::ShowsStatusBar() const {
    return !status_->isHidden();
}

void CMainFrame::SwitchStatusBar() {
    status_->setVisible(!ShowsStatusBar());
}

Outcome CMainFrame::Record() {
    const Result<RecordRequest> shown = workspace_->QuestionOfRecord();
    if (!shown) return shown.Ended();
    CRecordDlg dialog(*shown, this);
    return dialog.exec() == QDialog::Accepted ? workspace_->Record(dialog.Choice()) : Cancelled();
}

bool CMainFrame::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        status_->ShowPrompt(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    // A maximised child writes its own name into the frame's title.
    if (event->type() == QEvent::WindowTitleChange && windowTitle() != title_ && !title_.isEmpty())
        ScheduleRefresh();
    if (event->type() == QEvent::WindowActivate) TellWhatOthersDid();
    return QMainWindow::event(event);
}

void CMainFrame::TellWhatOthersDid() {
    const DocumentSaver* saver = soundCommands_.Saver();
    const QString word = saver ? saver->WordOnFile() : QString();
    if (!word.isEmpty()) status_->ShowNote(word);
}

void CMainFrame::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    QMetaObject::invokeMethod(bars_, &FrameBars::ShowFloating, Qt::QueuedConnection);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    if (gate_->IsRunning()) {
        event->ignore();
        gate_->WhenIdle([this] { close(); }, WorkGate::InTheWay::kIsCancelled);
        return;
    }
    if (const Outcome closed = closer_->CloseAll(); !closed) {
        Tell(closed);
        event->ignore();
        return;
    }
    StorePlaces();
    delete logo_.data();
    event->accept();
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
    if (!LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // Later, so that a box about a file does not hold up the program that the files come from.
    QMetaObject::invokeMethod(
        this, [this, files = LocalFiles(*event->mimeData())] { Q_EMIT FilesDropped(files); },
        Qt::QueuedConnection);
}

}  // namespace sonavel
