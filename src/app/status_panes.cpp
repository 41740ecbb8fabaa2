#include "app/status_panes.h"

#include <QTimer>

namespace sonavel {

namespace {

constexpr int kNoteMs = 8000;

}  // namespace

StatusPanes::StatusPanes(QWidget* parent) : QStatusBar(parent), prompt_(new QLabel(this)) {
    prompt_->setObjectName(QStringLiteral("prompt"));
    // Long texts are cut off rather than widening the window.
    prompt_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    prompt_->setIndent(4);
    addWidget(prompt_, 1);
    state_ = AddPane(QStringLiteral("(Sample Value) Left,Right : -32768, -32768"));
    state_->setObjectName(QStringLiteral("state"));
    selection_ = AddPane(QStringLiteral("00:00:00.000 - 00:00:00.000 (00:00:00.000)"));
    selection_->setObjectName(QStringLiteral("selection"));
    zoom_ = AddPane(QStringLiteral("Zoom (1 : 88888) 88888.888%"));
    zoom_->setObjectName(QStringLiteral("zoom"));
    Update();
}

QLabel* StatusPanes::AddPane(const QString& widestText) {
    auto* pane = new QLabel(this);
    pane->setMinimumWidth(fontMetrics().horizontalAdvance(widestText) + 8);
    pane->setIndent(4);
    pane->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    addPermanentWidget(pane);
    return pane;
}

void StatusPanes::ShowPrompt(const QString& text) {
    hovered_ = text;
    Update();
}

void StatusPanes::ShowNote(const QString& text) {
    note_ = text;
    const int number = ++noteNumber_;
    QTimer::singleShot(kNoteMs, this, [this, number] {
        if (number != noteNumber_) return;
        note_.clear();
        Update();
    });
    Update();
}

void StatusPanes::ShowState(const QString& text) {
    state_->setText(text);
}

void StatusPanes::ShowSelection(const QString& text) {
    selection_->setText(text);
}

void StatusPanes::ShowZoom(const QString& text) {
    zoom_->setText(text);
}

void StatusPanes::Update() {
    const QString text = !note_.isEmpty() ? note_ : !hovered_.isEmpty() ? hovered_ : tr("Ready");
    prompt_->setText(text);
    prompt_->setToolTip(note_);
}

}  // namespace sonavel
