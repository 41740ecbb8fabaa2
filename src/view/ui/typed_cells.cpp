#include "view/ui/typed_cells.h"

#include <QLineEdit>

namespace sonavel {

namespace {

QString TextToType(const QModelIndex& index) {
    const QVariant text = index.data(TypedCells::kTextToType);
    return text.isValid() ? text.toString() : index.data(Qt::EditRole).toString();
}

}  // namespace

TypedCells::TypedCells(int first, int last, QObject* parent)
    : QStyledItemDelegate(parent), first_(first), last_(last) {}

QWidget* TypedCells::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const {
    if (index.column() < first_ || index.column() > last_) return nullptr;
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    return editor;
}

void TypedCells::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setText(TextToType(index));
}

void TypedCells::setModelData(QWidget* editor, QAbstractItemModel*,
                              const QModelIndex& index) const {
    const auto* line = qobject_cast<QLineEdit*>(editor);
    if (!line || line->text() == TextToType(index)) return;
    Q_EMIT Typed(index.row(), index.column(), line->text());
}

}  // namespace sonavel
