#include "app/status_panes.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QShortcut>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace sonavel {

namespace {

constexpr int kNoteMs = 8000;
constexpr int kPanePadding = 10;
// In a narrow window the panes leave the rest to the prompt.
constexpr int kShareOfPanes = 85;
// What a grown pane leaves for the spaces between the panes and the size grip.
constexpr int kSpaces = 48;

// A text that is cut off is read whole in the tool tip.
void ShowIn(QLabel& pane, const QString& text) {
    pane.setText(text);
    // Its fixed width, which it takes up a moment after that was set.
    const int room = pane.minimumWidth() - kPanePadding;
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
    selection_.label->installEventFilter(this);
    zoom_ = AddPane(QStringLiteral("zoom"), QStringLiteral("Zoom (1 : 8888) 8888.888%"));
    Update();
}

StatusPanes::Pane StatusPanes::AddPane(const QString& name, const QString& widestText) {
    auto* pane = new QLabel(this);
    pane->setObjectName(name);
    pane->setIndent(4);
    pane->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    addPermanentWidget(pane);
    return {pane, fontMetrics().horizontalAdvance(widestText) + kPanePadding};
}

bool StatusPanes::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick && !selection_.label->text().isEmpty())
        TypePlace();
    return QStatusBar::eventFilter(object, event);
}

void StatusPanes::TypePlace() {
    const QPointer<QWidget> before = QApplication::focusWidget();
    // The keys go on where they were.
    const auto goBack = [before] {
        if (before) before->setFocus();
    };
    auto* field = new QLineEdit(selection_.label->text(), this);
    field->setObjectName(QStringLiteral("typed place"));
    field->setGeometry(selection_.label->geometry());
    field->selectAll();
    field->show();
    field->setFocus();
    connect(field, &QLineEdit::returnPressed, this, [this, field, goBack] {
        const QString typed = field->text();
        goBack();
        Q_EMIT PlaceTyped(typed);
    });
    // Clicking elsewhere leaves everything as it was, and so does Escape.
    connect(field, &QLineEdit::editingFinished, field, &QObject::deleteLater);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), field);
    escape->setContext(Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, field, [field, goBack] {
        goBack();
        field->deleteLater();
    });
}

void StatusPanes::resizeEvent(QResizeEvent* event) {
    LayOutPanes();
    QStatusBar::resizeEvent(event);
}

void StatusPanes::LayOutPanes() {
    // The zoom has one short text; the others are cut off first, the selection before a grown
    // state. A pane without a text makes room for a long note.
    const int wanted = state_.usualWidth + selection_.usualWidth;
    const int room = std::clamp(width() * kShareOfPanes / 100 - zoom_.usualWidth, 0, wanted);
    int state = state_.usualWidth * room / wanted;
    int selection = selection_.usualWidth * room / wanted;
    if (grownWidth_ > state) {
        const int all = std::max(width() - zoom_.usualWidth - kSpaces, 0);
        state = std::min(grownWidth_, all);
        selection = std::min(selection, all - state);
    } else if (!note_.isEmpty() && state_.label->text().isEmpty()) {
        state -= std::clamp(
            WidthOf(note_) + selection + state + zoom_.usualWidth + kSpaces - width(), 0, state);
    }
    state_.label->setFixedWidth(state);
    selection_.label->setFixedWidth(selection);
    zoom_.label->setFixedWidth(zoom_.usualWidth);
}

int StatusPanes::WidthOf(const QString& text) const {
    return text.isEmpty() ? 0 : fontMetrics().horizontalAdvance(text) + kPanePadding;
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

void StatusPanes::ShowState(const QString& text, StateWidth width) {
    const int needed = WidthOf(text);
    // Not narrower between two texts, which would make the panes beside it tremble.
    const int grown = width == StateWidth::kUsual ? 0 : std::max(grownWidth_, needed);
    const bool wasEmpty = state_.label->text().isEmpty();
    state_.label->setText(text);
    if (std::exchange(grownWidth_, grown) != grown || wasEmpty != text.isEmpty()) LayOutPanes();
    ShowIn(*state_.label, text);
}

void StatusPanes::ShowSelection(const QString& text) {
    ShowIn(*selection_.label, text);
}

void StatusPanes::ShowZoom(const QString& text) {
    zoom_.label->setText(text);
}

void StatusPanes::Update() {
    const QString text = !note_.isEmpty() ? note_ : !hovered_.isEmpty() ? hovered_ : tr("Ready");
    prompt_->setText(text);
    prompt_->setToolTip(note_);
    LayOutPanes();
}

}  // namespace sonavel
