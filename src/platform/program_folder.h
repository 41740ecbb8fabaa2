// The folder that holds every initialisation and preset file.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/profile_file.h"

namespace sonavel {

class ProgramFolder {
  public:
    explicit ProgramFolder(std::filesystem::path path) : path_(std::move(path)) {}

    // That of a program whose executable lies in `beside`: this folder when it can be written and
    // the program is not installed, else the person's own configuration folder ($XDG_CONFIG_HOME or
    // ~/.config, "sonavel"), which is made, and gets those initialisation files as shipped that it
    // lacks.
    static ProgramFolder OfProgramIn(const std::filesystem::path& beside);
    static ProgramFolder OfThisProgram() { return OfProgramIn(ExecutableFolder()); }
    // The folder in which the running program's executable lies.
    static std::filesystem::path ExecutableFolder();
    // Where the files lie as they are shipped: "share/sonavel" beside the folder of an installed
    // program ("bin"), which has none of them in its own, else `beside`.
    static std::filesystem::path ShippedFolderOf(const std::filesystem::path& beside);
    static std::filesystem::path ShippedFolder() { return ShippedFolderOf(ExecutableFolder()); }

    const std::filesystem::path& Path() const { return path_; }
    ProfileFile Profile(std::string_view fileName) const { return ProfileFile(path_ / fileName); }
    ProfileFile Options() const { return Profile("Options.ini"); }
    ProfileFile Display() const { return Profile("Display.ini"); }

  private:
    std::filesystem::path path_;
};

}  // namespace sonavel
