#include "spatial/presets.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace sonavel {
namespace {

constexpr const char* kPoints = "Points";
constexpr const char* kPointCount = "point Count";
constexpr std::size_t kColumn = 4;
constexpr std::size_t kPointColumns = 3 * kColumn;
// A value is read through a buffer of 2000 characters with its closing zero, the names through one
// of 32767, where each takes a closing zero and the list one more.
constexpr std::size_t kLongestValue = 1999;
constexpr std::size_t kLongestNames = 32767;
constexpr int kGreatestCount = 999;

std::string Value(const ProfileText& presets, const std::string& section, const char* key) {
    return presets.GetString(section, key).substr(0, kLongestValue);
}

// The next number, taken from at most `width` characters behind any blanks; the text moves on
// behind it.
int TakeNumber(std::string_view& text, std::size_t width) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string field(text.substr(0, width));
    char* end = nullptr;
    const long number = std::strtol(field.c_str(), &end, 10);
    text.remove_prefix(static_cast<std::size_t>(end - field.c_str()));
    return static_cast<int>(number);
}

std::string Columns(std::initializer_list<int> numbers) {
    std::string text;
    for (const int number : numbers) {
        std::array<char, 16> field;
        std::snprintf(field.data(), field.size(), "%-4d", number);
        text += field.data();
    }
    return text;
}

}  // namespace

std::vector<std::string> LoadPresetNames(const ProfileText& presets) {
    std::vector<std::string> names;
    std::size_t room = kLongestNames - 1;
    for (std::string& name : presets.SectionNames()) {
        if (name.size() + 1 > room) break;
        room -= name.size() + 1;
        names.push_back(std::move(name));
    }
    return names;
}

template <>
SystemPreset LoadPreset(const ProfileText& presets, const std::string& name) {
    const std::string value = Value(presets, name, kPoints);
    std::string_view text = value;
    const int start = TakeNumber(text, kColumn);
    return {start, TakeNumber(text, kColumn)};
}

template <>
UserPreset LoadPreset(const ProfileText& presets, const std::string& name) {
    const std::string countValue = Value(presets, name, kPointCount);
    std::string_view countText = countValue;
    const int counted = std::clamp(TakeNumber(countText, 3), 0, kGreatestCount);
    const std::string value = Value(presets, name, kPoints);
    // More points than the value has room for were cut off when it was read.
    const bool cut = value.size() == kLongestValue;
    const auto fitting = static_cast<int>((value.size() + kPointColumns - 1) / kPointColumns);
    UserPreset points(static_cast<std::size_t>(cut ? std::min(counted, fitting) : counted));
    for (std::size_t i = 0; i < points.size() && i * kPointColumns < value.size(); ++i) {
        std::string_view piece = std::string_view(value).substr(i * kPointColumns, kPointColumns);
        points[i].x = TakeNumber(piece, kColumn);
        points[i].y = TakeNumber(piece, kColumn);
        points[i].z = TakeNumber(piece, kColumn);
    }
    return points;
}

bool SavePreset(ProfileFile& file, const std::string& name, const SystemPreset& preset) {
    return file.SetString(name, kPoints, Columns({preset.start, preset.end}));
}

bool SavePreset(ProfileFile& file, const std::string& name, const UserPreset& points) {
    std::array<char, 16> count;
    std::snprintf(count.data(), count.size(), "%3d", static_cast<int>(points.size()));
    std::string value;
    for (const UserPoint& point : points) value += Columns({point.x, point.y, point.z});
    return file.Change([&](ProfileText& presets) {
        return presets.SetString(name, kPointCount, count.data()) &&
               presets.SetString(name, kPoints, value);
    });
}

bool DeletePreset(ProfileFile& file, const std::string& name) {
    return file.Change([&](ProfileText& presets) {
        presets.DeleteSection(name);
        return true;
    });
}

bool CanDeletePreset(int selectedIndex) {
    return selectedIndex > 0;
}

std::string SystemDeleteQuestion(std::string_view name) {
    return " \"" + std::string(name) + "\"Delete the preset?";
}

std::string UserDeleteQuestion(std::string_view name) {
    return " \"" + std::string(name) + "\"Will you delete the preset?";
}

}  // namespace sonavel
