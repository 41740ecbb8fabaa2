#include "catalogue/ui/catalogue_table_model.h"

#include <QFile>
#include <QMimeData>
#include <QSet>
#include <QUrl>
#include <algorithm>

#include "catalogue/catalogue_columns.h"
#include "catalogue/ui/catalogue_icons.h"
#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

constexpr QRgb kMissingColour = 0xffd03434;
// A cell shows no more, however long its text is.
constexpr qsizetype kMostShownCharacters = 300;

QString OnOneLine(QString text) {
    text.truncate(kMostShownCharacters);
    for (QChar& c : text)
        if (c.unicode() < 0x20 || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return text;
}

QStringList TitlesOf(const Catalogue& catalogue) {
    QStringList titles;
    for (std::size_t column = 0; column < ColumnCount(catalogue); ++column)
        titles << OnOneLine(Utf8Text(ColumnTitle(catalogue, column)));
    return titles;
}

}  // namespace

CatalogueTableModel::CatalogueTableModel(QObject* parent)
    : QAbstractTableModel(parent), missing_(CatalogueIcon("missing")) {}

template <class Change>
void CatalogueTableModel::Reset(Change change) {
    beginResetModel();
    change();
    endResetModel();
}

void CatalogueTableModel::Show(Catalogue* catalogue) {
    Reset([&] {
        catalogue_ = catalogue;
        rows_.reset();
        if (!catalogue) return;
        titles_ = TitlesOf(*catalogue);
        rows_ = std::make_unique<CatalogueRows>(*catalogue);
        rows_->SetShown(shown_);
        rows_->SetFilter(filter_.toStdString());
        if (sortColumn_ != 0 || sortOrder_ != Qt::AscendingOrder) SortRows();
    });
}

void CatalogueTableModel::SetFilter(const QString& text) {
    filter_ = text;
    if (rows_) Reset([&] { rows_->SetFilter(text.toStdString()); });
}

void CatalogueTableModel::SetShown(RowsShown shown) {
    shown_ = shown;
    if (rows_) Reset([&] { rows_->SetShown(shown); });
}

void CatalogueTableModel::EntriesChanged() {
    if (rows_) Reset([&] { rows_->Rebuild(); });
}

void CatalogueTableModel::EntryChanged(std::size_t entry) {
    rows_->Refresh(entry);
    const std::vector<std::uint32_t>& shown = rows_->Entries();
    const auto found = std::find(shown.begin(), shown.end(), entry);
    if (found == shown.end()) return;
    const int row = static_cast<int>(found - shown.begin());
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int CatalogueTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !rows_ ? 0 : static_cast<int>(rows_->Entries().size());
}

int CatalogueTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(titles_.size());
}

QVariant CatalogueTableModel::NameData(std::size_t entry, int role) const {
    const CatalogueEntry& shown = catalogue_->At(entry);
    const bool missing = shown.presence == FilePresence::kMissing;
    if (role == Qt::ForegroundRole && missing) return QColor(kMissingColour);
    if (role == Qt::DecorationRole && missing) return missing_;
    if (role == Qt::ToolTipRole)
        return (missing ? tr("Missing: %1") : QStringLiteral("%1"))
            .arg(Utf8Text(DisplayText(shown.path)));
    return {};
}

QVariant CatalogueTableModel::data(const QModelIndex& index, int role) const {
    const std::size_t entry = EntryAt(index.row());
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole) return OnOneLine(Utf8Text(CellText(*catalogue_, entry, column)));
    if (role == Qt::EditRole) return Utf8Text(CellText(*catalogue_, entry, column));
    if (role == Qt::TextAlignmentRole && IsNumberColumn(column))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return column == 0 ? NameData(entry, role) : QVariant();
}

QVariant CatalogueTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::DisplayRole) return titles_.value(section);
    const bool number = IsNumberColumn(static_cast<std::size_t>(section));
    if (role == Qt::TextAlignmentRole)
        return QVariant((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags CatalogueTableModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled;
    if (index.column() >= static_cast<int>(kFixedColumns)) flags |= Qt::ItemIsEditable;
    return flags;
}

bool CatalogueTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.column() < static_cast<int>(kFixedColumns)) return false;
    const std::size_t entry = EntryAt(index.row());
    const std::size_t field = static_cast<std::size_t>(index.column()) - kFixedColumns;
    if (!catalogue_->SetValue(entry, field, value.toString().toStdString())) return false;
    EntryChanged(entry);
    Q_EMIT ValueEdited();
    return true;
}

void CatalogueTableModel::SortRows() {
    const int last = columnCount() - 1;
    const bool ascending = sortOrder_ == Qt::AscendingOrder;
    rows_->SortBy(static_cast<std::size_t>(std::min(sortColumn_, last)),
                  ascending ? SortOrder::kAscending : SortOrder::kDescending);
}

void CatalogueTableModel::sort(int column, Qt::SortOrder order) {
    sortColumn_ = std::max(column, 0);
    sortOrder_ = order;
    if (rows_) Reset([this] { SortRows(); });
}

QStringList CatalogueTableModel::mimeTypes() const {
    return {QStringLiteral("text/uri-list")};
}

QMimeData* CatalogueTableModel::mimeData(const QModelIndexList& indexes) const {
    QList<QUrl> files;
    for (const QModelIndex& index : indexes) {
        if (index.column() != 0) continue;
        files.append(FileUrl(catalogue_->At(EntryAt(index.row())).path));
    }
    auto* data = new QMimeData;
    data->setUrls(files);
    return data;
}

}  // namespace sonavel
