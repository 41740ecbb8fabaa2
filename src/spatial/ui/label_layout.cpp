#include "spatial/ui/label_layout.h"

#include <algorithm>

namespace sonavel {
namespace {

QRectF RectAround(const QPointF& middle, const QSizeF& size) {
    return {middle - QPointF(size.width() / 2, size.height() / 2), size};
}

bool MeetsAny(const QRectF& rect, const std::vector<QRectF>& others) {
    return std::any_of(others.begin(), others.end(),
                       [&](const QRectF& other) { return other.intersects(rect); });
}

}  // namespace

LabelLayout::LabelLayout(const QSizeF& window, std::vector<QRectF> balls)
    : window_(QPointF(), window), balls_(std::move(balls)) {}

std::optional<QRectF> LabelLayout::Take(const QSizeF& size, std::span<const QPointF> middles,
                                        LabelNeed need) {
    std::optional<QRectF> place = FirstFree(size, middles, Over::kNothing);
    if (!place && need != LabelNeed::kOffEverything) place = FirstFree(size, middles, Over::kBalls);
    if (!place && need == LabelNeed::kAlways && !middles.empty())
        place = RectAround(middles.front(), size);
    if (place) labels_.push_back(*place);
    return place;
}

std::optional<QRectF> LabelLayout::FirstFree(const QSizeF& size, std::span<const QPointF> middles,
                                             Over over) const {
    for (const QPointF& middle : middles) {
        const QRectF rect = RectAround(middle, size);
        if (!window_.contains(rect) || MeetsAny(rect, labels_)) continue;
        if (over == Over::kBalls || !MeetsAny(rect, balls_)) return rect;
    }
    return std::nullopt;
}

}  // namespace sonavel
