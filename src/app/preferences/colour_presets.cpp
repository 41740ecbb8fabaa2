#include "app/preferences/colour_presets.h"

#include <algorithm>
#include <cctype>

#include "app/preferences/preferences.h"

namespace sonavel {
namespace {

constexpr std::string_view kPrefix = "__SOUND_";

// Section names are the same in any case.
bool EqualNames(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](unsigned char left, unsigned char right) {
        return std::toupper(left) == std::toupper(right);
    });
}

bool IsReserved(std::string_view section) {
    return EqualNames(section, kColourSection) || EqualNames(section, kDefaultColourSection) ||
           EqualNames(section, RowOf(SettingId::kCentreLine).section);
}

ColourTable DefaultsIn(const ProfileText& display) {
    ColourTable colours;
    colours.Load(display, kDefaultColourSection);
    return colours;
}

std::string SectionOf(std::string_view name) {
    return std::string(kPrefix) + std::string(name);
}

}  // namespace

std::vector<std::string> ColourPresets::Names() const {
    std::vector<std::string> names;
    for (const std::string& section : display_.Read().SectionNames()) {
        const std::string_view start = std::string_view(section).substr(0, kPrefix.size());
        if (!EqualNames(start, kPrefix) || section.size() == kPrefix.size()) continue;
        if (!IsReserved(section)) names.push_back(section.substr(kPrefix.size()));
    }
    return names;
}

ColourTable ColourPresets::Load(std::string_view name) const {
    const ProfileText display = display_.Read();
    ColourTable colours = DefaultsIn(display);
    colours.Load(display, SectionOf(name));
    return colours;
}

bool ColourPresets::Save(std::string_view name, const ColourTable& colours) {
    return NameProblem(name).empty() && display_.Change([&](ProfileText& display) {
        return PutColours(display, SectionOf(name), colours);
    });
}

bool ColourPresets::Delete(std::string_view name) {
    return NameProblem(name).empty() && display_.Change([&](ProfileText& display) {
        display.DeleteSection(SectionOf(name));
        return true;
    });
}

ColourTable ColourPresets::Defaults() const {
    return DefaultsIn(display_.Read());
}

std::string ColourPresets::NameProblem(std::string_view name) {
    if (name.empty()) return "Needs a name";
    if (name.front() == ' ' || name.back() == ' ') return "No blanks at its ends";
    if (name.find_first_of("[]\r\n\t") != std::string_view::npos) return "Has brackets";
    if (IsReserved(SectionOf(name))) return "Name is taken";
    return {};
}

}  // namespace sonavel
