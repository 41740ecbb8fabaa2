#include "view/state/spectrogram_settings.h"

#include <bit>
#include <cmath>
#include <utility>

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

Outcome SpectrogramSettings::Write(ProfileFile& display) const {
    const std::pair<SettingId, int> numbers[] = {
        {SettingId::kSpectrumWindow, static_cast<int>(look.windowFrames)},
        {SettingId::kSpectrumShape, static_cast<int>(look.shape)},
        {SettingId::kSpectrumScale, static_cast<int>(look.scale)},
        {SettingId::kSpectrumRange, static_cast<int>(std::lround(look.rangeDecibels))},
        {SettingId::kSpectrumPalette, static_cast<int>(palette)},
    };
    bool written = true;
    for (const auto& [id, number] : numbers) written = WriteNumber(display, id, number) && written;
    return DoneIf(written, "Display.ini cannot be written.");
}

}  // namespace sonavel
