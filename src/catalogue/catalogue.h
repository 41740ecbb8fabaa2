// A catalogue of sound files with the texts that a person has given to each.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "catalogue/sample_facts.h"

namespace sonavel {

enum class FilePresence : std::uint8_t { kUnchecked, kThere, kMissing };

struct CatalogueEntry {
    std::string path;  // absolute, in the bytes of the file system, which need not be UTF-8
    SampleFacts facts;
    std::vector<std::string> values{};  // one for a field; those left out at the end are empty
    FilePresence presence = FilePresence::kUnchecked;

    std::string_view FileName() const;
    std::string_view Folder() const;  // without the slash at its end
};

// Entries and fields are meant by their index, which must exist.
class Catalogue {
  public:
    static constexpr std::size_t kMostEntries = 1'000'000;
    static constexpr std::size_t kMostFields = 256;
    static constexpr std::size_t kMostValueBytes = 32767;

    std::size_t Count() const { return entries_.size(); }
    const CatalogueEntry& At(std::size_t entry) const { return entries_[entry]; }
    std::size_t MissingCount() const;

    // False when the path is not absolute or in the catalogue already, or when it is full.
    bool Add(CatalogueEntry entry);
    bool Contains(const std::string& path) const { return paths_.contains(path); }
    // The others move up and keep their order.
    void Remove(std::span<const std::size_t> entries);
    // False when the path is that of another entry, or not absolute.
    bool SetPath(std::size_t entry, const std::string& path);
    // Each is false when that is what it was before.
    bool SetFacts(std::size_t entry, const SampleFacts& facts);
    bool SetPresence(std::size_t entry, FilePresence presence);

    // The names of all fields that have values; the first ShownFields() of them are those that the
    // person has defined. Values of the others are kept for the day they are defined again.
    const std::vector<std::string>& Fields() const { return fields_; }
    std::size_t ShownFields() const { return shownFields_; }
    // The fields of a catalogue without entries, none of them shown.
    void SetFields(std::vector<std::string> names) { fields_ = std::move(names); }
    // Puts these fields first and shows them. No name may stand twice.
    void ShowFields(const std::vector<std::string>& names);

    const std::string& Value(std::size_t entry, std::size_t field) const;
    // Text beyond kMostValueBytes is cut off. False when that is what it was before.
    bool SetValue(std::size_t entry, std::size_t field, std::string_view text);

  private:
    std::vector<std::size_t> NewOrder(const std::vector<std::string>& names);
    void Reorder(const std::vector<std::size_t>& order);

    std::vector<std::string> fields_;
    std::size_t shownFields_ = 0;
    std::vector<CatalogueEntry> entries_;
    std::unordered_set<std::string> paths_;
};

}  // namespace sonavel
