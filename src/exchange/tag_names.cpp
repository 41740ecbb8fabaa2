#include "exchange/tag_names.h"

#include <algorithm>
#include <span>

namespace sonavel {
namespace {

struct TagName {
    std::string_view name;
    std::string_view key;
};

constexpr TagName kInfoNames[] = {
    {"INAM", "title"}, {"IART", "artist"},  {"IPRD", "album"},
    {"ICRD", "date"},  {"ICMT", "comment"}, {"ICOP", "copyright"},
    {"IGNR", "genre"}, {"ITRK", "track"},   {"IPRT", "track"},
};
constexpr TagName kCommentNames[] = {
    {"tracknumber", "track"},
    {"description", "comment"},
    {"year", "date"},
};
constexpr TagName kId3Names[] = {
    {"TIT2", "title"}, {"TPE1", "artist"},   {"TALB", "album"},     {"TDRC", "date"},
    {"TYER", "date"},  {"COMM", "comment"},  {"TCOP", "copyright"}, {"TCON", "genre"},
    {"TRCK", "track"}, {"TT2", "title"},     {"TP1", "artist"},     {"TAL", "album"},
    {"TYE", "date"},   {"COM", "comment"},   {"TCR", "copyright"},  {"TCO", "genre"},
    {"TRK", "track"},  {"TSSE", "software"},
};

const TagName* FindName(std::span<const TagName> names, std::string_view name) {
    const auto found = std::ranges::find(names, name, &TagName::name);
    return found != names.end() ? &*found : nullptr;
}

std::string Letters(FourCc id) {
    std::string letters;
    for (unsigned shift = 0; shift < 32; shift += 8)
        letters += static_cast<char>(id >> shift & 0xFF);
    return letters;
}

std::optional<FourCc> IdOf(std::string_view letters) {
    const auto isPlain = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); };
    if (letters.size() != 4 || !std::ranges::all_of(letters, isPlain)) return std::nullopt;
    FourCc id = 0;
    for (std::size_t i = 4; i-- > 0;) id = id << 8 | static_cast<unsigned char>(letters[i]);
    return id;
}

}  // namespace

std::string KeyOfInfo(FourCc id) {
    const std::string letters = Letters(id);
    const TagName* name = FindName(kInfoNames, letters);
    return name != nullptr ? std::string(name->key) : letters;
}

std::optional<FourCc> InfoOfKey(std::string_view key) {
    const auto* found = std::ranges::find(kInfoNames, key, &TagName::key);
    return IdOf(found != std::end(kInfoNames) ? found->name : key);
}

std::string KeyOfComment(std::string_view name) {
    std::string small(name);
    for (char& c : small)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    const TagName* found = FindName(kCommentNames, small);
    return found != nullptr ? std::string(found->key) : small;
}

std::optional<std::string> CommentOfKey(std::string_view key) {
    if (key == "track") return "TRACKNUMBER";
    const auto isPlain = [](char c) { return c >= 0x20 && c <= 0x7D && c != '='; };
    if (key.empty() || !std::ranges::all_of(key, isPlain)) return std::nullopt;
    std::string name(key);
    for (char& c : name)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return name;
}

std::optional<std::string> KeyOfId3(std::string_view frame) {
    const TagName* found = FindName(kId3Names, frame);
    return found != nullptr ? std::optional(std::string(found->key)) : std::nullopt;
}

std::optional<std::string_view> Id3OfKey(std::string_view key) {
    const auto* found = std::ranges::find(kId3Names, key, &TagName::key);
    if (found != std::end(kId3Names)) return found->name;
    const bool isFrame = IdOf(key) && key.starts_with('T') && key != "TXXX";
    return isFrame ? std::optional(key) : std::nullopt;
}

}  // namespace sonavel
