#include "catalogue/ui/catalogue_table_view.h"

#include <QHeaderView>

#include "catalogue/catalogue_columns.h"

namespace sonavel {

namespace {

constexpr int kFixedWidths[kFixedColumns] = {200, 100, 78, 56, 72, 72, 90, 150};
constexpr int kFieldWidth = 100;
constexpr int kRowPadding = 8;

}  // namespace

CatalogueTableView::CatalogueTableView(CatalogueTableModel& model, QWidget* parent)
    : QTableView(parent), model_(model) {
    setModel(&model_);
    SetUp();
    connect(&model_, &QAbstractItemModel::modelAboutToBeReset, this,
            &CatalogueTableView::KeepSelection);
    connect(&model_, &QAbstractItemModel::modelReset, this, &CatalogueTableView::RestoreSelection);
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (!(index.flags() & Qt::ItemIsEditable)) Q_EMIT OpenRequested();
    });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CatalogueTableView::SelectionChanged);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CatalogueTableView::SelectionChanged);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (hasFocus() && CurrentEntry() != keptCurrent_) Q_EMIT RowChosen();
    });
}

void CatalogueTableView::SetUp() {
    setObjectName(QStringLiteral("sounds"));
    setAccessibleName(tr("Sounds"));
    setSelectionBehavior(QTableView::SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setDragDropMode(QTableView::DragOnly);
    setEditTriggers(QTableView::EditKeyPressed | QTableView::DoubleClicked);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    sortByColumn(0, Qt::AscendingOrder);
    setSortingEnabled(true);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void CatalogueTableView::SetColumnWidths() {
    for (int column = 0; column < model_.columnCount(); ++column) {
        const auto index = static_cast<std::size_t>(column);
        if (columnWidth(column) == horizontalHeader()->defaultSectionSize())
            setColumnWidth(column, index < kFixedColumns ? kFixedWidths[index] : kFieldWidth);
    }
}

std::vector<std::size_t> CatalogueTableView::SelectedEntries() const {
    std::vector<std::size_t> entries;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); range.left() == 0 && row <= range.bottom(); ++row)
            entries.push_back(model_.EntryAt(row));
    return entries;
}

std::optional<std::size_t> CatalogueTableView::CurrentEntry() const {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) return std::nullopt;
    return model_.EntryAt(current.row());
}

void CatalogueTableView::KeepSelection() {
    keptEntries_.clear();
    keptCurrent_ = CurrentEntry();
    for (const std::size_t entry : SelectedEntries()) {
        if (keptEntries_.size() <= entry) keptEntries_.resize(entry + 1);
        keptEntries_[entry] = true;
    }
}

void CatalogueTableView::RestoreSelection() {
    QItemSelection selection;
    QModelIndex current;
    int first = -1;  // of the run of selected rows that is being walked over
    const int rows = model_.rowCount();
    for (int row = 0; row <= rows; ++row) {
        const std::size_t entry = row < rows ? model_.EntryAt(row) : keptEntries_.size();
        const bool selected = entry < keptEntries_.size() && keptEntries_[entry];
        if (row < rows && entry == keptCurrent_) current = model_.index(row, 0);
        if (selected && first < 0) first = row;
        if (selected || first < 0) continue;
        selection.select(model_.index(first, 0), model_.index(row - 1, model_.columnCount() - 1));
        first = -1;
    }
    QItemSelectionModel& model = *selectionModel();
    model.select(selection, QItemSelectionModel::ClearAndSelect);
    model.setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    if (current.isValid()) scrollTo(current);
    keptCurrent_.reset();
}

}  // namespace sonavel
