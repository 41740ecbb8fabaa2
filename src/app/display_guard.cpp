#include "app/display_guard.h"

#include <QString>
#include <cstdio>
#include <cstdlib>

namespace sonavel {
namespace {

constexpr int kNoDisplay = 1;

const char* OrNone(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : "not set";
}

// What comes before the end says only how the toolkit looked for a display.
void EndInOneLine(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg) return;
    std::fprintf(stderr,
                 "sonavel: no display can be opened (DISPLAY is %s, WAYLAND_DISPLAY is %s)\n",
                 OrNone("DISPLAY"), OrNone("WAYLAND_DISPLAY"));
    std::_Exit(kNoDisplay);
}

}  // namespace

DisplayGuard::DisplayGuard() : before_(qInstallMessageHandler(EndInOneLine)) {}

DisplayGuard::~DisplayGuard() {
    qInstallMessageHandler(before_);
}

}  // namespace sonavel
