// The text of an initialisation file: sections of key/value text in file order, with comments. Text
// is UTF-8 here; as bytes it may be UTF-8 or code page 949, and keeps the encoding it had.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sonavel {

class ProfileText {
  public:
    // What is only read may hold anything; what is written again must come back as it was.
    enum class Purpose { kRead, kRewrite };

    // Nothing for bytes that cannot be an initialisation file.
    static std::optional<ProfileText> FromBytes(std::string_view bytes, Purpose purpose);
    std::string Bytes() const;

    // Empty for a missing section or key. Blanks round a value, and one pair of quotes, are no part
    // of it.
    std::string GetString(std::string_view section, std::string_view key) const;
    // The decimal number at the start of the value, 0 when there is none.
    int GetInteger(std::string_view section, std::string_view key) const;
    std::vector<std::string> SectionNames() const;
    std::vector<std::pair<std::string, std::string>> Entries(std::string_view section) const;

    // Each is false for a name or a value that an initialisation file cannot hold, among them what
    // is not UTF-8.
    bool SetString(std::string_view section, std::string_view key, std::string_view value);
    bool SetInteger(std::string_view section, std::string_view key, int value);
    // Makes these the section's only entries; after a failure it holds the first of them.
    bool SetEntries(std::string_view section,
                    const std::vector<std::pair<std::string, std::string>>& entries);
    void DeleteSection(std::string_view section);

  private:
    // Each with the comment lines above it, which end in line feeds.
    struct Entry {
        std::string comment;
        std::string key;
        std::string value;  // as it stands behind the "=", with its blanks
    };
    struct Section {
        std::string comment;
        std::string name;  // empty for that of the keys before the first section line
        std::vector<Entry> entries;
    };
    class Parser;

    const Section* Find(std::string_view name) const;
    // Adds the section where it lacks; null for a name that no section can have.
    std::vector<Entry>* EntriesToChange(std::string_view section);
    static bool Put(std::vector<Entry>& entries, std::string_view key, std::string_view value);

    // How the text lies on the disk, so that a rewritten file keeps it.
    bool byteOrderMark_ = false;
    bool utf8_ = false;  // holds UTF-8 text outside ASCII
    bool carriageReturns_ = false;
    std::string headComment_;
    std::vector<Section> sections_;
    std::string tailComment_;
};

}  // namespace sonavel
