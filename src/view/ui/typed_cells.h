// Cells of a list that a person types into: the columns that may be typed, and who hears of it.
#pragma once

#include <QStyledItemDelegate>

namespace sonavel {

class TypedCells : public QStyledItemDelegate {
    Q_OBJECT

  public:
    // Of an item: what stands in the field at first, where that is not what is shown.
    static constexpr int kTextToType = Qt::UserRole;

    // Columns from `first` to `last`, both inside, are typed into; the others are only shown.
    TypedCells(int first, int last, QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;

  Q_SIGNALS:
    // Another text than the one that stood there. The cell has not taken it; the list may be filled
    // anew on the way.
    void Typed(int row, int column, const QString& text) const;

  private:
    int first_;
    int last_;
};

}  // namespace sonavel
