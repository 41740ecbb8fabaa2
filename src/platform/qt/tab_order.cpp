#include "platform/qt/tab_order.h"

#include <QGridLayout>
#include <QSplitter>
#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace sonavel {
namespace {

struct Entry {
    QLayoutItem* item;
    int row;
    int column;
};

// A box is one row.
std::vector<Entry> InOrder(QLayout& layout) {
    std::vector<Entry> entries;
    auto* grid = qobject_cast<QGridLayout*>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
        Entry entry{layout.itemAt(i), 0, i};
        int rows = 0;
        int columns = 0;
        if (grid) grid->getItemPosition(i, &entry.row, &entry.column, &rows, &columns);
        entries.push_back(entry);
    }
    std::ranges::stable_sort(entries, {},
                             [](const Entry& entry) { return std::tie(entry.row, entry.column); });
    return entries;
}

void Collect(QLayout& layout, std::vector<QWidget*>& order);

void CollectParts(const QSplitter& splitter, std::vector<QWidget*>& order) {
    for (int i = 0; i < splitter.count(); ++i)
        if (QLayout* layout = splitter.widget(i)->layout()) Collect(*layout, order);
}

void Collect(QLayout& layout, std::vector<QWidget*>& order) {
    for (const Entry& entry : InOrder(layout)) {
        QWidget* widget = entry.item->widget();
        if (widget && (widget->focusPolicy() & Qt::TabFocus) != 0) order.push_back(widget);
        if (auto* splitter = qobject_cast<QSplitter*>(widget)) CollectParts(*splitter, order);
        QLayout* inner = widget ? widget->layout() : entry.item->layout();
        if (inner) Collect(*inner, order);
    }
}

// While a field of several parts hands its keys to one of them, the toolkit moves it as a whole,
// and loses what stands between its parts.
class ProxiesAside {
  public:
    explicit ProxiesAside(const QWidget& dialog) {
        for (QWidget* field : dialog.findChildren<QWidget*>())
            if (field->layout() && field->focusProxy())
                fields_.emplace_back(field, field->focusProxy());
        for (const auto& [field, proxy] : fields_) field->setFocusProxy(nullptr);
    }
    ~ProxiesAside() {
        for (const auto& [field, proxy] : fields_) field->setFocusProxy(proxy);
    }
    ProxiesAside(const ProxiesAside&) = delete;
    ProxiesAside& operator=(const ProxiesAside&) = delete;

  private:
    std::vector<std::pair<QWidget*, QWidget*>> fields_;
};

}  // namespace

void TabAsLaidOut(const QWidget& dialog) {
    const ProxiesAside aside(dialog);
    std::vector<QWidget*> order;
    if (dialog.layout()) Collect(*dialog.layout(), order);
    for (std::size_t i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
}

}  // namespace sonavel
