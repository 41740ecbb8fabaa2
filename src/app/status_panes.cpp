#include "app/status_panes.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QShortcut>
#include <QTimer>
#include <algorithm>

#include "app/pane_widths.h"

namespace sonavel {

namespace {

constexpr int kNoteMs = 8000;
// Between the panes, and of the size grip.
constexpr int kSpaces = 48;
// In percent, while the texts of the panes leave as much.
constexpr int kShareOfPrompt = 15;

}  // namespace

StatusPanes::StatusPanes(QWidget* parent)
    : QStatusBar(parent), prompt_(new StatusPane(QStringLiteral("prompt"), tr("Ready"), this)) {
    prompt_->setFrameStyle(QFrame::NoFrame);
    // Long texts are cut off rather than widening the window.
    prompt_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(prompt_, 1);
    state_ = AddPane(QStringLiteral("state"),
                     QStringLiteral("(Sample Value) Left,Right : -32768, -32768"));
    selection_ = AddPane(QStringLiteral("selection"),
                         QStringLiteral("00:00:00.000 - 00:00:00.000 (00:00:00.000)"));
    selection_->installEventFilter(this);
    zoom_ = AddPane(QStringLiteral("zoom"), QStringLiteral("Zoom (1 : 8888) 8888.888%"));
    Update();
}

StatusPane* StatusPanes::AddPane(const QString& name, const QString& widestText) {
    auto* pane = new StatusPane(name, widestText, this);
    addPermanentWidget(pane);
    return pane;
}

QSize StatusPanes::minimumSizeHint() const {
    return {0, QStatusBar::minimumSizeHint().height()};
}

bool StatusPanes::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick && !selection_->text().isEmpty()) TypePlace();
    return QStatusBar::eventFilter(object, event);
}

void StatusPanes::TypePlace() {
    const QPointer<QWidget> before = QApplication::focusWidget();
    // The keys go on where they were.
    const auto goBack = [before] {
        if (before) before->setFocus();
    };
    auto* field = new QLineEdit(selection_->text(), this);
    field->setObjectName(QStringLiteral("typed place"));
    field->setGeometry(selection_->geometry());
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
    const int room = width() - kSpaces;
    const auto wishOf = [](const StatusPane& pane) {
        return PaneWish{pane.WidthFor(pane.text()), pane.UsualWidth()};
    };
    const int prompt = prompt_->WidthFor(note_.isEmpty() ? tr("Ready") : note_);
    PaneWishes wishes{.room = room,
                      .least = state_->WidthFor(QStringLiteral("00:00:00.000…")),
                      .prompt = {prompt, room * kShareOfPrompt / 100},
                      .state = wishOf(*state_),
                      .selection = wishOf(*selection_),
                      .zoom = wishOf(*zoom_)};
    wishes.state.needed = std::max(wishes.state.needed, grownWidth_);
    if (grownWidth_ > 0) wishes.sound = PaneWishes::Sound::kBusy;
    const PaneWidths widths = SharePanes(wishes);
    state_->SetRoom(widths.state);
    selection_->SetRoom(widths.selection);
    zoom_->SetRoom(widths.zoom);
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
    // Not narrower between two texts, which would make the panes beside it tremble.
    const bool isUsual = width == StateWidth::kUsual;
    grownWidth_ = isUsual ? 0 : std::max(grownWidth_, state_->WidthFor(text));
    // Of the values at the cursor, the numbers stand behind.
    Show(*state_, text, isUsual ? Qt::ElideLeft : Qt::ElideRight);
}

void StatusPanes::ShowSelection(const QString& text) {
    Show(*selection_, text, Qt::ElideRight);
}

void StatusPanes::ShowZoom(const QString& text) {
    Show(*zoom_, text, Qt::ElideRight);
}

void StatusPanes::Show(StatusPane& pane, const QString& text, Qt::TextElideMode cut) {
    if (pane.text() == text) return;
    pane.SetShown(text, cut);
    LayOutPanes();
}

void StatusPanes::Update() {
    const QString text = !note_.isEmpty() ? note_ : !hovered_.isEmpty() ? hovered_ : tr("Ready");
    prompt_->SetShown(text, Qt::ElideRight);
    LayOutPanes();
}

}  // namespace sonavel
