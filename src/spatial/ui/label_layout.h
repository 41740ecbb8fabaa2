// Finds room for the labels of a scene, so that none lies on another.
#pragma once

#include <QRectF>
#include <optional>
#include <span>
#include <vector>

namespace sonavel {

enum class LabelNeed {
    kAlways,         // rather over another than not at all
    kOffLabels,      // not over another label; over a ball only where nothing else is free
    kOffEverything,  // over nothing
};

class LabelLayout {
  public:
    // In pixels of the window; `balls` are the places that labels avoid from the start.
    LabelLayout(const QSizeF& window, std::vector<QRectF> balls);

    // Takes the first of these middles, best first, at which a label of that size has room; nothing
    // when none has.
    std::optional<QRectF> Take(const QSizeF& size, std::span<const QPointF> middles,
                               LabelNeed need);

  private:
    enum class Over { kNothing, kBalls };

    std::optional<QRectF> FirstFree(const QSizeF& size, std::span<const QPointF> middles,
                                    Over over) const;

    QRectF window_;
    std::vector<QRectF> balls_;
    std::vector<QRectF> labels_;
};

}  // namespace sonavel
