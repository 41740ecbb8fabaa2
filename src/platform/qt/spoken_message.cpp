#include "platform/qt/spoken_message.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

namespace sonavel {

// The toolkit tells readers that a description has changed, but not to what, and they say nothing
// then. So the event is sent with its text on the connection that the toolkit has opened.
void SayOf(QWidget& widget, const QString& text) {
    if (!QAccessible::isActive() || !widget.hasFocus()) return;
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    const QDBusConnection bus(QStringLiteral("a11y"));
    if (!spoken || !bus.isConnected()) return;
    const QString path =
        QStringLiteral("/org/a11y/atspi/accessible/%1").arg(QAccessible::uniqueId(spoken));
    QDBusMessage event = QDBusMessage::createSignal(
        path, QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("PropertyChange"));
    event << QStringLiteral("accessible-description") << 0 << 0
          << QVariant::fromValue(QDBusVariant(text)) << QVariantMap();
    bus.send(event);
}

}  // namespace sonavel
