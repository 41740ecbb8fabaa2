// Label tracks and tables: a label a line, times in seconds.
#include <algorithm>
#include <array>

#include "exchange/label_readers.h"

namespace sonavel {
namespace {

constexpr std::string_view kTrackLine = "START<tab>END<tab>NAME, both in seconds and in this order";
constexpr std::string_view kTableLine = "name,start,end, both in seconds and in this order";
constexpr std::string_view kTableHead = "the header name,start,end";

// A point may stand without its end.
bool TakeTimes(LabelTaker& labels, std::string_view from, std::string_view to,
               const std::string& name) {
    const auto start = LabelSeconds(from);
    const auto end = WithoutBlanks(to).empty() ? start : LabelSeconds(to);
    return start && end && labels.Take(*start, *end, name);
}

bool TakeTrackLine(LabelTaker& labels, std::string_view line) {
    const std::size_t first = line.find('\t');
    if (first == std::string_view::npos) return false;
    const std::size_t second = std::min(line.find('\t', first + 1), line.size());
    const std::string_view name = second < line.size() ? line.substr(second + 1) : "";
    return TakeTimes(labels, line.substr(0, first), line.substr(first + 1, second - first - 1),
                     std::string(name));
}

// The rows of a table, whose quoted fields may hold line breaks.
class TableRows {
  public:
    explicit TableRows(std::string_view text) : rest_(text) {}

    // False behind the last row.
    bool Next(std::vector<std::string>& fields) {
        fields.clear();
        if (rest_.empty()) return false;
        row_ = line_;
        do fields.push_back(TakeField());
        while (TakeIf(','));
        if (!TakeIf('\r') || rest_.starts_with('\n')) TakeIf('\n');
        ++line_;
        return true;
    }
    // Of the line at which the row that came last begins.
    std::size_t Number() const { return row_; }

  private:
    bool TakeIf(char c) {
        if (!rest_.starts_with(c)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string TakeField() {
        std::string field;
        if (TakeIf('"')) TakeQuoted(field);
        const std::size_t end = std::min(rest_.find_first_of(",\r\n"), rest_.size());
        field += rest_.substr(0, end);
        rest_.remove_prefix(end);
        return field;
    }

    void TakeQuoted(std::string& field) {
        while (!rest_.empty()) {
            const std::size_t quote = std::min(rest_.find('"'), rest_.size());
            const std::string_view inside = rest_.substr(0, quote);
            line_ += static_cast<std::size_t>(std::ranges::count(inside, '\n'));
            field += inside;
            rest_.remove_prefix(quote);
            TakeIf('"');
            if (!TakeIf('"')) return;
            field += '"';
        }
    }

    std::string_view rest_;
    std::size_t line_ = 1;
    std::size_t row_ = 1;
};

bool IsEmptyRow(const std::vector<std::string>& fields) {
    return std::ranges::all_of(fields, [](const std::string& field) { return field.empty(); });
}

// Where the columns stand, by the names in the header; further ones are passed over.
struct TableColumns {
    std::size_t name, start, end;

    static std::optional<TableColumns> Of(const std::vector<std::string>& header) {
        const auto column = [&](std::string_view wanted) {
            return static_cast<std::size_t>(std::ranges::find(header, wanted) - header.begin());
        };
        const TableColumns found{column("name"), column("start"), column("end")};
        if (std::max(found.name, found.start) >= header.size()) return std::nullopt;
        return found;
    }
};

}  // namespace

LabelsRead ReadLabelTrack(LabelLines& lines, LabelTaker& labels) {
    while (const auto line = lines.Next()) {
        // A line that begins with "\" says which frequencies the label before it selects.
        if (WithoutBlanks(*line).empty() || line->starts_with('\\')) continue;
        if (!TakeTrackLine(labels, *line)) return BadLine(lines.Number(), kTrackLine);
    }
    return labels.Labels();
}

LabelsRead ReadLabelTable(std::string_view text, LabelTaker& labels) {
    TableRows rows(text);
    std::vector<std::string> fields;
    const auto columns = rows.Next(fields) ? TableColumns::Of(fields) : std::nullopt;
    if (!columns) return BadLine(1, kTableHead);
    while (rows.Next(fields)) {
        if (IsEmptyRow(fields)) continue;
        const auto field = [&](std::size_t i) { return i < fields.size() ? fields[i] : ""; };
        if (!TakeTimes(labels, field(columns->start), field(columns->end), field(columns->name)))
            return BadLine(rows.Number(), kTableLine);
    }
    return labels.Labels();
}

}  // namespace sonavel
