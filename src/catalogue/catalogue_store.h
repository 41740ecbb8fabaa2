// Where the catalogues lie: each in a file of its own in the program folder, named after it, beside
// "SampleDB.ini" with the names of the person's fields.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue_text.h"
#include "platform/program_folder.h"

namespace sonavel {

// Names between commas, without the blanks round them. Empty and repeated ones are left out, and
// what lies beyond Catalogue::kMostFields.
std::vector<std::string> FieldNamesFrom(std::string_view commaSeparated);
std::string JoinFieldNames(const std::vector<std::string>& names);

// What fails leaves the files as they are and says why in LastError().
class CatalogueStore {
  public:
    explicit CatalogueStore(ProgramFolder folder) : folder_(std::move(folder)) {}

    // Of all catalogues, as people sort them. A name is any UTF-8 text of one line; blanks at its
    // ends are dropped when it is given.
    std::vector<std::string> Names() const;
    // "Catalogue", or the first of "Catalogue 2", "Catalogue 3" … that is free.
    std::string FreeName() const;
    bool Create(std::string_view name);
    bool Rename(std::string_view from, std::string_view to);
    bool Delete(std::string_view name);

    // With the person's fields shown.
    std::optional<LoadedCatalogue> Load(std::string_view name);
    // Of a file with damaged lines a copy is kept first, because they are lost here.
    bool Save(std::string_view name, const Catalogue& catalogue);

    std::vector<std::string> FieldNames() const;
    bool SetFieldNames(const std::vector<std::string>& names);

    const std::string& LastError() const { return lastError_; }

  private:
    bool Fail(std::string_view text);
    std::filesystem::path FileOf(std::string_view name) const;
    bool IsFree(std::string_view name);
    bool KeepDamaged(std::string_view name);

    ProgramFolder folder_;
    std::set<std::string, std::less<>> damaged_;
    std::string lastError_;
};

}  // namespace sonavel
