// The sounds of a scene in a list: the letter that each has in the scene, its name, when it starts
// and how loud it is.
#pragma once

#include <QTableWidget>

#include "script/open_scene.h"

namespace sonavel {

class SceneTable : public QTableWidget {
    Q_OBJECT

  public:
    explicit SceneTable(QWidget* parent = nullptr);

    void Show(const std::vector<script::SceneEntry>& entries, int current);

  Q_SIGNALS:
    // By the person.
    void Chosen(int entry);
    void Timed(int entry, double startSeconds, double gain);

  private:
    void ShowRow(int row, const script::SceneEntry& entry);
    double NumberIn(int row, int column) const;
    void TakeCell(int row, int column);

    bool showing_ = false;
};

// "A", "B" ...; behind "Z" by number.
QString SceneLetter(std::size_t entry);

}  // namespace sonavel
