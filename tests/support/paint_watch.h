// Sees what of a widget is painted.
#pragma once

#include <gtest/gtest.h>

#include <QPaintEvent>
#include <QTest>
#include <QWidget>

#include "support/patience.h"

namespace sonavel {

class PaintWatch : public QObject {
  public:
    // Begins when nothing is left to paint: what was asked for before is painted together with the
    // whole widget.
    explicit PaintWatch(QWidget& widget) : widget_(widget) {
        widget.installEventFilter(this);
        widget.update();
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return painted_.contains(widget_.rect()); }, kPatienceMs));
        WaitUntilQuiet();
    }
    bool Any() const { return !painted_.isEmpty(); }
    // All of it since the last call, once there is any.
    QRegion Painted() {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Any(); }, kPatienceMs));
        return std::exchange(painted_, {});
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == &widget_ && event->type() == QEvent::Paint)
            painted_ += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

  private:
    // A view paints what has gathered at its own pace: it is quiet when a pause brings no more
    // painting.
    void WaitUntilQuiet() {
        for (painted_ = QRegion(widget_.rect()); Any();) {
            painted_ = {};
            QTest::qWait(kPauseMs);
        }
    }

    static constexpr int kPauseMs = 25;
    QWidget& widget_;
    QRegion painted_;
};

}  // namespace sonavel
