// Rulers as the view paints them, black on white.
#pragma once

#include <QPainter>
#include <span>

#include "view/ui/qt_values.h"
#include "view/ui/ruler_painter.h"

namespace sonavel {

inline ColourTable BlackOnWhite() {
    ColourTable colours;
    colours.Set(static_cast<std::size_t>(ColourSlot::kRulerBackground), {255, 255, 255});
    colours.Set(static_cast<std::size_t>(ColourSlot::kRulerText), {0, 0, 0});
    return colours;
}

// Of ten seconds, 600 by 20 pixels.
inline void PaintTimes(QPaintDevice& target) {
    QPainter painter(&target);
    HorizontalRulerRequest request;
    request.area = {0, 0, 600, 20};
    request.map = PixelMap(441000, {0, 600, 601, 0});
    request.samplesPerSecond = 44100;
    request.cursor = -1;
    PaintHorizontalRuler(painter, request, BlackOnWhite());
}

// 20 pixels wide.
inline void PaintLevels(QPaintDevice& target, int height) {
    const Rectangle lane{-100, 0, 0, height};
    QPainter painter(&target);
    VerticalRulerRequest request;
    request.area = {0, 0, 20, height};
    request.lanes = std::span(&lane, 1);
    request.vertical = {0, 200, 201, 0};
    request.fullScale = 65536;
    PaintVerticalRuler(painter, request, BlackOnWhite());
}

}  // namespace sonavel
