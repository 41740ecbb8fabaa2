// The list "Ball ID", x, y, z of a person's points, in hundredths of a scene unit, in the order in
// which a moving source passes them, and of such a source the time when it passes.
#pragma once

#include <QPushButton>
#include <QTableWidget>
#include <optional>
#include <vector>

#include "spatial/scene_points.h"

namespace sonavel {

enum class PointTimes { kOff, kOn };

class UserPointList : public QWidget {
    Q_OBJECT

  public:
    explicit UserPointList(PointTimes times, QWidget* parent = nullptr);

    const std::vector<UserPoint>& Points() const { return points_; }
    // Of each point, in seconds; none: as the others' give it.
    const std::vector<std::optional<double>>& Times() const { return times_; }
    // The index of the selected point, -1 when the list is empty.
    int Current() const { return current_; }

    // Takes the points, without times, and selects one of them, the nearest where there is none of
    // that index.
    void SetPoints(std::vector<UserPoint> points, int current = 0);
    // Of the points that are there.
    void SetTimes(std::vector<std::optional<double>> times);
    void SetPoint(int index, const UserPoint& point);
    void Select(int index);

  Q_SIGNALS:
    // The points, their order or the selection changed.
    void Changed();

  private:
    QLayout* MakeButtons();
    QPushButton* AddButton(QLayout& column, const QString& text, void (UserPointList::*act)());
    void Show();
    void ShowRow(int row);
    void ShowButtons();
    void TakeCell(int row, int column);
    void TakeTime(int row);
    void TakeCurrent(int row);
    void Add();
    void Remove();
    void MoveUp() { Move(-1); }
    void MoveDown() { Move(1); }
    void Move(int by);

    std::vector<UserPoint> points_;
    std::vector<std::optional<double>> times_;  // of each point
    int current_ = -1;
    bool showing_ = false;  // the table is being filled, not edited
    QTableWidget* table_;
    QPushButton* add_;
    QPushButton* remove_;
    QPushButton* up_;
    QPushButton* down_;
};

}  // namespace sonavel
