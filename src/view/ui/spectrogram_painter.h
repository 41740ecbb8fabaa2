// Puts columns of a spectrogram into an image of device pixels, in the colours of its palette.
#pragma once

#include <QImage>

#include "view/draw/colour_table.h"
#include "view/draw/envelope.h"
#include "view/draw/spectrogram.h"
#include "view/draw/spectrum_palette.h"

namespace sonavel {

// All in device pixels of the image.
struct SpectrogramColumnsToDraw {
    SpectrogramPicture picture;
    int x = 0;    // of its first column
    int top = 0;  // rows [top, bottom), to which the picture is stretched
    int bottom = 0;
    ColumnRange selected;  // these are shown lighter
    SpectrumPalette palette = SpectrumPalette::kEmber;
    Rgb selectedColour;
};

void DrawSpectrogramColumns(QImage& image, const SpectrogramColumnsToDraw& what);

}  // namespace sonavel
