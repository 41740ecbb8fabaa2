// Paints the two rulers of a view.
#pragma once

#include <QPainter>

#include "view/sound_view.h"

namespace sonavel {

void PaintHorizontalRuler(QPainter& painter, const CSoundView& view);
void PaintVerticalRuler(QPainter& painter, const CSoundView& view);

}  // namespace sonavel
