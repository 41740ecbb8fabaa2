#include "effects/ui/mirrored_slider_accessible.h"

namespace sonavel {

QAccessibleInterface* MirroredSliderAccessible::MakeFor(QObject* object) {
    auto* slider = qobject_cast<QAbstractSlider*>(object);
    return slider && slider->invertedControls() ? new MirroredSliderAccessible(slider) : nullptr;
}

void* MirroredSliderAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QStringList MirroredSliderAccessible::actionNames() const {
    return QStringList{increaseAction(), decreaseAction()} + QAccessibleWidget::actionNames();
}

void MirroredSliderAccessible::doAction(const QString& name) {
    if (name == increaseAction())
        Slider().triggerAction(QAbstractSlider::SliderSingleStepSub);
    else if (name == decreaseAction())
        Slider().triggerAction(QAbstractSlider::SliderSingleStepAdd);
    else
        QAccessibleWidget::doAction(name);
}

void MirroredSliderAccessible::setCurrentValue(const QVariant& value) {
    Slider().setValue(Mirrored(value.toInt()));
}

}  // namespace sonavel
