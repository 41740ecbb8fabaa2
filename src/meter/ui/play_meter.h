// The meter of one channel: a bar that a gradient fills up to the level, with ticks and labels over
// it on demand. Its tool tip reads the level out.
#pragma once

#include <QColor>
#include <QWidget>

#include "meter/meter_scale.h"

namespace sonavel {

struct MeterColours {
    QColor background;
    QColor tick;
    QColor label;
};

class PlayMeter : public QWidget {
    Q_OBJECT

  public:
    explicit PlayMeter(const QString& name, QWidget* parent = nullptr);

    // Repaints only what differs.
    void SetLevel(const MeterLevel& level);
    const MeterLevel& Level() const { return level_; }
    void SetScale(MeterScale scale);
    void SetShowLabels(bool show);
    void SetDirection(MeterDirection direction);
    void SetColours(const MeterColours& colours);

    static QFont LabelFont();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    Rectangle Inner() const;
    int Filled() const;
    void PaintBar(QPainter& painter) const;
    void PaintTicks(QPainter& painter) const;

    MeterLevel level_;
    MeterScale scale_ = MeterScale::kSixtyDb;
    MeterDirection direction_ = MeterDirection::kToTheRight;
    bool showLabels_ = false;
    MeterColours colours_{Qt::black, Qt::yellow, Qt::green};
};

}  // namespace sonavel
