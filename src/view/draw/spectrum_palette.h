// The colours of a spectrogram, from silence to full scale: 256 steps whose lightness grows evenly
// as it is perceived (B. Ottosson's Oklab, 2020), so that a louder place always looks brighter and
// no step of the scale stands out.
#pragma once

#include <array>
#include <cstdint>

namespace sonavel {

enum class SpectrumPalette : std::uint8_t {
    kEmber,  // black over violet and orange to pale yellow
    kIce,    // black over blue and green to pale green
};

using PaletteColours = std::array<std::array<std::uint8_t, 3>, 256>;  // red, green, blue (sRGB)
const PaletteColours& ColoursOf(SpectrumPalette palette);

}  // namespace sonavel
