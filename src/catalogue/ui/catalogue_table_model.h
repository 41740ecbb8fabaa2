// A catalogue as a table: a row for each entry that the filter lets through, its fields editable in
// place. Rows can be dragged to other windows as files.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <memory>
#include <optional>

#include "catalogue/catalogue_rows.h"

namespace sonavel {

class CatalogueTableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit CatalogueTableModel(QObject* parent = nullptr);

    // The catalogue must live until another one, or null, is shown. The filter and the order stay.
    void Show(Catalogue* catalogue);
    void SetFilter(const QString& text);
    void SetShown(RowsShown shown);
    // Entries have come or gone.
    void EntriesChanged();
    void EntryChanged(std::size_t entry);

    std::size_t EntryAt(int row) const { return rows_->Entries()[static_cast<std::size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    void sort(int column, Qt::SortOrder order) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

  Q_SIGNALS:
    void ValueEdited();

  private:
    QVariant NameData(std::size_t entry, int role) const;
    void SortRows();
    template <class Change>
    void Reset(Change change);

    Catalogue* catalogue_ = nullptr;
    QStringList titles_;  // outlive the catalogue, so that the columns keep their widths
    std::unique_ptr<CatalogueRows> rows_;
    QString filter_;
    RowsShown shown_ = RowsShown::kAll;
    int sortColumn_ = 0;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    QIcon missing_;
};

}  // namespace sonavel
