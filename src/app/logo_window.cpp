#include "app/logo_window.h"

#include <qdrawutil.h>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>

namespace sonavel {

namespace {

constexpr int kFrameWidth = 2;

}  // namespace

LogoWindow::LogoWindow(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (int i = 0; i < kLogoPictures; ++i)
        pictures_.push_back(LogoPicture(i, kLogoSize, devicePixelRatioF()));
    QApplication::restoreOverrideCursor();
    setWindowTitle(QStringLiteral("Sonavel"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFixedSize(kLogoSize + QSize(2 * kFrameWidth, 2 * kFrameWidth));
    const QRect place = screen()->availableGeometry();
    move(place.center() - rect().center());
    connect(&timer_, &QTimer::timeout, this, &LogoWindow::ShowNext);
    timer_.start(kPictureMs);
}

void LogoWindow::ShowWithin(QWidget& frame) {
    setParent(&frame, Qt::Widget);
    frame.installEventFilter(this);
    StandInTheMiddle();
    setVisible(true);
    raise();
}

void LogoWindow::StandInTheMiddle() {
    move(parentWidget()->rect().center() - rect().center());
}

bool LogoWindow::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Resize && object == parentWidget()) StandInTheMiddle();
    return QDialog::eventFilter(object, event);
}

void LogoWindow::ShowNext() {
    if (picture_ + 1 >= kLogoPictures) {
        timer_.stop();
        return;
    }
    ++picture_;
    update();
}

void LogoWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(kFrameWidth, kFrameWidth, pictures_[static_cast<std::size_t>(picture_)]);
    qDrawShadePanel(&painter, rect(), palette(), false, kFrameWidth);
}

void LogoWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    if (isModal())
        accept();
    else
        hide();
}

}  // namespace sonavel
