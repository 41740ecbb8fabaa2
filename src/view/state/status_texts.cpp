#include "view/state/status_texts.h"

#include <cmath>
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

std::string NoteText(double frequency) {
    constexpr const char* kNames[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                      "F#", "G",  "G#", "A",  "A#", "B"};
    constexpr double kConcertPitch = 440;
    constexpr int kNotes = 12;
    constexpr int kConcertNote = 4 * kNotes + 9;
    constexpr int kEnd = 10 * kNotes;
    if (!(frequency > 1)) return {};
    const double place = kConcertNote + kNotes * std::log2(frequency / kConcertPitch);
    const auto note = static_cast<int>(std::lround(place));
    if (note < 0 || note >= kEnd) return {};
    const auto cents = static_cast<int>(std::lround((place - note) * 100));
    const std::string name = kNames[note % kNotes] + std::to_string(note / kNotes);
    return cents == 0 ? name : name + Formatted(" %+d", cents);
}

std::string SpectrumText(std::string_view position, double frequency,
                         std::optional<double> decibels) {
    std::string text = std::string(position) + Formatted(" : %.0f Hz, ", frequency);
    text += decibels ? Formatted("%.1f dB", *decibels) : "silent";
    const std::string note = NoteText(frequency);
    return note.empty() ? text : text + ", " + note;
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
