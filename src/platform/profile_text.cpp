#include "platform/profile_text.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
}

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c += 'a' - 'A';
    return result;
}

// The first of the sections or entries with that name, in either case.
template <class Items, class Name>
auto FirstNamed(Items& items, Name name, std::string_view wanted) {
    return std::ranges::find(items, LowerCase(Trimmed(wanted)),
                             [&](const auto& item) { return LowerCase(item.*name); });
}

bool IsComment(std::string_view line) {
    return !line.empty() && (line[0] == ';' || line[0] == '#');
}

bool FitsOnALine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos &&
           IsValidUtf8(text);
}

bool IsSectionName(std::string_view name) {
    return !name.empty() && FitsOnALine(name) && name.find(']') == std::string_view::npos;
}

bool IsKeyName(std::string_view name) {
    return !name.empty() && FitsOnALine(name) && name[0] != '[' && !IsComment(name) &&
           name.find('=') == std::string_view::npos;
}

bool IsQuoted(std::string_view value) {
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

// The blanks round a value, and one pair of quotes inside them, are no part of it.
std::string ValueFrom(std::string_view text) {
    const std::string_view value = Trimmed(text);
    return std::string(IsQuoted(value) ? value.substr(1, value.size() - 2) : value);
}

std::string QuotedWhereNeeded(std::string_view value) {
    const std::string text(value);
    return IsQuoted(Trimmed(value)) ? '"' + text + '"' : text;
}

// Lines end in CR, LF, or both.
std::string WithLineFeeds(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r')
            result += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            result += '\n';
    return result;
}

std::string WithCarriageReturns(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\n') result += '\r';
        result += c;
    }
    return result;
}

std::string InCodePage949(std::string text) {
    auto encoded = CodePage949FromUtf8(text);
    // Text that the code page lacks, or whose bytes would be read back as UTF-8, stays UTF-8.
    if (!encoded || (IsValidUtf8(*encoded) && !IsAscii(*encoded))) return text;
    return *std::move(encoded);
}

}  // namespace

class ProfileText::Parser {
  public:
    explicit Parser(ProfileText& result) : result_(result) {}

    void Parse(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = text.find('\n');
            ReadLine(text.substr(0, end));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        // Without entries there is no tail: all comments are the head.
        if (!result_.sections_.empty())
            result_.tailComment_ = comment_;
        else if (!comment_.empty())
            result_.headComment_ += (result_.headComment_.empty() ? "" : "\n") + comment_;
    }

  private:
    // A line that is none of these is passed over.
    void ReadLine(std::string_view line) {
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string_view::npos) return EndCommentPart();
        line.remove_prefix(first);
        if (IsComment(line)) return AddComment(line);
        if (line[0] == '[') return OpenSection(line);
        const std::size_t equals = line.find('=');
        if (equals != 0 && equals != std::string_view::npos)
            AddEntry(Trimmed(line.substr(0, equals)), line.substr(equals + 1));
    }

    // The first part of the file's first comment is about the file as a whole.
    void EndCommentPart() {
        if (comment_.empty()) return;
        if (result_.headComment_.empty() && result_.sections_.empty())
            result_.headComment_ = TakeComment();
        else
            blankLine_ = true;
    }

    void AddComment(std::string_view line) {
        if (blankLine_) comment_ += '\n';
        blankLine_ = false;
        comment_.append(line).append("\n");
    }

    std::string TakeComment() {
        blankLine_ = false;
        return std::exchange(comment_, {});
    }

    void OpenSection(std::string_view line) {
        const std::size_t end = line.find(']');
        if (end != std::string_view::npos) Open(Trimmed(line.substr(1, end - 1)));
    }

    // Two sections of one name are one, in the place of the first.
    void Open(std::string_view name) {
        if (result_.sections_.empty()) EndCommentPart();
        const auto [found, isNew] = places_.try_emplace(LowerCase(name), places_.size());
        if (isNew) result_.sections_.push_back({TakeComment(), std::string(name), {}});
        open_ = found->second;
    }

    void AddEntry(std::string_view key, std::string_view value) {
        if (result_.sections_.empty()) Open({});
        result_.sections_[open_].entries.push_back(
            {TakeComment(), std::string(key), std::string(value)});
    }

    ProfileText& result_;
    std::unordered_map<std::string, std::size_t> places_;
    std::size_t open_ = 0;
    std::string comment_;
    bool blankLine_ = false;
};

std::optional<ProfileText> ProfileText::FromBytes(std::string_view bytes, Purpose purpose) {
    if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
    ProfileText result;
    result.byteOrderMark_ = bytes.starts_with(kByteOrderMark);
    if (result.byteOrderMark_) bytes.remove_prefix(kByteOrderMark.size());
    result.utf8_ = IsValidUtf8(bytes) && !IsAscii(bytes);
    std::optional<std::string> text;
    if (IsValidUtf8(bytes))
        text = bytes;
    else
        text = purpose == Purpose::kRead ? DisplayText(bytes) : Utf8FromCodePage949(bytes);
    if (!text) return std::nullopt;
    result.carriageReturns_ = text->find("\r\n") != std::string::npos;
    Parser(result).Parse(WithLineFeeds(*text));
    return result;
}

std::string ProfileText::Bytes() const {
    std::string text = headComment_;
    const auto separate = [&](std::string_view comment) {
        if (!text.empty() && !text.ends_with("\n\n")) text += '\n';
        text += comment;
    };
    for (const Section& section : sections_) {
        separate(section.comment);
        if (!section.name.empty()) text += '[' + section.name + "]\n";
        for (const Entry& entry : section.entries) {
            if (!entry.comment.empty()) separate(entry.comment);
            text += entry.key + '=' + entry.value + '\n';
        }
    }
    if (!tailComment_.empty()) separate(tailComment_);
    if (carriageReturns_) text = WithCarriageReturns(text);
    if (byteOrderMark_) return std::string(kByteOrderMark) + text;
    return utf8_ ? text : InCodePage949(std::move(text));
}

const ProfileText::Section* ProfileText::Find(std::string_view name) const {
    const auto found = FirstNamed(sections_, &Section::name, name);
    return found == sections_.end() ? nullptr : &*found;
}

std::string ProfileText::GetString(std::string_view section, std::string_view key) const {
    const Section* const found = Find(section);
    if (!found) return {};
    const auto entry = FirstNamed(found->entries, &Entry::key, key);
    return entry == found->entries.end() ? std::string() : ValueFrom(entry->value);
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
    std::vector<std::string> names;
    for (const Section& section : sections_)
        if (!section.name.empty()) names.push_back(section.name);
    return names;
}

std::vector<std::pair<std::string, std::string>> ProfileText::Entries(
    std::string_view section) const {
    std::vector<std::pair<std::string, std::string>> entries;
    if (const Section* const found = Find(section))
        for (const Entry& entry : found->entries)
            entries.emplace_back(entry.key, ValueFrom(entry.value));
    return entries;
}

// Of keys that stand twice in a section the first counts, and alone stays.
bool ProfileText::Put(std::vector<Entry>& entries, std::string_view key, std::string_view value) {
    key = Trimmed(key);
    if (!IsKeyName(key) || !FitsOnALine(value)) return false;
    auto entry = FirstNamed(entries, &Entry::key, key);
    if (entry == entries.end())
        entry = entries.insert(entry, {.comment = {}, .key = std::string(key), .value = {}});
    entry->value = QuotedWhereNeeded(value);
    entries.erase(
        std::remove_if(entry + 1, entries.end(),
                       [&](const Entry& other) { return LowerCase(other.key) == LowerCase(key); }),
        entries.end());
    return true;
}

std::vector<ProfileText::Entry>* ProfileText::EntriesToChange(std::string_view section) {
    const std::string_view name = Trimmed(section);
    if (!IsSectionName(name)) return nullptr;
    auto found = FirstNamed(sections_, &Section::name, name);
    if (found == sections_.end())
        found = sections_.insert(found, {.comment = {}, .name = std::string(name), .entries = {}});
    return &found->entries;
}

bool ProfileText::SetString(std::string_view section, std::string_view key,
                            std::string_view value) {
    auto* const entries = EntriesToChange(section);
    return entries && Put(*entries, key, value);
}

bool ProfileText::SetInteger(std::string_view section, std::string_view key, int value) {
    return SetString(section, key, std::to_string(value));
}

bool ProfileText::SetEntries(std::string_view section,
                             const std::vector<std::pair<std::string, std::string>>& entries) {
    auto* const present = EntriesToChange(section);
    if (!present) return false;
    present->clear();
    return std::ranges::all_of(
        entries, [&](const auto& entry) { return Put(*present, entry.first, entry.second); });
}

void ProfileText::DeleteSection(std::string_view section) {
    const auto found = FirstNamed(sections_, &Section::name, section);
    if (found != sections_.end()) sections_.erase(found);
}

}  // namespace sonavel
