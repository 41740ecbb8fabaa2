// The view's plain rectangles, colours and fonts as Qt has them.
#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <string_view>

#include "view/draw/colour_table.h"
#include "view/draw/text_width.h"
#include "view/state/rectangle.h"

namespace sonavel {

inline QRect ToQRect(const Rectangle& r) {
    return {r.left, r.top, r.Width(), r.Height()};
}
inline QColor ToQColor(Rgb colour) {
    return {colour.red, colour.green, colour.blue};
}
QString ToQString(std::string_view text);

// The font of both rulers and of the grid's labels.
QFont RulerFont();
TextWidth WidthIn(const QFont& font);

}  // namespace sonavel
