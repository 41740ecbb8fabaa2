// What a screen reader says of the 3D scene: the points as a list, each with its number, what it is
// chosen as and where it is; pressing one picks it, as a click does.
#pragma once

#include "platform/qt/spoken_items.h"
#include "spatial/ui/scene_widget.h"

namespace sonavel {

class SceneAccessible : public WidgetWithItems {
  public:
    explicit SceneAccessible(SceneWidget* scene) : WidgetWithItems(scene, QAccessible::List) {}

    // What speaks of the object when it is a scene, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    QString text(QAccessible::Text kind) const override;

  private:
    int ItemCount() const override;
    QAccessibleInterface* MakeItem(int place) const override;
    SceneWidget& Scene() const { return *static_cast<SceneWidget*>(widget()); }
};

}  // namespace sonavel
