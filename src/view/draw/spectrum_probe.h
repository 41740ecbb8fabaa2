// How loud a sound is at one place and frequency: what the status bar says of the point under the
// pointer.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "view/draw/spectrogram.h"

namespace sonavel {

class SpectrumProbe {
  public:
    struct Band {
        double low = 0;  // Hz
        double high = 0;
    };
    // The loudest of a band in decibels of full scale, from the window around the frame; nothing
    // where there is no power or no memory. A band between two bins has that of the nearer one.
    std::optional<double> Decibels(const Sound& sound, unsigned channel, std::int64_t frame,
                                   const Band& band, const SpectrogramLook& look);

  private:
    std::vector<float> PowerAt(const Sound& sound, unsigned channel, std::int64_t frame);

    // The tables of the last look.
    SpectrogramLook look_;
    std::unique_ptr<PowerSpectrum> spectrum_;
};

}  // namespace sonavel
