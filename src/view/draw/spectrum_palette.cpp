#include "view/draw/spectrum_palette.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sonavel {
namespace {

constexpr double kDarkest = 0.05;
constexpr double kLightest = 0.96;

struct Path {
    double startHue, endHue;  // turns
    double chroma;            // the greatest
};
constexpr Path kEmberPath = {-0.20, 0.29, 0.19};
constexpr Path kIcePath = {0.76, 0.36, 0.15};

using Linear = std::array<double, 3>;

Linear LinearOf(double lightness, double a, double b) {
    const auto cube = [](double x) { return x * x * x; };
    const double l = cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

bool IsShown(const Linear& colour) {
    return std::ranges::all_of(colour, [](double part) { return part >= 0 && part <= 1; });
}

std::uint8_t Encoded(double linear) {
    const double part =
        linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055;
    return static_cast<std::uint8_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
}

// As colourful as the path has it, or as screens can show at this lightness.
Linear ColourAt(const Path& path, double step) {
    const double lightness = std::lerp(kDarkest, kLightest, step);
    const double angle = 2 * std::numbers::pi * std::lerp(path.startHue, path.endHue, step);
    const double wanted = path.chroma * std::sqrt(std::sin(std::numbers::pi * step));
    double low = 0, high = wanted;
    for (int halving = 0; halving < 24; ++halving) {
        const double chroma = halving == 0 ? wanted : (low + high) / 2;
        const bool shown =
            IsShown(LinearOf(lightness, chroma * std::cos(angle), chroma * std::sin(angle)));
        (shown ? low : high) = chroma;
    }
    return LinearOf(lightness, low * std::cos(angle), low * std::sin(angle));
}

PaletteColours Made(const Path& path) {
    PaletteColours colours;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const Linear colour =
            ColourAt(path, static_cast<double>(i) / static_cast<double>(colours.size() - 1));
        std::ranges::transform(colour, colours[i].begin(), Encoded);
    }
    return colours;
}

}  // namespace

const PaletteColours& ColoursOf(SpectrumPalette palette) {
    static const PaletteColours ember = Made(kEmberPath);
    static const PaletteColours ice = Made(kIcePath);
    return palette == SpectrumPalette::kEmber ? ember : ice;
}

}  // namespace sonavel
