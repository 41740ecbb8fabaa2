#include "platform/qt/spoken_items.h"

namespace sonavel {

QAccessibleInterface* SpokenItem::parent() const {
    return owner_ ? QAccessible::queryAccessibleInterface(owner_.data()) : nullptr;
}

QAccessible::State SpokenItem::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !owner_ || !owner_->isVisible();
    return state;
}

SpokenItems::~SpokenItems() {
    for (const auto& [key, id] : items_) QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* SpokenItems::Get(Key key,
                                       const std::function<QAccessibleInterface*()>& make) {
    const auto found = items_.find(key);
    if (found != items_.end()) {
        QAccessibleInterface* item = QAccessible::accessibleInterface(found->second);
        if (item && item->isValid()) return item;
        QAccessible::deleteAccessibleInterface(found->second);
        items_.erase(found);
    }
    QAccessibleInterface* item = make();
    items_[key] = QAccessible::registerAccessibleInterface(item);
    return item;
}

SpokenItems::Key SpokenItems::KeyOf(const QAccessibleInterface* item, Key otherwise) const {
    for (const auto& [key, id] : items_)
        if (QAccessible::accessibleInterface(id) == item) return key;
    return otherwise;
}

int WidgetWithItems::childCount() const {
    return QAccessibleWidget::childCount() + ItemCount();
}

QAccessibleInterface* WidgetWithItems::child(int index) const {
    const int place = index - QAccessibleWidget::childCount();
    if (place < 0) return QAccessibleWidget::child(index);
    if (place >= ItemCount()) return nullptr;
    return items_.Get(static_cast<SpokenItems::Key>(place), [&] { return MakeItem(place); });
}

int WidgetWithItems::indexOfChild(const QAccessibleInterface* child) const {
    constexpr auto kNone = ~SpokenItems::Key{};
    const SpokenItems::Key place = items_.KeyOf(child, kNone);
    return place == kNone ? QAccessibleWidget::indexOfChild(child)
                          : QAccessibleWidget::childCount() + static_cast<int>(place);
}

}  // namespace sonavel
