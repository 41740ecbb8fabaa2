#include "view/state/spectrogram_settings.h"

#include <bit>
#include <cmath>

namespace sonavel {
namespace {

int NumberOf(const SettingValues& display, SettingId id) {
    return RowOf(id).Effective(display[id]);
}

}  // namespace

SpectrogramSettings SpectrogramSettings::Read(const SettingValues& display) {
    const auto window = static_cast<unsigned>(NumberOf(display, SettingId::kSpectrumWindow));
    return {
        .look = {.windowFrames = std::bit_floor(window),
                 .shape = static_cast<WindowShape>(NumberOf(display, SettingId::kSpectrumShape)),
                 .scale = static_cast<FrequencyScale>(NumberOf(display, SettingId::kSpectrumScale)),
                 .rangeDecibels = double{1} * NumberOf(display, SettingId::kSpectrumRange)},
        .palette = static_cast<SpectrumPalette>(NumberOf(display, SettingId::kSpectrumPalette))};
}

void SpectrogramSettings::PutInto(SettingValues& display) const {
    display[SettingId::kSpectrumWindow] = static_cast<int>(look.windowFrames);
    display[SettingId::kSpectrumShape] = static_cast<int>(look.shape);
    display[SettingId::kSpectrumScale] = static_cast<int>(look.scale);
    display[SettingId::kSpectrumRange] = static_cast<int>(std::lround(look.rangeDecibels));
    display[SettingId::kSpectrumPalette] = static_cast<int>(palette);
}

Outcome SpectrogramSettings::Write(ProfileFile& display) const {
    using enum SettingId;
    SettingValues numbers;
    PutInto(numbers);
    bool written = true;
    for (const SettingId id :
         {kSpectrumWindow, kSpectrumShape, kSpectrumScale, kSpectrumRange, kSpectrumPalette})
        written = WriteNumber(display, id, numbers[id]) && written;
    return DoneIf(written, "Display.ini cannot be written.");
}

}  // namespace sonavel
