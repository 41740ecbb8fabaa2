// The folder that holds every initialisation and preset file.
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/profile_file.h"

namespace sonavel {

class ProgramFolder {
  public:
    explicit ProgramFolder(std::filesystem::path path) : path_(std::move(path)) {}

    // The folder of the running program when it can be written, else the person's own
    // configuration folder ($XDG_CONFIG_HOME or ~/.config, "sonavel"), which is made and seeded
    // with the program folder's initialisation files at the first start.
    static ProgramFolder OfThisProgram();
    // The folder in which the running program's executable lies.
    static std::filesystem::path ExecutableFolder();

    const std::filesystem::path& Path() const { return path_; }
    ProfileFile Profile(std::string_view fileName) const { return ProfileFile(path_ / fileName); }
    ProfileFile Options() const { return Profile("Options.ini"); }
    ProfileFile Display() const { return Profile("Display.ini"); }

  private:
    std::filesystem::path path_;
};

}  // namespace sonavel
