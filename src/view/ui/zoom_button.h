// The three zoom buttons in the bottom row of a view, each with a picture of its own.
#pragma once

#include <QAbstractButton>

namespace sonavel {

class ZoomButton : public QAbstractButton {
    Q_OBJECT

  public:
    enum class Picture { kTime, kLevel, kUser };

    // Screen readers hear the tool tip up to its colon.
    ZoomButton(Picture picture, const QString& toolTip, QWidget* parent);

  Q_SIGNALS:
    void Pressed(Qt::MouseButton button);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintLens(QPainter& painter) const;

    Picture picture_;
    bool down_ = false;
};

}  // namespace sonavel
