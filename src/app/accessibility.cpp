#include "app/accessibility.h"

#include <QAccessibleWidget>

#include "app/help/manual_window.h"
#include "catalogue/ui/catalogue_window.h"
#include "effects/ui/mirrored_slider_accessible.h"
#include "meter/ui/play_meter_accessible.h"
#include "spatial/ui/scene_accessible.h"
#include "view/ui/menu_accessible.h"
#include "view/ui/sound_view_accessible.h"

namespace sonavel {
namespace {

// The toolkit takes a plain widget for part of a window even where it is one.
QAccessibleInterface* MakeForWindow(QObject* object) {
    auto* manual = qobject_cast<ManualWindow*>(object);
    QWidget* window =
        manual ? static_cast<QWidget*>(manual) : qobject_cast<CatalogueWindow*>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    for (const auto make :
         {SoundViewAccessible::MakeFor, MenuAccessible::MakeFor, PlayMeterAccessible::MakeFor,
          SceneAccessible::MakeFor, MirroredSliderAccessible::MakeFor, MakeForWindow})
        if (QAccessibleInterface* made = make(object)) return made;
    return nullptr;
}

}  // namespace

void InstallAccessibility() {
    QAccessible::installFactory(MakeAccessible);
}

}  // namespace sonavel
