#include "app/status_pane.h"

#include <QPainter>

namespace sonavel {

namespace {

constexpr int kIndent = 4;
constexpr int kFrame = 1;
constexpr int kRounding = 1;  // texts are as wide as fractions of pixels

}  // namespace

StatusPane::StatusPane(const QString& name, const QString& widestText, QWidget* parent)
    : QLabel(parent), widestText_(widestText) {
    setObjectName(name);
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(kFrame);
}

int StatusPane::WidthFor(const QString& text) const {
    if (text.isEmpty()) return 0;
    return fontMetrics().horizontalAdvance(text) + 2 * (kIndent + kFrame) + kRounding;
}

void StatusPane::SetShown(const QString& text, Qt::TextElideMode cut) {
    cut_ = cut;
    setText(text);
    FollowRoom();
}

void StatusPane::SetRoom(int width) {
    setFixedWidth(width);
    setVisible(width > 0);
}

QString StatusPane::Cut() const {
    return fontMetrics().elidedText(text(), cut_, contentsRect().width() - 2 * kIndent);
}

void StatusPane::FollowRoom() {
    setToolTip(Cut() == text() ? QString() : text());
}

void StatusPane::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    FollowRoom();
}

void StatusPane::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawFrame(&painter);
    painter.drawText(contentsRect().adjusted(kIndent, 0, -kIndent, 0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, Cut());
}

}  // namespace sonavel
