// Things that screen readers can walk to although they are no widgets: markers of a waveform, items
// of a menu, points of a scene.
#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

namespace sonavel {

// One such thing. It belongs to a widget and has nothing below it, unless it says otherwise.
class SpokenItem : public QAccessibleInterface {
  public:
    SpokenItem(QWidget& owner, QAccessible::Role role) : owner_(&owner), role_(role) {}

    bool isValid() const override { return !owner_.isNull(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return role_; }
    QAccessible::State state() const override;

  protected:
    QWidget* Owner() const { return owner_; }

  private:
    QPointer<QWidget> owner_;
    QAccessible::Role role_;
};

// Those of one widget that were asked for, each under a key of its owner's choice; the toolkit owns
// them until this goes.
class SpokenItems {
  public:
    using Key = quintptr;

    SpokenItems() = default;
    ~SpokenItems();
    SpokenItems(const SpokenItems&) = delete;
    SpokenItems& operator=(const SpokenItems&) = delete;

    // What `make` gave for this key; made anew when what there was is no longer valid.
    QAccessibleInterface* Get(Key key, const std::function<QAccessibleInterface*()>& make);
    // The key of an item that Get gave, `otherwise` for all else.
    Key KeyOf(const QAccessibleInterface* item, Key otherwise) const;

  private:
    std::map<Key, QAccessible::Id> items_;
};

// A widget with such things behind its own children, in an order of their own.
class WidgetWithItems : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const final;
    QAccessibleInterface* child(int index) const final;
    int indexOfChild(const QAccessibleInterface* child) const final;

  private:
    virtual int ItemCount() const = 0;
    // The item at a place in [0, ItemCount()); the caller registers it.
    virtual QAccessibleInterface* MakeItem(int place) const = 0;

    // By their places.
    mutable SpokenItems items_;
};

}  // namespace sonavel
