#include "app/scene/scene_table.h"

#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/qt/utf8_text.h"

namespace sonavel {
namespace {

enum SceneColumn { kLetter, kName, kStart, kGain, kSceneColumns };

constexpr double kGreatestStart = 100000;  // seconds
constexpr double kGreatestGain = 40;
constexpr double kLeastGain = -120;
constexpr int kShownRows = 4;

class NumberDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* box = new QDoubleSpinBox(parent);
        const bool starts = index.column() == kStart;
        box->setRange(starts ? 0 : kLeastGain, starts ? kGreatestStart : kGreatestGain);
        box->setDecimals(starts ? 3 : 1);
        box->setFrame(false);
        box->setAlignment(Qt::AlignRight);
        return box;
    }
};

}  // namespace

QString SceneLetter(std::size_t entry) {
    constexpr std::size_t kLetters = 26;
    if (entry >= kLetters) return QString::number(entry + 1);
    return QChar(static_cast<char16_t>(u'A' + entry));
}

SceneTable::SceneTable(QWidget* parent) : QTableWidget(0, kSceneColumns, parent) {
    setHorizontalHeaderLabels({QString(), tr("Sound"), tr("Start (s)"), tr("Gain (dB)")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(kName, QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setItemDelegate(new NumberDelegate(this));
    setTabKeyNavigation(false);
    setMinimumHeight((kShownRows + 1) * verticalHeader()->defaultSectionSize());
    setAccessibleName(tr("Sounds"));
    horizontalHeaderItem(0)->setData(Qt::AccessibleTextRole, tr("Letter"));
    connect(this, &QTableWidget::cellChanged, this, &SceneTable::TakeCell);
    connect(this, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (!showing_ && row >= 0) Q_EMIT Chosen(row);
    });
}

void SceneTable::Show(const std::vector<script::SceneEntry>& entries, int current) {
    showing_ = true;
    setRowCount(static_cast<int>(entries.size()));
    for (std::size_t i = 0; i < entries.size(); ++i) ShowRow(static_cast<int>(i), entries[i]);
    if (current >= 0) setCurrentCell(current, std::max(currentColumn(), int{kStart}));
    showing_ = false;
}

void SceneTable::ShowRow(int row, const script::SceneEntry& entry) {
    const QVariant values[] = {SceneLetter(static_cast<std::size_t>(row)), Utf8Text(entry.name),
                               entry.startSeconds, entry.gain};
    for (int column = 0; column < kSceneColumns; ++column) {
        auto* cell = new QTableWidgetItem;
        cell->setData(Qt::EditRole, values[column]);
        if (column < kStart)
            cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
        else
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setItem(row, column, cell);
    }
}

double SceneTable::NumberIn(int row, int column) const {
    return item(row, column)->data(Qt::EditRole).toDouble();
}

void SceneTable::TakeCell(int row, int) {
    if (showing_) return;
    Q_EMIT Timed(row, std::clamp(NumberIn(row, kStart), 0.0, kGreatestStart),
                 std::clamp(NumberIn(row, kGain), kLeastGain, kGreatestGain));
}

}  // namespace sonavel
