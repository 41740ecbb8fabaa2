#include "meter/ui/play_meter_accessible.h"

#include <algorithm>

#include "view/ui/qt_values.h"

namespace sonavel {

QAccessibleInterface* PlayMeterAccessible::MakeFor(QObject* object) {
    auto* meter = qobject_cast<PlayMeter*>(object);
    return meter ? new PlayMeterAccessible(meter) : nullptr;
}

void* PlayMeterAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString PlayMeterAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Value || kind == QAccessible::Description)
        return ToQString(MeterReadOutLine(Meter().Level()));
    return QAccessibleWidget::text(kind);
}

QVariant PlayMeterAccessible::currentValue() const {
    return std::clamp(Meter().Level().Percent(), 0.0, 100.0);
}

}  // namespace sonavel
