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

// The size of a text that is `pixels` high on a desktop of ordinary texts, 12 pixels high: grown as
// the desktop's own are, never smaller.
int GrownWithDesktop(int pixels);

// What bounds a ruler's texts: the horizontal one and the gap for the grid's labels are a row of 20
// pixels, the vertical one is a column as wide.
enum class RulerRoom { kRow, kColumn };

// The font of the rulers and of the grid's labels, grown with the desktop's as far as its room
// allows.
QFont RulerFont(RulerRoom room);
TextWidth WidthIn(const QFont& font);

}  // namespace sonavel
