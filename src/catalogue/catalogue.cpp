#include "catalogue/catalogue.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace sonavel {
namespace {

bool IsFilePath(std::string_view path) {
    return path.size() > 1 && path.front() == '/' && path.back() != '/' &&
           path.find('\0') == std::string_view::npos;
}

// The part of a text that is kept; no character of UTF-8 is cut through.
std::string_view KeptOf(std::string_view text) {
    if (text.size() <= Catalogue::kMostValueBytes) return text;
    constexpr std::size_t kMostBytesOfCharacter = 4;
    const auto isInside = [text](std::size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    std::size_t end = Catalogue::kMostValueBytes;
    const std::size_t least = end - kMostBytesOfCharacter;
    while (end > least && isInside(end)) --end;
    return text.substr(0, isInside(end) ? Catalogue::kMostValueBytes : end);
}

void DropEmptyAtEnd(std::vector<std::string>& values) {
    while (!values.empty() && values.back().empty()) values.pop_back();
}

}  // namespace

std::string_view CatalogueEntry::FileName() const {
    return std::string_view(path).substr(path.rfind('/') + 1);
}

std::string_view CatalogueEntry::Folder() const {
    const std::size_t slash = path.rfind('/');
    return std::string_view(path).substr(0, slash == 0 ? 1 : slash);
}

std::size_t Catalogue::MissingCount() const {
    return static_cast<std::size_t>(
        std::ranges::count(entries_, FilePresence::kMissing, &CatalogueEntry::presence));
}

bool Catalogue::Add(CatalogueEntry entry) {
    if (entries_.size() >= kMostEntries || !IsFilePath(entry.path)) return false;
    if (!paths_.insert(entry.path).second) return false;
    if (entry.values.size() > fields_.size()) entry.values.resize(fields_.size());
    for (std::string& value : entry.values) value.resize(KeptOf(value).size());
    DropEmptyAtEnd(entry.values);
    entries_.push_back(std::move(entry));
    return true;
}

void Catalogue::Remove(std::span<const std::size_t> entries) {
    std::vector<bool> leaves(entries_.size());
    for (const std::size_t entry : entries) leaves[entry] = true;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (leaves[i])
            paths_.erase(entries_[i].path);
        else if (kept++ != i)
            entries_[kept - 1] = std::move(entries_[i]);
    }
    entries_.resize(kept);
}

bool Catalogue::SetPath(std::size_t entry, const std::string& path) {
    if (entries_[entry].path == path) return true;
    if (!IsFilePath(path) || !paths_.insert(path).second) return false;
    paths_.erase(entries_[entry].path);
    entries_[entry].path = path;
    return true;
}

bool Catalogue::SetFacts(std::size_t entry, const SampleFacts& facts) {
    return std::exchange(entries_[entry].facts, facts) != facts;
}

bool Catalogue::SetPresence(std::size_t entry, FilePresence presence) {
    return std::exchange(entries_[entry].presence, presence) != presence;
}

const std::string& Catalogue::Value(std::size_t entry, std::size_t field) const {
    static const std::string kNone;
    const std::vector<std::string>& values = entries_[entry].values;
    return field < values.size() ? values[field] : kNone;
}

bool Catalogue::SetValue(std::size_t entry, std::size_t field, std::string_view text) {
    const std::string_view kept = KeptOf(text);
    if (Value(entry, field) == kept) return false;
    std::vector<std::string>& values = entries_[entry].values;
    if (values.size() <= field) values.resize(field + 1);
    values[field] = kept;
    DropEmptyAtEnd(values);
    return true;
}

// Where each field comes from, the shown ones first; fields that are new are appended before.
std::vector<std::size_t> Catalogue::NewOrder(const std::vector<std::string>& names) {
    std::vector<std::size_t> order;
    for (const std::string& name : names) {
        const auto found = std::ranges::find(fields_, name);
        order.push_back(static_cast<std::size_t>(found - fields_.begin()));
        if (found == fields_.end()) fields_.push_back(name);
    }
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (std::ranges::find(order, i) == order.end()) order.push_back(i);
    return order;
}

void Catalogue::Reorder(const std::vector<std::size_t>& order) {
    std::vector<std::string> fields;
    fields.reserve(order.size());
    for (const std::size_t from : order) fields.push_back(std::move(fields_[from]));
    fields_ = std::move(fields);
    for (CatalogueEntry& entry : entries_) {
        if (entry.values.empty()) continue;
        entry.values.resize(order.size());
        std::vector<std::string> values;
        values.reserve(order.size());
        for (const std::size_t from : order) values.push_back(std::move(entry.values[from]));
        DropEmptyAtEnd(values);
        entry.values = std::move(values);
    }
}

void Catalogue::ShowFields(const std::vector<std::string>& names) {
    const std::vector<std::size_t> order = NewOrder(names);
    shownFields_ = names.size();
    if (!std::ranges::is_sorted(order)) Reorder(order);
}

}  // namespace sonavel
