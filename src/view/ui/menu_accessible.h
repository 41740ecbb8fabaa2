// What a screen reader says of a menu: its items without the keys that stand beside them, and the
// keys as keys. An item that is chosen this way is run when the choice has been answered, so that a
// dialog it opens keeps nobody waiting.
#pragma once

#include <QAccessibleWidget>
#include <QMenu>

#include "platform/qt/spoken_items.h"

namespace sonavel {

class MenuAccessible : public QAccessibleWidget {
  public:
    explicit MenuAccessible(QMenu* menu) : QAccessibleWidget(menu, QAccessible::PopupMenu) {}

    // What speaks of the object when it is a menu, nothing otherwise.
    static QAccessibleInterface* MakeFor(QObject* object);

    QAccessibleInterface* parent() const override;
    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    QMenu& Menu() const { return *static_cast<QMenu*>(widget()); }

    // By their actions.
    mutable SpokenItems items_;
};

}  // namespace sonavel
