#include "view/state/status_texts.h"

#include <cstdio>

#include "sound/sample_texts.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

template <typename... Values>
std::string Formatted(const char* format, Values... values) {
    char text[512];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

}  // namespace

std::string ZoomText(std::int64_t framesPerPixel, double timePercent) {
    if (!(timePercent > 0)) return {};
    return Formatted("Zoom (1 : %lld) %.3f%%", static_cast<long long>(framesPerPixel), timePercent);
}

std::string ZoomRatioText(std::int64_t framesPerPixel) {
    return framesPerPixel > 0 ? "1 : " + std::to_string(framesPerPixel) : "";
}

std::string SampleValuesText(const Sound& wave, std::int64_t frame) {
    const auto position = static_cast<std::uint32_t>(frame);
    constexpr int kDecimals = 5;
    std::string text = "(Sample Value) Left,Right : " + SampleText(wave, 0, position, kDecimals);
    if (wave.GetChannels() < 2) return text;
    return text += ", " + SampleText(wave, 1, position, kDecimals);
}

std::string PositionText(StatusFormat format, std::int64_t frame, std::uint32_t samplesPerSecond) {
    if (format == StatusFormat::kSample) return std::to_string(frame);
    const double seconds =
        samplesPerSecond > 0 ? static_cast<double>(frame) / samplesPerSecond : 0.0;
    return format == StatusFormat::kTime ? TimeText(seconds) : Formatted("%.3f", seconds);
}

std::string SelectionText(StatusFormat format, const Selection& selection,
                          std::uint32_t samplesPerSecond) {
    if (selection.IsEmpty()) return {};
    const auto text = [&](std::uint32_t frame) {
        return PositionText(format, frame, samplesPerSecond);
    };
    return text(selection.start) + " - " + text(selection.end) + " (" + text(selection.Frames()) +
           ")";
}

}  // namespace sonavel
