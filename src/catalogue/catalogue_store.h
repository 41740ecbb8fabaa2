// Where the catalogues lie: each in a file of its own in the program folder, named after it, beside
// "SampleDB.ini" with the names of the person's fields.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue_text.h"
#include "platform/outcome.h"
#include "platform/program_folder.h"

namespace sonavel {

// Names between commas, without the blanks round them. Empty and repeated ones are left out, and
// what lies beyond Catalogue::kMostFields.
std::vector<std::string> FieldNamesFrom(std::string_view commaSeparated);
std::string JoinFieldNames(const std::vector<std::string>& names);

// What fails leaves the files as they are.
class CatalogueStore {
  public:
    explicit CatalogueStore(ProgramFolder folder) : folder_(std::move(folder)) {}

    // Of all catalogues, as people sort them. A name is any UTF-8 text of one line; blanks at its
    // ends are dropped when it is given.
    std::vector<std::string> Names() const;
    // "Catalogue", or the first of "Catalogue 2", "Catalogue 3" … that is free.
    std::string FreeName() const;
    Outcome Create(std::string_view name);
    Outcome Rename(std::string_view from, std::string_view to);
    Outcome Delete(std::string_view name);

    // With the person's fields shown.
    Result<LoadedCatalogue> Load(std::string_view name);
    // Of a file with damaged lines a copy is kept first, because they are lost here.
    Outcome Save(std::string_view name, const Catalogue& catalogue);

    std::vector<std::string> FieldNames() const;
    Outcome SetFieldNames(const std::vector<std::string>& names);

  private:
    std::filesystem::path FileOf(std::string_view name) const;
    // Failed when no catalogue can be made under the name, which is no other's then.
    Outcome CheckFree(std::string_view name) const;
    Outcome KeepDamaged(std::string_view name);

    ProgramFolder folder_;
    std::set<std::string, std::less<>> damaged_;
};

}  // namespace sonavel
