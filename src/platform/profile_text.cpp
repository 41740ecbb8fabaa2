#include "platform/profile_text.h"

#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION  // text is converted here, not by the parser
#include <SimpleIni.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/code_page_949.h"

namespace sonavel {
namespace {

using IniText = CSimpleIniTempl<char, SI_GenericNoCase<char>, SI_ConvertA<char>>;
using NamedValue = std::pair<std::string, std::string>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n\v\f";

// How the file's text lies on the disk, so that a rewritten file keeps it.
struct FileForm {
    bool byteOrderMark = false;
    bool utf8 = false;  // holds UTF-8 text outside ASCII
    bool carriageReturns = false;
    // The parser drops comments that no entry follows.
    std::string leadingComments;  // of a file without entries
    std::string trailingComments;
};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsAscii(std::string_view text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

bool IsComment(std::string_view line) {
    return !line.empty() && (line[0] == ';' || line[0] == '#');
}

// Where the lines behind the last entry begin; 0 when there is no entry.
std::size_t EndOfEntries(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0) {
        const std::size_t lineBreak = text.substr(0, end - 1).rfind('\n');
        const std::size_t lineStart = lineBreak == std::string_view::npos ? 0 : lineBreak + 1;
        const std::string_view line = Trimmed(text.substr(lineStart, end - lineStart));
        if (!line.empty() && !IsComment(line)) break;
        end = lineStart;
    }
    return end;
}

std::string WithSingleBlankLines(std::string_view text) {
    std::string result;
    for (const char c : text)
        if (c != '\n' || !result.ends_with("\n\n")) result += c;
    return result;
}

// The parser drops the blanks at both ends of a value; in a file they are part of it, as columns of
// numbers need them. While a text is parsed, bytes that UTF-8 never has stand for them.
constexpr char kKeptSpace = '\xFF';
constexpr char kKeptTab = '\xFE';

void KeepBlanks(std::string& text, std::size_t first, std::size_t last) {
    for (std::size_t i = first; i < last; ++i) {
        if (text[i] == ' ') text[i] = kKeptSpace;
        if (text[i] == '\t') text[i] = kKeptTab;
    }
}

void KeepBlanksOfLine(std::string& text, std::size_t start, std::size_t end) {
    const std::string_view line = Trimmed(std::string_view(text).substr(start, end - start));
    if (IsComment(line) || line.starts_with('[')) return;
    const std::size_t equals = text.find('=', start);
    if (equals >= end) return;
    const std::size_t first = std::min(text.find_first_not_of(" \t", equals + 1), end);
    KeepBlanks(text, equals + 1, first);
    std::size_t last = text[end - 1] == '\r' ? end - 1 : end;
    const std::size_t lineEnd = last;
    while (last > first && (text[last - 1] == ' ' || text[last - 1] == '\t')) --last;
    KeepBlanks(text, last, lineEnd);
}

void KeepBlanksOfValues(std::string& text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        if (end > start) KeepBlanksOfLine(text, start, end);
        start = end + 1;
    }
}

std::string WithBlanks(std::string text) {
    std::replace(text.begin(), text.end(), kKeptSpace, ' ');
    std::replace(text.begin(), text.end(), kKeptTab, '\t');
    return text;
}

std::optional<std::string> Decode(std::string_view bytes, ProfileText::Purpose purpose,
                                  FileForm& form) {
    form.byteOrderMark = bytes.starts_with(kByteOrderMark);
    if (form.byteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    if (IsValidUtf8(bytes)) {
        form.utf8 = form.byteOrderMark || !IsAscii(bytes);
        return std::string(bytes);
    }
    if (purpose == ProfileText::Purpose::kRead) return DisplayText(bytes);
    return Utf8FromCodePage949(bytes);
}

std::string Encode(const std::string& text, const FileForm& form) {
    if (form.byteOrderMark) return std::string(kByteOrderMark) + text;
    if (form.utf8) return text;
    auto encoded = CodePage949FromUtf8(text);
    // Text that the code page lacks, or whose bytes would be read back as UTF-8, stays UTF-8.
    if (!encoded || (IsValidUtf8(*encoded) && !IsAscii(*encoded))) return text;
    return *std::move(encoded);
}

std::string WithLineEnds(const std::string& text, const FileForm& form) {
    if (!form.carriageReturns) return text;
    std::string result;
    for (const char c : text) {
        if (c == '\n') result += '\r';
        if (c != '\r') result += c;
    }
    return result;
}

bool HasLineBreak(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

bool IsSectionName(std::string_view name) {
    return !name.empty() && !HasLineBreak(name) && IsValidUtf8(name) &&
           name.find(']') == std::string_view::npos;
}

bool IsKeyName(std::string_view name) {
    return !name.empty() && !HasLineBreak(name) && IsValidUtf8(name) && name[0] != '[' &&
           !IsComment(name) && name.find('=') == std::string_view::npos;
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

// The blanks round a value, and one pair of quotes inside them, are no part of it.
std::string ValueFrom(const char* text) {
    const std::string restored = WithBlanks(text);
    const std::string_view value = Trimmed(restored);
    return std::string(IsQuoted(value) ? value.substr(1, value.size() - 2) : value);
}

std::string QuotedWhereNeeded(const std::string& value) {
    return IsQuoted(Trimmed(value)) ? '"' + value + '"' : value;
}

void EmptySection(IniText& ini, const std::string& section) {
    IniText::TNamesDepend keys;
    ini.GetAllKeys(section.c_str(), keys);
    std::vector<std::string> names;
    for (const auto& key : keys) names.emplace_back(key.pItem);
    for (const std::string& name : names) ini.Delete(section.c_str(), name.c_str());
}

// A key that is there already keeps its letters.
std::string SpellingInFile(const IniText& ini, const std::string& section, const std::string& key) {
    const IniText::TKeyVal* values = ini.GetSection(section.c_str());
    if (!values) return key;
    const auto found = values->find(key.c_str());
    return found == values->end() ? key : found->first.pItem;
}

bool Put(IniText& ini, const std::string& section, const NamedValue& entry) {
    const std::string key(Trimmed(entry.first));
    if (!IsKeyName(key) || HasLineBreak(entry.second) || !IsValidUtf8(entry.second)) return false;
    return ini.SetValue(section.c_str(), SpellingInFile(ini, section, key).c_str(),
                        QuotedWhereNeeded(entry.second).c_str(), nullptr, true) >= 0;
}

}  // namespace

struct ProfileText::Parsed {
    Parsed() {
        ini.SetSpaces(false);
        // Of keys that stand twice in a section the first counts.
        ini.SetMultiKey(true);
    }

    IniText ini;
    FileForm form;
};

ProfileText::ProfileText() : parsed_(std::make_unique<Parsed>()) {}
ProfileText::~ProfileText() = default;
ProfileText::ProfileText(ProfileText&&) noexcept = default;
ProfileText& ProfileText::operator=(ProfileText&&) noexcept = default;

std::optional<ProfileText> ProfileText::FromBytes(std::string_view bytes, Purpose purpose) {
    ProfileText result;
    FileForm& form = result.parsed_->form;
    if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
    auto text = Decode(bytes, purpose, form);
    if (!text) return std::nullopt;
    form.carriageReturns = text->find("\r\n") != std::string::npos;
    const std::size_t end = EndOfEntries(*text);
    std::string& comments = end == 0 ? form.leadingComments : form.trailingComments;
    comments = Trimmed(std::string_view(*text).substr(end));
    KeepBlanksOfValues(*text);
    if (result.parsed_->ini.LoadData(text->data(), end) < 0) return std::nullopt;
    return result;
}

std::string ProfileText::Bytes() const {
    const FileForm& form = parsed_->form;
    std::string text;
    parsed_->ini.Save(text, false);
    text = WithBlanks(std::move(text));
    if (!form.leadingComments.empty()) text = form.leadingComments + "\n\n" + text;
    if (!form.trailingComments.empty()) text += "\n" + form.trailingComments + "\n";
    return Encode(WithLineEnds(WithSingleBlankLines(text), form), form);
}

std::string ProfileText::GetString(std::string_view section, std::string_view key) const {
    return ValueFrom(parsed_->ini.GetValue(std::string(Trimmed(section)).c_str(),
                                           std::string(Trimmed(key)).c_str(), ""));
}

int ProfileText::GetInteger(std::string_view section, std::string_view key) const {
    const std::string text = GetString(section, key);
    std::string_view digits = Trimmed(text);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

std::vector<std::string> ProfileText::SectionNames() const {
    IniText::TNamesDepend names;
    parsed_->ini.GetAllSections(names);
    names.sort(IniText::Entry::LoadOrder());
    std::vector<std::string> result;
    // Keys before the first section line lie in a section without a name.
    for (const auto& name : names)
        if (*name.pItem != '\0') result.emplace_back(name.pItem);
    return result;
}

std::vector<NamedValue> ProfileText::Entries(std::string_view section) const {
    const IniText::TKeyVal* values = parsed_->ini.GetSection(std::string(Trimmed(section)).c_str());
    if (!values) return {};
    std::vector<std::pair<int, NamedValue>> inOrder;
    for (const auto& [key, value] : *values)
        inOrder.push_back({key.nOrder, {key.pItem, ValueFrom(value)}});
    std::sort(inOrder.begin(), inOrder.end());
    std::vector<NamedValue> result;
    result.reserve(inOrder.size());
    for (auto& [order, entry] : inOrder) result.push_back(std::move(entry));
    return result;
}

bool ProfileText::SetString(std::string_view section, std::string_view key,
                            std::string_view value) {
    const std::string name(Trimmed(section));
    return IsSectionName(name) && Put(parsed_->ini, name, {std::string(key), std::string(value)});
}

bool ProfileText::SetInteger(std::string_view section, std::string_view key, int value) {
    return SetString(section, key, std::to_string(value));
}

bool ProfileText::SetEntries(std::string_view section, const std::vector<NamedValue>& entries) {
    const std::string name(Trimmed(section));
    if (!IsSectionName(name)) return false;
    IniText& ini = parsed_->ini;
    if (!ini.GetSection(name.c_str()))
        ini.SetValue(name.c_str(), nullptr, nullptr);
    else
        EmptySection(ini, name);
    return std::ranges::all_of(entries,
                               [&](const NamedValue& entry) { return Put(ini, name, entry); });
}

void ProfileText::DeleteSection(std::string_view section) {
    parsed_->ini.Delete(std::string(Trimmed(section)).c_str(), nullptr);
}

}  // namespace sonavel
