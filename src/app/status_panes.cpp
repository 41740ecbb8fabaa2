#include "app/status_panes.h"

#include <QTimer>
#include <algorithm>

namespace sonavel {

namespace {

constexpr int kNoteMs = 8000;
constexpr int kPanePadding = 10;
// In a narrow window the panes leave the rest to the prompt.
constexpr int kShareOfPanes = 85;

// A text that is cut off is read whole in the tool tip.
void ShowIn(QLabel& pane, const QString& text) {
    pane.setText(text);
    const int room = pane.width() - kPanePadding;
    pane.setToolTip(pane.fontMetrics().horizontalAdvance(text) > room ? text : QString());
}

}  // namespace

StatusPanes::StatusPanes(QWidget* parent) : QStatusBar(parent), prompt_(new QLabel(this)) {
    prompt_->setObjectName(QStringLiteral("prompt"));
    // Long texts are cut off rather than widening the window.
    prompt_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    prompt_->setIndent(4);
    addWidget(prompt_, 1);
    state_ = AddPane(QStringLiteral("state"),
                     QStringLiteral("(Sample Value) Left,Right : -32768, -32768"));
    selection_ = AddPane(QStringLiteral("selection"),
                         QStringLiteral("00:00:00.000 - 00:00:00.000 (00:00:00.000)"));
    zoom_ = AddPane(QStringLiteral("zoom"), QStringLiteral("Zoom (1 : 8888) 8888.888%"));
    Update();
}

QLabel* StatusPanes::AddPane(const QString& name, const QString& widestText) {
    auto* pane = new QLabel(this);
    pane->setObjectName(name);
    pane->setIndent(4);
    pane->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    panes_.push_back({pane, fontMetrics().horizontalAdvance(widestText) + kPanePadding});
    addPermanentWidget(pane);
    return pane;
}

void StatusPanes::resizeEvent(QResizeEvent* event) {
    // The zoom has one short text; the others are cut off first.
    const int zoomWidth = panes_.back().fullWidth;
    int wanted = 0;
    for (const Pane& pane : panes_) wanted += pane.fullWidth;
    wanted -= zoomWidth;
    const int room = std::clamp(width() * kShareOfPanes / 100 - zoomWidth, 0, wanted);
    for (const Pane& pane : panes_) pane.label->setFixedWidth(pane.fullWidth * room / wanted);
    zoom_->setFixedWidth(zoomWidth);
    QStatusBar::resizeEvent(event);
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
    ShowIn(*state_, text);
}

void StatusPanes::ShowSelection(const QString& text) {
    ShowIn(*selection_, text);
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
