#include "view/ui/spectrogram_painter.h"

#include <algorithm>
#include <array>

namespace sonavel {

namespace {

constexpr int kSelectedPercent = 35;  // of the colour of selected waveforms

using Colours = std::array<QRgb, 256>;

Colours ColoursFor(SpectrumPalette palette) {
    Colours colours;
    std::ranges::transform(ColoursOf(palette), colours.begin(), [](const auto& colour) {
        return qRgb(colour[0], colour[1], colour[2]);
    });
    return colours;
}

QRgb Mixed(QRgb colour, Rgb with) {
    const auto part = [](int a, int b) {
        return (a * (100 - kSelectedPercent) + b * kSelectedPercent) / 100;
    };
    return qRgb(part(qRed(colour), with.red), part(qGreen(colour), with.green),
                part(qBlue(colour), with.blue));
}

}  // namespace

void DrawSpectrogramColumns(QImage& image, const SpectrogramColumnsToDraw& what) {
    const SpectrogramPicture& picture = what.picture;
    const int first = std::max(what.x, 0);
    const int last = std::min(what.x + static_cast<int>(picture.width), image.width());
    if (picture.height == 0 || first >= last) return;
    const Colours plain = ColoursFor(what.palette);
    Colours selected;
    std::ranges::transform(plain, selected.begin(),
                           [&](QRgb colour) { return Mixed(colour, what.selectedColour); });
    const int selectedFirst = std::clamp(what.selected.first, first, last);
    const int selectedLast = std::clamp(what.selected.last, selectedFirst, last);
    for (int y = std::max(what.top, 0); y < std::min(what.bottom, image.height()); ++y) {
        const auto row = static_cast<std::size_t>(y - what.top) * picture.height /
                         static_cast<std::size_t>(what.bottom - what.top);
        const std::uint8_t* levels = picture.levels.data() + row * picture.width;
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto fill = [&](const Colours& colours, int from, int to) {
            for (int x = from; x < to; ++x) pixels[x] = colours[levels[x - what.x]];
        };
        fill(plain, first, selectedFirst);
        fill(selected, selectedFirst, selectedLast);
        fill(plain, selectedLast, last);
    }
}

}  // namespace sonavel
