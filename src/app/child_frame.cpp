#include "app/child_frame.h"

#include <QCloseEvent>
#include <QMenu>
#include <QVBoxLayout>

#include "app/command_icons.h"
#include "app/exchange/origin_line.h"
#include "platform/qt/utf8_text.h"
#include "view/ui/overview_strip.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

CChildFrame::CChildFrame(OpenSound& sound, CommandActions& actions, QWidget* parent)
    : QMdiSubWindow(parent),
      sound_(&sound),
      origin_(new OriginLine),
      view_(new SoundViewWidget(*sound.view, actions)),
      overview_(new OverviewStrip(*view_)) {
    setWidget(MakePane());
    setWindowIcon(ProgramIcon());
    setFocusProxy(view_);
    // Its Close has the key of the frame's command of that name, which does the same.
    for (QAction* action : systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
    sound.document->AddObserver(this);
    connect(view_, &SoundViewWidget::SelectionChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::ScrollChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::OverviewChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::TransportChanged, this, &CChildFrame::ShowTitle);
    connect(view_, &SoundViewWidget::TransportChanged, this, &CChildFrame::StateChanged);
    connect(view_, &SoundViewWidget::StatusTextChanged, this, &CChildFrame::StateChanged);
    connect(origin_, &OriginLine::Dismissed, this, &CChildFrame::StateChanged);
    ShowTitle();
    ShowOrigin();
}

QWidget* CChildFrame::MakePane() {
    auto* pane = new QWidget;
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(origin_);
    column->addWidget(overview_);
    overview_->FollowView();
    column->addWidget(view_, 1);
    return pane;
}

CChildFrame::~CChildFrame() {
    LetGo();
}

void CChildFrame::LetGo() {
    if (!sound_) return;
    sound_->document->RemoveObserver(this);
    delete overview_;
    delete view_;
    overview_ = nullptr;
    view_ = nullptr;
    sound_ = nullptr;
}

void CChildFrame::OnSoundChanged(std::uint32_t) {
    ShowTitle();
    overview_->FollowView();
    Q_EMIT SoundChanged();
    Q_EMIT StateChanged();
}

void CChildFrame::OnTitleOrModifiedChanged() {
    ShowTitle();
    ShowOrigin();
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

void CChildFrame::ShowOrigin() {
    origin_->ShowText(Utf8Text(sound_->document->OriginLine()));
}

void CChildFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (sound_) Q_EMIT CloseRequested();
}

}  // namespace sonavel
