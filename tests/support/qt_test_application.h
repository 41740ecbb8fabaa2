// The one QApplication of a test program, without a screen unless the environment names a platform.
#pragma once

#include <QApplication>

namespace sonavel {

inline QApplication& TestApplication() {
    static int argc = 1;
    static char name[] = "ui_tests";
    static char* argv[] = {name, nullptr};
    if (!qApp) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        static QApplication application(argc, argv);
    }
    return *qApp;
}

}  // namespace sonavel
