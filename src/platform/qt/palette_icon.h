// Icons from SVG pictures in two colours, which follow the palette and are drawn anew for every
// size and device pixel ratio.
#pragma once

#include <QIcon>

namespace sonavel {

// In the picture, #404040 stands for the palette's text colour and #1f6fd0 for its accent.
QIcon PaletteIcon(const QString& svgPath);

}  // namespace sonavel
