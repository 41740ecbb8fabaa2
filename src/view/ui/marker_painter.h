// Paints the strip of the markers below the waveform: flags, labels and the bars of regions.
#pragma once

#include <QPainter>

#include "view/sound_view.h"

namespace sonavel {

void PaintMarkerStrip(QPainter& painter, const CSoundView& view);

}  // namespace sonavel
