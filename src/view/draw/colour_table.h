// The sixteen colours of a view.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/profile_file.h"

namespace sonavel {

struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Rgb&) const = default;
};

enum class ColourSlot : std::size_t {
    kWaveform = 0,
    kBackground = 1,
    kGrid = 2,
    kSelectedWaveform = 3,
    kSelection = 4,
    kCentreLine = 5,
    kCursor = 7,
    kEndOfSound = 8,  // also the flags of the markers
    kMarkerLabel = 9,
    kRulerText = 10,
    kMarkerStrip = 11,
    kRulerBackground = 13,
    kLaneSeparator = 15,
};

class ColourTable {
  public:
    static constexpr std::size_t kSlots = 16;

    ColourTable();  // the defaults

    Rgb operator[](ColourSlot slot) const { return colours_[static_cast<std::size_t>(slot)]; }
    Rgb At(std::size_t slot) const { return colours_[slot]; }
    void Set(std::size_t slot, Rgb colour) { colours_[slot] = colour; }

    // Each key of the section in use, whatever its name, fills the next slot. A slot without a key,
    // and a part without a "," behind it, keep what they had.
    void Load(const ProfileText& display);
    // Likewise from another section: a named set of colours.
    void Load(const ProfileText& display, std::string_view section);

    bool operator==(const ColourTable&) const = default;

  private:
    std::array<Rgb, kSlots> colours_;
};

// The sections of the colours in use and of those that the preferences go back to.
inline constexpr std::string_view kColourSection = "__SOUND_UPDATE_SECTION";
inline constexpr std::string_view kDefaultColourSection = "__SOUND_DEFAULT_SECTION";

}  // namespace sonavel
