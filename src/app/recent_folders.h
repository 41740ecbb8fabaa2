// The folders that sounds were saved to last, newest first, kept in Options.ini.
#pragma once

#include <string>
#include <vector>

#include "platform/program_folder.h"

namespace sonavel {

class RecentFolders {
  public:
    static constexpr std::size_t kMostFolders = 10;

    explicit RecentFolders(const ProgramFolder& folder) : options_(folder.Options()) {}

    std::vector<std::string> Paths() const;
    // Puts the folder first. False when the file cannot be written; the list is then as it was.
    bool Add(const std::string& absolutePath);

  private:
    ProfileFile options_;
};

}  // namespace sonavel
