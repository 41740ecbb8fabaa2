// How spectrograms are computed and coloured, as the initialisation file has it.
#pragma once

#include "platform/outcome.h"
#include "platform/settings.h"
#include "view/draw/spectrogram.h"
#include "view/draw/spectrum_palette.h"

namespace sonavel {

struct SpectrogramSettings {
    SpectrogramLook look;
    SpectrumPalette palette = SpectrumPalette::kEmber;

    // Numbers out of range give way to the shipped ones, a length between two to the shorter.
    static SpectrogramSettings Read(const SettingValues& display);
    void PutInto(SettingValues& display) const;
    // Fails when the file cannot be written.
    Outcome Write(ProfileFile& display) const;
    bool operator==(const SpectrogramSettings&) const = default;
};

}  // namespace sonavel
