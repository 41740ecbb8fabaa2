#include "app/child_frame.h"

#include <QCloseEvent>
#include <QMenu>

#include "app/command_icons.h"
#include "platform/qt/utf8_text.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

CChildFrame::CChildFrame(OpenSound& sound, CommandActions& actions, QWidget* parent)
    : QMdiSubWindow(parent), sound_(&sound), view_(new SoundViewWidget(*sound.view, actions)) {
    setWidget(view_);
    setWindowIcon(ProgramIcon());
    setFocusProxy(view_);
    // Its Close has the key of the frame's command of that name, which does the same.
    for (QAction* action : systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
    sound.document->AddObserver(this);
    connect(view_, &SoundViewWidget::SelectionChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::ScrollChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::TransportChanged, this, &CChildFrame::ShowTitle);
    connect(view_, &SoundViewWidget::TransportChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::StatusTextChanged, this, &CChildFrame::StateChanged);
    ShowTitle();
}

CChildFrame::~CChildFrame() {
    LetGo();
}

void CChildFrame::LetGo() {
    if (!sound_) return;
    sound_->document->RemoveObserver(this);
    delete view_;
    view_ = nullptr;
    sound_ = nullptr;
}

void CChildFrame::OnSoundChanged(std::uint32_t) {
    ShowTitle();
    Q_EMIT SoundChanged();
    Q_EMIT StateChanged();
}

void CChildFrame::OnTitleOrModifiedChanged() {
    ShowTitle();
    Q_EMIT TitleChanged();
}

QString CChildFrame::Name() const {
    const QString title = Utf8Text(sound_->document->Title());
    return sound_->document->Sound().IsRecording() ? tr("%1 (Recording)").arg(title) : title;
}

void CChildFrame::ShowTitle() {
    setWindowTitle(Name() + QStringLiteral("[*]"));
    setWindowModified(sound_->document->GetModified());
}

void CChildFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (sound_) Q_EMIT CloseRequested();
}

}  // namespace sonavel
