#include "platform/qt/tab_order.h"

#include <QGridLayout>
#include <QSplitter>
#include <algorithm>
#include <tuple>
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

}  // namespace

void TabAsLaidOut(const QWidget& dialog) {
    std::vector<QWidget*> order;
    if (dialog.layout()) Collect(*dialog.layout(), order);
    for (std::size_t i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
}

}  // namespace sonavel
