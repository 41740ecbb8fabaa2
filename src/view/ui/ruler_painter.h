// Paints the two rulers of a view.
#pragma once

#include <QPainter>

#include "view/draw/colour_table.h"
#include "view/draw/rulers.h"
#include "view/sound_view.h"

namespace sonavel {

void PaintHorizontalRuler(QPainter& painter, const CSoundView& view);
void PaintVerticalRuler(QPainter& painter, const CSoundView& view);

// The same for what is no view; the labels' height and place are the painter's own.
void PaintHorizontalRuler(QPainter& painter, const HorizontalRulerRequest& request,
                          const ColourTable& colours);
void PaintVerticalRuler(QPainter& painter, VerticalRulerRequest request,
                        const ColourTable& colours);

}  // namespace sonavel
