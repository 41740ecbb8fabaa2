// Initialisation files on the disk, which other programs and other running editors write too.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "platform/profile_text.h"

namespace sonavel {

class ProfileFile {
  public:
    // Names the file; it need not exist.
    explicit ProfileFile(std::filesystem::path path);

    const std::filesystem::path& Path() const { return path_; }

    // Reads the whole file, once. Without a file, or where it holds what cannot be an
    // initialisation file, the text is empty.
    ProfileText Read() const;

    // Has the text changed as it is now and writes it, while no other editor writes a file of that
    // folder. So settings that belong together are written together, and what others wrote stays.
    // `change` returns false to leave the file as it is, and must not change another file. False
    // also when the folder or the file cannot be written, when the file holds what cannot be an
    // initialisation file, or when another program holds the folder for more than two seconds; the
    // file is then unchanged.
    bool Change(const std::function<bool(ProfileText&)>& change);

    // Changes of one setting alone.
    bool SetString(std::string_view section, std::string_view key, std::string_view value);
    bool SetInteger(std::string_view section, std::string_view key, int value);

  private:
    std::filesystem::path path_;
};

}  // namespace sonavel
