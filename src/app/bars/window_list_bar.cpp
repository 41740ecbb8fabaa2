#include "app/bars/window_list_bar.h"

#include <QContextMenuEvent>
#include <QFile>
#include <QLayout>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr int kLeastLength = 88;
constexpr int kMostLength = 200;
constexpr int kLeastThickness = 26;
constexpr int kRoundText = 10;            // above and below it together
constexpr int kMostPercentOfScreen = 70;  // of a floating bar

constexpr const char* kLook =
    "QTabBar::tab { border: 1px solid palette(mid); border-radius: 3px;"
    "  background: palette(button); color: palette(button-text); padding: 3px 7px; margin: 1px; }"
    "QTabBar::tab:left { padding: 7px 3px; }"
    "QTabBar::tab:hover { background: palette(base); }"
    "QTabBar::tab:selected { background: palette(highlight); color: palette(highlighted-text);"
    "  border-color: palette(highlight); }";

// The name as a tab shows it.
QString ButtonText(const CChildFrame& frame) {
    QString text = frame.Name();
    text.replace(u'&', QStringLiteral("&&"));
    return frame.isWindowModified() ? text + u'*' : text;
}

}  // namespace

WindowButtons::WindowButtons(QWidget* parent) : QTabBar(parent) {
    setMovable(true);
    setExpanding(false);
    setDrawBase(false);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setFocusPolicy(Qt::NoFocus);
    setStyleSheet(QLatin1String(kLook));
}

int WindowButtons::Thickness() const {
    return std::max(kLeastThickness, fontMetrics().height() + kRoundText);
}

QSize WindowButtons::WithLength(QSize size, int least, int most) const {
    const bool standing = shape() == RoundedWest;
    const int length = standing ? size.height() : size.width();
    const int bounded = std::clamp(length, least, most);
    return standing ? QSize(Thickness(), bounded) : QSize(bounded, Thickness());
}

QSize WindowButtons::tabSizeHint(int index) const {
    return WithLength(QTabBar::tabSizeHint(index), kLeastLength, kMostLength);
}

QSize WindowButtons::minimumTabSizeHint(int) const {
    return WithLength({}, kLeastLength, kLeastLength);
}

void WindowButtons::mousePressEvent(QMouseEvent* event) {
    const int index = tabAt(event->position().toPoint());
    middlePressed_ = event->button() == Qt::MiddleButton ? index : -1;
    QTabBar::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && index >= 0) Q_EMIT LeftPressed(index);
}

void WindowButtons::mouseReleaseEvent(QMouseEvent* event) {
    QTabBar::mouseReleaseEvent(event);
    if (event->button() != Qt::MiddleButton) return;
    const int pressed = std::exchange(middlePressed_, -1);
    if (pressed >= 0 && pressed == tabAt(event->position().toPoint()))
        Q_EMIT MiddleClicked(pressed);
}

WindowListBar::WindowListBar(const QString& name, QWidget* parent)
    : QToolBar(name, parent), buttons_(new WindowButtons(this)) {
    setObjectName(QString(name).remove(u' '));
    addWidget(buttons_);
    connect(this, &QToolBar::orientationChanged, this, &WindowListBar::Turn);
    // The wheel goes through the buttons, too.
    connect(buttons_, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0) Q_EMIT Chosen(FrameAt(index));
    });
    connect(buttons_, &WindowButtons::LeftPressed, this,
            [this](int index) { Q_EMIT Chosen(FrameAt(index)); });
    connect(buttons_, &WindowButtons::MiddleClicked, this,
            [this](int index) { FrameAt(index)->close(); });
    Turn(orientation());
}

void WindowListBar::Turn(Qt::Orientation orientation) {
    const bool lying = orientation == Qt::Horizontal;
    buttons_->setShape(lying ? QTabBar::RoundedNorth : QTabBar::RoundedWest);
    // Keeps its room while nothing is open.
    const int thickness = buttons_->Thickness();
    buttons_->setMinimumSize(lying ? QSize(0, thickness) : QSize(thickness, 0));
    buttons_->setSizePolicy(lying ? QSizePolicy::Expanding : QSizePolicy::Fixed,
                            lying ? QSizePolicy::Fixed : QSizePolicy::Expanding);
}

void WindowListBar::resizeEvent(QResizeEvent* event) {
    QToolBar::resizeEvent(event);
    // A bar that floats off the frame's side may still have a standing bar's size.
    QMetaObject::invokeMethod(this, &WindowListBar::FitFloating, Qt::QueuedConnection);
}

void WindowListBar::FitFloating() {
    if (!isFloating()) return;
    const QSize most = screen()->availableSize() * kMostPercentOfScreen / 100;
    resize(layout()->sizeHint().boundedTo(most));
}

CChildFrame* WindowListBar::FrameAt(int index) const {
    return qobject_cast<CChildFrame*>(buttons_->tabData(index).value<QObject*>());
}

int WindowListBar::IndexOf(const CChildFrame* frame) const {
    for (int i = 0; i < buttons_->count(); ++i)
        if (buttons_->tabData(i).value<QObject*>() == frame) return i;
    return -1;
}

void WindowListBar::Add(CChildFrame& frame) {
    const QSignalBlocker quiet(buttons_);
    const int index = buttons_->addTab(QString());
    buttons_->setTabData(index, QVariant::fromValue<QObject*>(&frame));
    ShowFrame(index);
}

void WindowListBar::Remove(const CChildFrame& frame) {
    const QSignalBlocker quiet(buttons_);
    const int index = IndexOf(&frame);
    if (index >= 0) buttons_->removeTab(index);
}

void WindowListBar::ShowFrame(int index) {
    const CChildFrame& frame = *FrameAt(index);
    const CSoundDoc& document = *frame.Sound().document;
    const QString text = ButtonText(frame);
    if (buttons_->tabText(index) != text) buttons_->setTabText(index, text);
    const QString path = ShownFileText(FileText(document.Path()));
    buttons_->setTabToolTip(index, path.isEmpty() ? Utf8Text(document.Title()) : path);
}

void WindowListBar::Refresh(const CChildFrame* active) {
    const QSignalBlocker quiet(buttons_);
    for (int i = 0; i < buttons_->count(); ++i) ShowFrame(i);
    buttons_->setCurrentIndex(IndexOf(active));
    FitFloating();
}

void WindowListBar::contextMenuEvent(QContextMenuEvent* event) {
    CChildFrame* frame = FrameAt(buttons_->tabAt(buttons_->mapFromGlobal(event->globalPos())));
    // Beside the buttons, the frame's menu of all bars comes.
    if (!frame) return event->ignore();
    Q_EMIT MenuRequested(frame, event->globalPos());
}

}  // namespace sonavel
