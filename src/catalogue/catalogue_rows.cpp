#include "catalogue/catalogue_rows.h"

#include <algorithm>
#include <numeric>

#include "catalogue/catalogue_columns.h"
#include "catalogue/text_order.h"

namespace sonavel {
namespace {

// Between the columns of a search text; no word of a filter holds it.
constexpr char kColumnEnd = '\n';

std::vector<std::string> WordsOf(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    std::vector<std::string> words;
    for (std::size_t start = text.find_first_not_of(kBlanks); start != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of(kBlanks, end);
    }
    return words;
}

// What the sorting compares, made once for each entry.
class SortKeys {
  public:
    SortKeys(const Catalogue& catalogue, std::size_t column)
        : catalogue_(catalogue), isNumber_(IsNumberColumn(column)) {
        const auto name = static_cast<std::size_t>(CatalogueColumn::kName);
        const QCollator order = TextOrder();
        const auto keyOf = [&](std::size_t entry, std::size_t shown) {
            return order.sortKey(QString::fromStdString(CellText(catalogue, entry, shown)));
        };
        for (std::size_t i = 0; i < catalogue.Count(); ++i) {
            names_.push_back(keyOf(i, name));
            if (isNumber_)
                numbers_.push_back(CellNumber(catalogue.At(i), column));
            else if (column != name)
                texts_.push_back(keyOf(i, column));
        }
    }

    int Compare(std::size_t a, std::size_t b) const {
        if (isNumber_) return numbers_[a] < numbers_[b] ? -1 : numbers_[a] > numbers_[b];
        const std::vector<QCollatorSortKey>& texts = texts_.empty() ? names_ : texts_;
        return texts[a].compare(texts[b]);
    }
    bool ComesFirst(std::size_t a, std::size_t b) const {
        if (const int order = names_[a].compare(names_[b])) return order < 0;
        return catalogue_.At(a).path < catalogue_.At(b).path;
    }

  private:
    const Catalogue& catalogue_;
    bool isNumber_;
    std::vector<double> numbers_;
    std::vector<QCollatorSortKey> texts_;
    std::vector<QCollatorSortKey> names_;
};

}  // namespace

CatalogueRows::CatalogueRows(const Catalogue& catalogue) : catalogue_(catalogue) {
    Rebuild();
}

std::string CatalogueRows::SearchText(std::size_t entry) const {
    std::string text;
    for (std::size_t column = 0; column < ColumnCount(catalogue_); ++column) {
        text += CellText(catalogue_, entry, column);
        text += kColumnEnd;
    }
    return FoldCase(text);
}

bool CatalogueRows::Passes(std::uint32_t entry) const {
    if (shown_ == RowsShown::kMissing && catalogue_.At(entry).presence != FilePresence::kMissing)
        return false;
    return std::ranges::all_of(words_, [&text = searchTexts_[entry]](const std::string& word) {
        return text.find(word) != std::string::npos;
    });
}

void CatalogueRows::Filter() {
    rows_.clear();
    for (const std::uint32_t entry : sorted_)
        if (Passes(entry)) rows_.push_back(entry);
}

void CatalogueRows::Sort() {
    const SortKeys keys(catalogue_, column_);
    const int direction = order_ == SortOrder::kAscending ? 1 : -1;
    sorted_.resize(searchTexts_.size());
    std::iota(sorted_.begin(), sorted_.end(), 0u);
    std::ranges::sort(sorted_, [&](std::uint32_t a, std::uint32_t b) {
        const int order = keys.Compare(a, b) * direction;
        return order != 0 ? order < 0 : keys.ComesFirst(a, b);
    });
}

void CatalogueRows::SetFilter(std::string_view text) {
    words_ = WordsOf(FoldCase(text));
    Filter();
}

void CatalogueRows::SetShown(RowsShown shown) {
    shown_ = shown;
    Filter();
}

void CatalogueRows::SortBy(std::size_t column, SortOrder order) {
    column_ = column;
    order_ = order;
    Sort();
    Filter();
}

void CatalogueRows::Rebuild() {
    if (column_ >= ColumnCount(catalogue_)) column_ = 0;
    searchTexts_.clear();
    for (std::size_t i = 0; i < catalogue_.Count(); ++i) searchTexts_.push_back(SearchText(i));
    Sort();
    Filter();
}

void CatalogueRows::Refresh(std::size_t entry) {
    // What came after the last rebuilding has no row yet.
    if (entry < searchTexts_.size()) searchTexts_[entry] = SearchText(entry);
}

}  // namespace sonavel
