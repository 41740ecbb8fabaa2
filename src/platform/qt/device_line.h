// Lines in whole pixels of the screen. Where a pixel of the program is 1.25 or 1.5 of the screen's,
// edges that are rounded one by one would let lines of one thickness come out different.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRect>

namespace sonavel {

// Fills an upright or a lying line; its thinner side is as thick wherever it lies, and within what
// an update of the line paints anew.
void FillLine(QPainter& painter, const QRectF& line, const QColor& colour);

// The outermost pixels of an area.
void FillFrame(QPainter& painter, const QRectF& area, const QColor& colour);

// Likewise, lit from the left above: raised over what lies around it, or sunken into it.
enum class Relief { kRaised, kSunken };
void FillBevel(QPainter& painter, const QRectF& area, const QPalette& palette, Relief relief);

}  // namespace sonavel
