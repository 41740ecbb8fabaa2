#include "view/draw/colour_table.h"

#include <cstdlib>
#include <string>

namespace sonavel {
namespace {

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{0, 0, 0};

constexpr std::array<Rgb, ColourTable::kSlots> kDefaults = {{
    {0, 255, 128},
    kBlack,
    {255, 255, 0},
    {192, 192, 192},
    {0, 0, 128},
    {255, 0, 0},
    kBlack,
    kWhite,
    kWhite,
    kWhite,
    kWhite,
    {0, 0, 160},
    {0, 0, 140},
    {0, 0, 160},
    kBlack,
    {128, 128, 128},
}};

// Only a number with a "," behind it counts, as every number that the program writes has one.
void ReadColour(std::string_view text, Rgb& colour) {
    for (std::uint8_t* part : {&colour.red, &colour.green, &colour.blue}) {
        const std::size_t comma = text.find(',');
        if (comma == std::string_view::npos) return;
        const std::string number(text.substr(0, comma));
        *part = static_cast<std::uint8_t>(std::strtol(number.c_str(), nullptr, 10));
        text.remove_prefix(comma + 1);
    }
}

}  // namespace

ColourTable::ColourTable() : colours_(kDefaults) {}

void ColourTable::Load(const ProfileText& display) {
    Load(display, kColourSection);
}

void ColourTable::Load(const ProfileText& display, std::string_view section) {
    std::size_t slot = 0;
    for (const auto& [key, value] : display.Entries(section)) {
        if (slot == kSlots) return;
        ReadColour(value, colours_[slot++]);
    }
}

}  // namespace sonavel
