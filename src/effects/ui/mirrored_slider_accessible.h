// What a screen reader says of a slider whose positions run against the value: the value.
#pragma once

#include <QAbstractSlider>
#include <QAccessibleWidget>

namespace sonavel {

class MirroredSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit MirroredSliderAccessible(QAbstractSlider* slider)
        : QAccessibleWidget(slider, QAccessible::Slider) {}

    // What speaks of the object when it is such a slider, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

    QVariant currentValue() const override { return Mirrored(Slider().value()); }
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override { return Slider().maximum(); }
    QVariant minimumValue() const override { return Slider().minimum(); }
    QVariant minimumStepSize() const override { return Slider().singleStep(); }

  private:
    QAbstractSlider& Slider() const { return *static_cast<QAbstractSlider*>(widget()); }
    int Mirrored(int position) const { return Slider().minimum() + Slider().maximum() - position; }
};

}  // namespace sonavel
