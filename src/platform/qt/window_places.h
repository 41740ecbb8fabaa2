// Whether the program says where its windows stand.
#pragma once

#include <QGuiApplication>

namespace sonavel {

// Not on Wayland: there no program places its windows, puts one above the others, or learns where
// they are.
inline bool PlacesItsWindows() {
    return !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

}  // namespace sonavel
