// The main frame's sounds: how their windows come and go, and what is asked before.
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLayout>
#include <QMimeData>
#include <QStatusTipEvent>
#include <QUrl>

#include "app/document_commands.h"
#include "app/main_frame.h"
#include "platform/qt/file_names.h"
#include "platform/qt/message_box.h"
#include "platform/qt/utf8_text.h"
#include "spatial/ui/spatial_commands.h"
#include "view/ui/asking_view_commands.h"
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
        if (index) Tell(Close(*index));
    });
    windowList_->Add(*frame);
    ConnectMeter(*frame);
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
    if (workspace_->Active() == &sound) ForgetCommands();
    windowList_->Remove(*frame);
    area_->Remove(*frame);
}

void CMainFrame::ForgetCommands() {
    viewCommands_.reset();
    documentCommands_.reset();
    saver_.reset();
    spatialCommands_.reset();
}

void CMainFrame::OnActivated(OpenSound* sound) {
    ForgetCommands();
    if (sound) {
        spatialCommands_ =
            std::make_unique<SpatialCommands>(*sound->document, *sound->view, spatialMemory_);
        viewCommands_ = std::make_unique<AskingViewCommands>(*sound->view, this);
        saver_.emplace(*workspace_, *sound->document, this);
        documentCommands_ =
            std::make_unique<TableCommandTarget<DocumentSaver>>(*saver_, DocumentCommands());
        area_->setActiveSubWindow(area_->FrameOf(*sound));
    }
    GiveMeterTo(sound);
    ScheduleRefresh();
}

void CMainFrame::ActivateSoundOf(CChildFrame& frame) {
    if (const auto index = workspace_->IndexOf(*frame.Sound().document))
        workspace_->Activate(*index);
}

Outcome CMainFrame::AskWhetherToSave(std::size_t index) {
    Tell(workspace_->StopActivity(index));
    CSoundDoc& document = *workspace_->At(index).document;
    if (!document.GetModified()) return Done();
    workspace_->Activate(index);
    const QString question = tr("Save changes to %1?").arg(Utf8Text(document.Title()));
    MessageBox box({.text = question,
                    .buttons = QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel},
                   this);
    switch (box.exec()) {
        case QMessageBox::Save:
            return DocumentSaver(*workspace_, document, this).Save();
        case QMessageBox::Discard:
            return Done();
        default:
            return Cancelled();
    }
}

Outcome CMainFrame::Close(std::size_t index) {
    if (Outcome asked = AskWhetherToSave(index); !asked) return asked;
    workspace_->Close(index);
    return Done();
}

Outcome CMainFrame::CloseActive() {
    return Close(workspace_->ActiveIndex().value());
}

Outcome CMainFrame::CloseAll() {
    for (std::size_t i = 0; i < workspace_->Count(); ++i)
        if (Outcome asked = AskWhetherToSave(i); !asked) return asked;
    while (workspace_->Count() > 0) workspace_->Close(workspace_->Count() - 1);
    return Done();
}

Outcome CMainFrame::CloseOthers() {
    const CSoundDoc& kept = *workspace_->Active()->document;
    for (std::size_t i = 0; i < workspace_->Count(); ++i) {
        if (workspace_->At(i).document.get() == &kept) continue;
        if (Outcome asked = AskWhetherToSave(i); !asked) return asked;
    }
    workspace_->Activate(*workspace_->IndexOf(kept));
    for (std::size_t i = workspace_->Count(); i-- > 0;)
        if (workspace_->At(i).document.get() != &kept) workspace_->Close(i);
    return Done();
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
    return QMainWindow::event(event);
}

void CMainFrame::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    QMetaObject::invokeMethod(this, &CMainFrame::ShowFloatingBars, Qt::QueuedConnection);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    if (const Outcome closed = CloseAll(); !closed) {
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
