// The way of a moving source between its points: straight or curved, once or in rounds, and a
// button for shapes to begin with.
#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QPushButton>

#include "spatial/placing.h"

namespace sonavel {

enum class ShapeOffer { kOff, kOn };
enum class LoopOffer { kOff, kOn };

class PathBox : public QGroupBox {
    Q_OBJECT

  public:
    PathBox(ShapeOffer shapes, LoopOffer loops, QWidget* parent = nullptr);

    void Show(const Placing& placing);
    void ShowCurve(PathCurve curve);
    // Says in the placing what is chosen here, and leaves the rest.
    void PutInto(Placing& placing) const;

  Q_SIGNALS:
    // By the person.
    void Edited();
    void ShapeAsked();

  private:
    QCheckBox* AddBox(const QString& text, const QString& toolTip);

    QCheckBox* curve_;
    QCheckBox* loop_;
    QDoubleSpinBox* round_;
    QPushButton* shape_;
};

}  // namespace sonavel
