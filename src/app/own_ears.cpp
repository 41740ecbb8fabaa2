#include "app/own_ears.h"

#include <QCoreApplication>
#include <cmath>

#include "codec/client/listener_reading.h"
#include "platform/qt/person_settings.h"

namespace sonavel {
namespace {

const QString kEarsKey = QStringLiteral("3D/responses");

}  // namespace

std::string ChosenEars() {
    return PersonSettings().value(kEarsKey).toString().toStdString();
}

void ChooseEars(const std::string& path) {
    PersonSettings().setValue(kEarsKey, QString::fromStdString(path));
}

Outcome TakeEars(const std::string& path, Listener& listener, ProgressWindow& window) {
    if (path.empty()) {
        listener.UseTable();
        return Done();
    }
    return ReadListener(ChildCodecs(), path, window, listener);
}

Result<std::string> DescribeEars(const std::string& path, ProgressWindow& window) {
    Listener listener;
    if (Outcome taken = TakeEars(path, listener, window); !taken) return taken;
    return QCoreApplication::translate("COption3D",
                                       "%1 directions; no place is farther than %2 degrees from "
                                       "one of them.")
        .arg(listener.Measured().directions.size())
        .arg(std::lround(GreatestGap(listener.Measured())))
        .toStdString();
}

}  // namespace sonavel
