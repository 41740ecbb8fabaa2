#include "view/ui/menu_accessible.h"

#include <QMenuBar>

namespace sonavel {
namespace {

QString NameIn(const QString& menuText) {
    QString name = menuText.section(u'\t', 0, 0);
    return name.remove(u'&');
}

QString KeyOf(const QAction& action) {
    const QString shown = action.text().section(u'\t', 1, 1);
    return shown.isEmpty() ? action.shortcut().toString(QKeySequence::NativeText) : shown;
}

class MenuItemAccessible : public SpokenItem, public QAccessibleActionInterface {
  public:
    MenuItemAccessible(QMenu& menu, QAction& action)
        : SpokenItem(menu, action.isSeparator() ? QAccessible::Separator : QAccessible::MenuItem),
          action_(&action) {}

    bool isValid() const override { return action_ && SpokenItem::isValid(); }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    int childCount() const override { return Below() ? 1 : 0; }
    QAccessibleInterface* child(int index) const override {
        return Below() && index == 0 ? QAccessible::queryAccessibleInterface(Below()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return Below() && child && child->object() == Below() ? 0 : -1;
    }
    QRect rect() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override {
        const QString key = action_ ? KeyOf(*action_) : QString();
        return key.isEmpty() ? QStringList() : QStringList(key);
    }

  private:
    QMenu* Below() const { return action_ ? action_->menu() : nullptr; }
    QMenu* Menu() const { return static_cast<QMenu*>(Owner()); }

    QPointer<QAction> action_;
};

QRect MenuItemAccessible::rect() const {
    if (!isValid() || !Menu()->isVisible()) return {};
    const QRect own = Menu()->actionGeometry(action_);
    return {Menu()->mapToGlobal(own.topLeft()), own.size()};
}

QAccessible::State MenuItemAccessible::state() const {
    QAccessible::State state = SpokenItem::state();
    if (!isValid()) return state;
    state.invisible = state.invisible || !action_->isVisible();
    state.disabled = action_->isSeparator() || !action_->isEnabled();
    state.checkable = action_->isCheckable();
    state.checked = action_->isChecked();
    state.hasPopup = Below() != nullptr;
    state.focusable = !state.disabled;
    state.focused = Menu()->isVisible() && Menu()->activeAction() == action_;
    return state;
}

QString MenuItemAccessible::text(QAccessible::Text kind) const {
    if (!isValid()) return {};
    switch (kind) {
        case QAccessible::Name:
            return NameIn(action_->text());
        case QAccessible::Description:
            return action_->statusTip();
        case QAccessible::Accelerator:
            return KeyOf(*action_);
        default:
            return {};
    }
}

QStringList MenuItemAccessible::actionNames() const {
    if (!isValid() || action_->isSeparator()) return {};
    return {Below() ? showMenuAction() : pressAction()};
}

void MenuItemAccessible::doAction(const QString& name) {
    if (!isValid()) return;
    if (name == pressAction())
        QMetaObject::invokeMethod(action_.data(), &QAction::trigger, Qt::QueuedConnection);
    else if (name == showMenuAction() && Menu()->isVisible())
        Menu()->setActiveAction(action_);
}

}  // namespace

QAccessibleInterface* MenuAccessible::MakeFor(QObject* object) {
    auto* menu = qobject_cast<QMenu*>(object);
    return menu ? new MenuAccessible(menu) : nullptr;
}

QAccessibleInterface* MenuAccessible::parent() const {
    const QAction* opener = Menu().menuAction();
    for (QObject* object : opener->associatedObjects()) {
        const auto* above = qobject_cast<QWidget*>(object);
        if (!qobject_cast<QMenu*>(object) && !qobject_cast<QMenuBar*>(object)) continue;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(object);
        if (!spoken) continue;
        const auto index = above->actions().indexOf(opener);
        if (QAccessibleInterface* item = spoken->child(static_cast<int>(index))) return item;
    }
    return QAccessibleWidget::parent();
}

QString MenuAccessible::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Name) return NameIn(Menu().title());
    return QAccessibleWidget::text(kind);
}

int MenuAccessible::childCount() const {
    return static_cast<int>(Menu().actions().count());
}

QAccessibleInterface* MenuAccessible::child(int index) const {
    QAction* action = Menu().actions().value(index);
    if (!action) return nullptr;
    return items_.Get(reinterpret_cast<SpokenItems::Key>(action),
                      [&] { return new MenuItemAccessible(Menu(), *action); });
}

QAccessibleInterface* MenuAccessible::childAt(int x, int y) const {
    return child(static_cast<int>(
        Menu().actions().indexOf(Menu().actionAt(Menu().mapFromGlobal(QPoint(x, y))))));
}

int MenuAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const SpokenItems::Key key = items_.KeyOf(child, 0);
    const QList<QAction*> actions = Menu().actions();
    for (int i = 0; i < actions.count(); ++i)
        if (reinterpret_cast<SpokenItems::Key>(actions[i]) == key) return i;
    return -1;
}

}  // namespace sonavel
