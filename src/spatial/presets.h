// Named placements of the 3D editors, kept one section each in "Systemsound.ini" and
// "Usersound.ini" of the program folder. Numbers are stored in fixed columns of four characters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/program_folder.h"

namespace sonavel {

// The numbers of the two points selected in the system scene.
struct SystemPreset {
    int start = 0;
    int end = 0;

    bool operator==(const SystemPreset&) const = default;
};

// A point of the user's scene, in hundredths of a scene unit; -999 to 9999 each.
struct UserPoint {
    int x = 0;
    int y = 0;
    int z = 0;

    bool operator==(const UserPoint&) const = default;
};

// In the order of the point list.
using UserPreset = std::vector<UserPoint>;

// In the order in which they stand in the file, as far as the names fit into 32767 bytes.
std::vector<std::string> LoadPresetNames(const ProfileText& presets);

// A SystemPreset or a UserPreset. Missing or malformed numbers read as 0.
template <class Preset>
Preset LoadPreset(const ProfileText& presets, const std::string& name);
template <>
SystemPreset LoadPreset(const ProfileText& presets, const std::string& name);
template <>
UserPreset LoadPreset(const ProfileText& presets, const std::string& name);

// False when the file cannot be written.
bool SavePreset(ProfileFile& file, const std::string& name, const SystemPreset& preset);
bool SavePreset(ProfileFile& file, const std::string& name, const UserPreset& points);
bool DeletePreset(ProfileFile& file, const std::string& name);

// The first preset of the list cannot be deleted.
bool CanDeletePreset(int selectedIndex);
// What the editors ask before they delete.
std::string SystemDeleteQuestion(std::string_view name);
std::string UserDeleteQuestion(std::string_view name);

}  // namespace sonavel
