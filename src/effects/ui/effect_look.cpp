#include "effects/ui/effect_look.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionSlider>
#include <QVBoxLayout>
#include <algorithm>

namespace sonavel {

namespace {

constexpr QRgb kLabelText = qRgb(0x18, 0x22, 0x22);
constexpr QRgb kDisabledText = qRgb(0x80, 0x8F, 0x8F);

QPalette HeaderPalette() {
    QPalette palette = ProgramPalette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Window, QColor(kEffectHeader));
        palette.setColor(group, QPalette::WindowText, QColor(kEffectHeaderText));
    }
    return palette;
}

// The program's style shows the focus of sliders and bars only faintly, or not at all.
void DrawFocus(QWidget& widget) {
    if (!widget.hasFocus()) return;
    QPainter painter(&widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget.palette().color(QPalette::Highlight), 1.5));
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(1, 1, -1, -1), 2, 2);
}

}  // namespace

QPalette EffectPalette() {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, QColor(kEffectBackground));
    palette.setColor(QPalette::WindowText, QColor(kLabelText));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(kDisabledText));
    return palette;
}

QPalette ProgramPalette() {
    QPalette palette = QApplication::palette();
    // Every colour counts as set, so that none comes from the dialog around.
    palette.setResolveMask(~QPalette::ResolveMask{0});
    return palette;
}

ValueLabel::ValueLabel(QWidget* parent) : QLabel(parent) {
    setPalette(ProgramPalette());
    setAutoFillBackground(true);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMargin(2);
}

void ValueLabel::ReserveFor(const QStringList& texts) {
    int width = minimumWidth();
    for (const QString& text : texts)
        width = std::max(width, fontMetrics().horizontalAdvance(text) + 2 * margin() + 6);
    setMinimumWidth(width);
}

EffectHeader::EffectHeader(QWidget* parent)
    : QFrame(parent), status_(new QLabel(this)), notes_(new QLabel(this)) {
    setPalette(HeaderPalette());
    setAutoFillBackground(true);
    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    status_->setFont(bold);
    status_->setObjectName(QStringLiteral("header"));
    // The line keeps its place while its text is empty.
    status_->setMinimumHeight(QFontMetrics(bold).height());
    status_->setTextFormat(Qt::PlainText);
    notes_->setObjectName(QStringLiteral("headerNotes"));
    notes_->setWordWrap(true);
    notes_->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 8);
    column->setSpacing(4);
    column->addWidget(status_);
    column->addWidget(notes_);
}

void EffectHeader::SetNotes(const QStringList& notes) {
    notes_->setText(notes.join(u'\n'));
    notes_->setVisible(!notes.isEmpty());
}

FocusScrollBar::FocusScrollBar(QWidget* parent) : QScrollBar(Qt::Horizontal, parent) {
    setFocusPolicy(Qt::StrongFocus);
    // Right, Up and the wheel away from the person raise the value, as they do on a slider.
    setInvertedControls(false);
    setPalette(ProgramPalette());
    setMinimumWidth(240);
}

void FocusScrollBar::paintEvent(QPaintEvent* event) {
    QScrollBar::paintEvent(event);
    DrawFocus(*this);
}

EffectSlider::EffectSlider(Qt::Orientation orientation, QWidget* parent)
    : QSlider(orientation, parent) {
    setPalette(ProgramPalette());
}

void EffectSlider::paintEvent(QPaintEvent* event) {
    painting_ = true;
    QSlider::paintEvent(event);
    painting_ = false;
    DrawFocus(*this);
}

// Only for painting: what the mouse does must go on following the true positions.
void EffectSlider::initStyleOption(QStyleOptionSlider* option) const {
    QSlider::initStyleOption(option);
    if (!painting_ || !invertedAppearance()) return;
    option->upsideDown = !option->upsideDown;
    option->sliderPosition = minimum() + maximum() - option->sliderPosition;
    option->sliderValue = minimum() + maximum() - option->sliderValue;
}

}  // namespace sonavel
