// Initialisation files: sections of key/value text in file order. Text is UTF-8 here; on disk a
// file may hold UTF-8 or code page 949, and keeps the encoding it had.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sonavel {

class ProfileFile {
  public:
    // Names the file; it need not exist, and is read anew by each call, because other programs and
    // other windows write it too.
    explicit ProfileFile(std::filesystem::path path);

    const std::filesystem::path& Path() const { return path_; }

    // Empty for a missing file, section or key. Blanks round a value, and one pair of quotes, are
    // no part of it.
    std::string GetString(std::string_view section, std::string_view key) const;
    // The decimal number at the start of the value, 0 when there is none.
    int GetInteger(std::string_view section, std::string_view key) const;
    std::vector<std::string> SectionNames() const;
    std::vector<std::pair<std::string, std::string>> Entries(std::string_view section) const;

    // Each rewrites the file beside itself and renames it into place. False when the folder or the
    // file cannot be written, or holds what cannot be an initialisation file; it is then unchanged.
    bool SetString(std::string_view section, std::string_view key, std::string_view value);
    bool SetInteger(std::string_view section, std::string_view key, int value);
    bool SetEntries(std::string_view section,
                    const std::vector<std::pair<std::string, std::string>>& entries);
    bool DeleteSection(std::string_view section);

  private:
    std::filesystem::path path_;
};

}  // namespace sonavel
