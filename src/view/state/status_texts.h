// The texts that a view shows in the status line of its frame.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sound/sound.h"
#include "view/state/display_settings.h"
#include "view/state/selection.h"

namespace sonavel {

// "Zoom (1 : 64) 100.000%"; empty unless the percentage is above 0.
std::string ZoomText(std::int64_t framesPerPixel, double timePercent);

// "1 : 64"; empty where a view has no width or no sound.
std::string ZoomRatioText(std::int64_t framesPerPixel);

// "(Sample Value) Left,Right : -12, 40" of a frame; one value for a mono sound.
std::string SampleValuesText(const Sound& wave, std::int64_t frame);

// "C4", "F#5 +12": the note of equal temperament (A4 is 440 Hz) nearest to a frequency in Hz, and
// how many cents it lies beside it; empty outside of C0 to B9.
std::string NoteText(double frequency);
// "00:00:01.000 : 440 Hz, -12.3 dB, A4" of a point of a spectrogram; without decibels it is silent
// there.
std::string SpectrumText(std::string_view position, double frequency,
                         std::optional<double> decibels);

// A position or a length: "44100", "00:00:01.000" or "1.000".
std::string PositionText(StatusFormat format, std::int64_t frame, std::uint32_t samplesPerSecond);
// "START - END (LENGTH)"; empty for an empty selection.
std::string SelectionText(StatusFormat format, const Selection& selection,
                          std::uint32_t samplesPerSecond);

}  // namespace sonavel
