// The rows of a catalogue that are shown: those that pass a filter, in the order of one column.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue.h"

namespace sonavel {

enum class SortOrder { kAscending, kDescending };
enum class RowsShown { kAll, kMissing };

// The catalogue must outlive it, and each change of the catalogue be told to it.
class CatalogueRows {
  public:
    explicit CatalogueRows(const Catalogue& catalogue);

    // The entries shown, by their index, from the top.
    const std::vector<std::uint32_t>& Entries() const { return rows_; }

    // A row passes when each word of the text stands in one of its columns, in small or capital
    // letters.
    void SetFilter(std::string_view text);
    void SetShown(RowsShown shown);
    // Rows that are equal in the column stand by their names, then by their paths.
    void SortBy(std::size_t column, SortOrder order);

    // Entries have come or gone, or the columns are others.
    void Rebuild();
    // One entry has changed. It keeps its row until the next filter or sorting, so that nothing
    // jumps away from under the person who edits it.
    void Refresh(std::size_t entry);

  private:
    std::string SearchText(std::size_t entry) const;
    bool Passes(std::uint32_t entry) const;
    void Sort();
    void Filter();

    const Catalogue& catalogue_;
    std::vector<std::string> searchTexts_;  // of each entry, folded
    std::vector<std::uint32_t> sorted_;     // all entries
    std::vector<std::uint32_t> rows_;
    std::vector<std::string> words_;  // folded
    RowsShown shown_ = RowsShown::kAll;
    std::size_t column_ = 0;
    SortOrder order_ = SortOrder::kAscending;
};

}  // namespace sonavel
