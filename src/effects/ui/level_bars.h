// Two narrow bars that show how loud both ears hear something.
#pragma once

#include <QWidget>

#include "audio/live_player.h"

namespace sonavel {

class LevelBars : public QWidget {
  public:
    explicit LevelBars(QWidget* parent = nullptr);

    // Rises at once, falls by and by.
    void Show(const LivePeaks& peaks);
    void Clear();
    // What they show, as parts of their length: 60 dB up to full scale.
    double Left() const { return left_; }
    double Right() const { return right_; }

    QSize sizeHint() const override { return {160, 18}; }
    QSize minimumSizeHint() const override { return {60, 18}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double left_ = 0;
    double right_ = 0;
};

}  // namespace sonavel
