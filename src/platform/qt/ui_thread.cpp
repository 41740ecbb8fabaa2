#include "platform/qt/ui_thread.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace sonavel {

void PostToUiThread(std::function<void()> task) {
    QCoreApplication* application = QCoreApplication::instance();
    if (application) QMetaObject::invokeMethod(application, std::move(task), Qt::QueuedConnection);
}

}  // namespace sonavel
