#include "spatial/ui/user_point_list.h"

#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QShortcut>
#include <QSpinBox>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "spatial/placing_times.h"

namespace sonavel {
namespace {

enum Column { kBallId, kX, kY, kZ, kTime };

constexpr UserPoint kFirstPoint{0, 100, 0};
constexpr double kNextAzimuth = 45;  // degrees from a point to the one added behind it

constexpr int kTimeDecimals = 3;

QString TimeText(const std::optional<double>& time) {
    if (!time) return {};
    return QLocale().toString(*time, 'g', QLocale::FloatingPointShortest);
}

class CoordinateDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        if (index.column() == kTime) return TimeEditor(parent);
        auto* box = new QSpinBox(parent);
        box->setRange(kLeastCoordinate, kGreatestCoordinate);
        box->setFrame(false);
        box->setAlignment(Qt::AlignRight);
        return box;
    }

  private:
    static QWidget* TimeEditor(QWidget* parent) {
        auto* line = new QLineEdit(parent);
        line->setValidator(new QDoubleValidator(0, kGreatestPathSeconds, kTimeDecimals, line));
        line->setFrame(false);
        line->setAlignment(Qt::AlignRight);
        return line;
    }
};

int& CoordinateOf(UserPoint& point, int column) {
    return column == kX ? point.x : column == kY ? point.y : point.z;
}

UserPoint PointBehind(const UserPoint& point) {
    PolarPosition polar = PolarOf(PositionOf(point));
    if (std::abs(polar.elevation) == 90 || polar.distance == 0) return kFirstPoint;
    polar.azimuth += kNextAzimuth;
    return NearestUserPoint(PositionOf(polar));
}

}  // namespace

UserPointList::UserPointList(PointTimes times, QWidget* parent)
    : QWidget(parent),
      table_(new QTableWidget(0, times == PointTimes::kOn ? kTime + 1 : kZ + 1, this)) {
    table_->setHorizontalHeaderLabels(
        {tr("Ball ID"), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z"), tr("Time")});
    table_->horizontalHeaderItem(kBallId)->setToolTip(
        tr("The number of the point, which its ball in the scene has too."));
    if (QTableWidgetItem* header = table_->horizontalHeaderItem(kTime))
        header->setToolTip(
            tr("When the source is there, in seconds. Empty: as its even speed has it."));
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    table_->setItemDelegate(new CoordinateDelegate(table_));
    table_->setTabKeyNavigation(false);
    table_->setMinimumHeight(130);
    table_->setAccessibleName(tr("Points"));
    table_->setToolTip(tr("x right, y front, z up, in hundredths: 60 is the innermost ring."));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(table_, 1);
    row->addLayout(MakeButtons());
    setFocusProxy(table_);
    connect(table_, &QTableWidget::cellChanged, this, &UserPointList::TakeCell);
    connect(table_, &QTableWidget::currentCellChanged, this, &UserPointList::TakeCurrent);
    Show();
}

QLayout* UserPointList::MakeButtons() {
    auto* column = new QVBoxLayout;
    add_ = AddButton(*column, tr("&Add"), &UserPointList::Add);
    remove_ = AddButton(*column, tr("Re&move"), &UserPointList::Remove);
    up_ = AddButton(*column, tr("&Up"), &UserPointList::MoveUp);
    down_ = AddButton(*column, tr("Do&wn"), &UserPointList::MoveDown);
    column->addStretch(1);
    auto* deleteKey = new QShortcut(QKeySequence::Delete, table_);
    deleteKey->setContext(Qt::WidgetShortcut);
    connect(deleteKey, &QShortcut::activated, this, &UserPointList::Remove);
    return column;
}

QPushButton* UserPointList::AddButton(QLayout& column, const QString& text,
                                      void (UserPointList::*act)()) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    column.addWidget(button);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void UserPointList::SetPoints(std::vector<UserPoint> points, int current) {
    points_ = std::move(points);
    times_.assign(points_.size(), std::nullopt);
    current_ = points_.empty() ? -1 : std::clamp(current, 0, static_cast<int>(points_.size()) - 1);
    Show();
    Q_EMIT Changed();
}

void UserPointList::SetTimes(std::vector<std::optional<double>> times) {
    times_ = std::move(times);
    times_.resize(points_.size());
    Show();
    Q_EMIT Changed();
}

void UserPointList::SetPoint(int index, const UserPoint& point) {
    points_[static_cast<std::size_t>(index)] = point;
    showing_ = true;
    ShowRow(index);
    showing_ = false;
    Q_EMIT Changed();
}

void UserPointList::Select(int index) {
    table_->setCurrentCell(index, std::max(table_->currentColumn(), int{kX}));
}

void UserPointList::Show() {
    showing_ = true;
    const int rows = static_cast<int>(points_.size());
    table_->setRowCount(rows);
    for (int row = 0; row < rows; ++row) ShowRow(row);
    if (current_ >= 0) Select(current_);
    showing_ = false;
    ShowButtons();
}

void UserPointList::ShowButtons() {
    const int rows = static_cast<int>(points_.size());
    add_->setEnabled(rows < kMostUserPoints);
    remove_->setEnabled(current_ >= 0);
    up_->setEnabled(current_ > 0);
    down_->setEnabled(current_ >= 0 && current_ < rows - 1);
}

void UserPointList::ShowRow(int row) {
    UserPoint& point = points_[static_cast<std::size_t>(row)];
    for (int column = 0; column < table_->columnCount(); ++column) {
        auto* item = new QTableWidgetItem;
        if (column == kTime)
            item->setText(TimeText(times_[static_cast<std::size_t>(row)]));
        else
            item->setData(Qt::EditRole, column == kBallId ? row + 1 : CoordinateOf(point, column));
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (column == kBallId) item->setFlags(item->flags() & ~Qt::ItemIsEditable);
        table_->setItem(row, column, item);
    }
}

void UserPointList::TakeCell(int row, int column) {
    if (showing_ || column == kBallId) return;
    if (column == kTime) return TakeTime(row);
    const int value = table_->item(row, column)->data(Qt::EditRole).toInt();
    CoordinateOf(points_[static_cast<std::size_t>(row)], column) =
        std::clamp(value, kLeastCoordinate, kGreatestCoordinate);
    Q_EMIT Changed();
}

void UserPointList::TakeTime(int row) {
    std::optional<double>& time = times_[static_cast<std::size_t>(row)];
    const QString text = table_->item(row, kTime)->text();
    bool isNumber = false;
    const double seconds = QLocale().toDouble(text, &isNumber);
    if (text.isEmpty())
        time.reset();
    else if (isNumber && seconds >= 0 && seconds <= kGreatestPathSeconds)
        time = seconds;
    showing_ = true;
    ShowRow(row);
    showing_ = false;
    Q_EMIT Changed();
}

void UserPointList::TakeCurrent(int row) {
    if (showing_ || row < 0 || row == current_) return;
    current_ = row;
    ShowButtons();
    Q_EMIT Changed();
}

void UserPointList::Add() {
    if (points_.size() >= kMostUserPoints) return;
    const UserPoint point =
        current_ < 0 ? kFirstPoint : PointBehind(points_[static_cast<std::size_t>(current_)]);
    points_.insert(points_.begin() + current_ + 1, point);
    times_.insert(times_.begin() + current_ + 1, std::nullopt);
    ++current_;
    Show();
    Q_EMIT Changed();
}

void UserPointList::Remove() {
    if (current_ < 0) return;
    points_.erase(points_.begin() + current_);
    times_.erase(times_.begin() + current_);
    current_ = std::min(current_, static_cast<int>(points_.size()) - 1);
    Show();
    Q_EMIT Changed();
}

void UserPointList::Move(int by) {
    const int target = current_ + by;
    if (current_ < 0 || target < 0 || target >= static_cast<int>(points_.size())) return;
    // The times stay where they are: they have to rise.
    std::swap(points_[static_cast<std::size_t>(current_)],
              points_[static_cast<std::size_t>(target)]);
    current_ = target;
    Show();
    Q_EMIT Changed();
}

}  // namespace sonavel
