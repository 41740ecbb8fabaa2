// What a screen reader says of the 3D scene: the points as a list, each with its number, what it is
// chosen as and where it is; pressing one picks it, as a click does.
#pragma once

#include <QAccessibleWidget>

#include "platform/qt/spoken_items.h"
#include "spatial/ui/scene_widget.h"

namespace sonavel {

class SceneAccessible : public QAccessibleWidget {
  public:
    explicit SceneAccessible(SceneWidget* scene) : QAccessibleWidget(scene, QAccessible::List) {}

    // What speaks of the object when it is a scene, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    QString text(QAccessible::Text kind) const override;
    // The points come behind the widget's own children.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    SceneWidget& Scene() const { return *static_cast<SceneWidget*>(widget()); }
    int OwnChildren() const { return QAccessibleWidget::childCount(); }

    // By their place among the scene's points.
    mutable SpokenItems points_;
};

}  // namespace sonavel
