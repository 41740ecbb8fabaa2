// What a screen reader says of the meter of a channel when it is asked: the level, as the tool tip
// reads it out. It does not speak by itself, as it would speak all the time.
#pragma once

#include <QAccessibleWidget>

#include "meter/ui/play_meter.h"

namespace sonavel {

class PlayMeterAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit PlayMeterAccessible(PlayMeter* meter)
        : QAccessibleWidget(meter, QAccessible::ProgressBar) {}

    // What speaks of the object when it is a meter, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;

    // Percent of full scale.
    QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return 100.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 0.0; }

  private:
    const PlayMeter& Meter() const { return *static_cast<PlayMeter*>(widget()); }
};

}  // namespace sonavel
