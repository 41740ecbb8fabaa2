#include "catalogue/catalogue_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "catalogue/hex_byte.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr std::string_view kTitle = "Sonavel sample catalogue 2";
constexpr std::string_view kTitleWithoutFormats = "Sonavel sample catalogue 1";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kFieldsLine = "fields";
constexpr std::string_view kFileLine = "file";
constexpr std::size_t kPartsBeforeValues = 6;

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

void AppendEscaped(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = Utf8CharacterLength(text);
        if (text[0] == '\\')
            line += "\\\\";
        else if (text[0] == '\t')
            line += "\\t";
        else if (text[0] == '\n')
            line += "\\n";
        else if (text[0] == '\r')
            line += "\\r";
        else if (length == 0 || IsControl(text[0]))
            AppendHex(line.append("\\x"), static_cast<unsigned char>(text[0]));
        else
            line.append(text, 0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

void AppendParts(std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts) {
        text += '\t';
        AppendEscaped(text, part);
    }
}

void AppendNumber(std::string& text, std::uint64_t number) {
    text += '\t';
    text += std::to_string(number);
}

void AppendEntry(std::string& text, const CatalogueEntry& entry) {
    text += kFileLine;
    text += '\t';
    AppendEscaped(text, entry.path);
    AppendNumber(text, entry.facts.samplesPerSecond);
    AppendNumber(text, entry.facts.frames);
    AppendNumber(text, entry.facts.channels);
    AppendNumber(text, entry.facts.bits);
    AppendNumber(text, entry.facts.fileBytes);
    AppendParts(text, {entry.facts.format});
    AppendParts(text, entry.values);
    text += '\n';
}

// The text up to the separator, which is taken off the rest together with it.
std::string_view TakeUpTo(char separator, std::string_view& rest) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

template <class Number>
bool ReadNumber(std::string_view digits, int base, Number& number) {
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
    return error == std::errc() && stop == end;
}

// What the text behind a backslash stands for, which is taken off it; nothing for anything unknown.
std::optional<char> TakeEscape(std::string_view& rest) {
    constexpr std::string_view kLetters = "\\tnr";
    constexpr std::string_view kMeanings = "\\\t\n\r";
    if (rest.empty()) return std::nullopt;
    if (const std::size_t i = kLetters.find(rest[0]); i != std::string_view::npos) {
        rest.remove_prefix(1);
        return kMeanings[i];
    }
    unsigned char byte = 0;
    if (rest[0] != 'x' || rest.size() < 3 || !ReadNumber(rest.substr(1, 2), 16, byte))
        return std::nullopt;
    rest.remove_prefix(3);
    return static_cast<char>(byte);
}

std::optional<std::string> Unescaped(std::string_view part) {
    std::string text;
    while (!part.empty()) {
        const std::size_t plain = std::min(part.find('\\'), part.size());
        text.append(part, 0, plain);
        part.remove_prefix(plain);
        if (part.empty()) break;
        part.remove_prefix(1);
        const std::optional<char> meant = TakeEscape(part);
        if (!meant) return std::nullopt;
        text += *meant;
    }
    return text;
}

// The unescaped parts of a line from the first one given on; nothing when one of them is broken or
// there are more than `most`.
std::optional<std::vector<std::string>> PartsOf(std::string_view rest, std::size_t most) {
    std::vector<std::string> parts;
    while (!rest.empty()) {
        std::optional<std::string> part = Unescaped(TakeUpTo('\t', rest));
        if (!part || parts.size() == most) return std::nullopt;
        parts.push_back(*std::move(part));
    }
    return parts;
}

enum class Formats { kNone, kStored };

class CatalogueReader {
  public:
    explicit CatalogueReader(Formats formats) : formats_(formats) {}

    LoadedCatalogue Read(std::string_view lines);

  private:
    bool TakeLine(std::string_view line);
    bool TakeFields(std::string_view rest);
    bool TakeFile(std::string_view rest);

    Formats formats_;
    LoadedCatalogue loaded_;
    bool hasFields_ = false;
};

bool CatalogueReader::TakeFields(std::string_view rest) {
    // Values that were read already belong to the fields before.
    if (hasFields_ || loaded_.catalogue.Count() > 0) return false;
    auto names = PartsOf(rest, Catalogue::kMostFields);
    if (!names) return false;
    hasFields_ = true;
    loaded_.catalogue.SetFields(*std::move(names));
    return true;
}

bool CatalogueReader::TakeFile(std::string_view rest) {
    std::array<std::string_view, kPartsBeforeValues> parts;
    for (std::string_view& part : parts) part = TakeUpTo('\t', rest);
    std::optional<std::string> path = Unescaped(parts[0]);
    std::optional<std::string> format =
        Unescaped(formats_ == Formats::kStored ? TakeUpTo('\t', rest) : std::string_view());
    auto values = PartsOf(rest, loaded_.catalogue.Fields().size());
    SampleFacts facts;
    const bool good =
        path && format && values && ReadNumber(parts[1], 10, facts.samplesPerSecond) &&
        ReadNumber(parts[2], 10, facts.frames) && ReadNumber(parts[3], 10, facts.channels) &&
        ReadNumber(parts[4], 10, facts.bits) && ReadNumber(parts[5], 10, facts.fileBytes);
    if (good) facts.format = *std::move(format);
    return good && loaded_.catalogue.Add({*std::move(path), facts, *std::move(values)});
}

bool CatalogueReader::TakeLine(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) return true;
    const std::string_view kind = TakeUpTo('\t', line);
    if (kind == kFieldsLine) return TakeFields(line);
    return kind == kFileLine && TakeFile(line);
}

LoadedCatalogue CatalogueReader::Read(std::string_view lines) {
    // A last line without its end may have lost some of it.
    const bool cutOff = !lines.empty() && lines.back() != '\n';
    if (cutOff) lines = lines.substr(0, lines.rfind('\n') + 1);
    loaded_.damagedLines = cutOff ? 1 : 0;
    while (!lines.empty())
        if (!TakeLine(TakeUpTo('\n', lines))) ++loaded_.damagedLines;
    return std::move(loaded_);
}

}  // namespace

std::string TextOfCatalogue(const Catalogue& catalogue) {
    std::string text(kTitle);
    text += '\n';
    text += kFieldsLine;
    AppendParts(text, catalogue.Fields());
    text += '\n';
    for (std::size_t i = 0; i < catalogue.Count(); ++i) AppendEntry(text, catalogue.At(i));
    return text;
}

std::optional<LoadedCatalogue> CatalogueFromText(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::string_view title = TakeUpTo('\n', text);
    if (title.ends_with('\r')) title.remove_suffix(1);
    if (title != kTitle && title != kTitleWithoutFormats) return std::nullopt;
    const Formats formats = title == kTitle ? Formats::kStored : Formats::kNone;
    return CatalogueReader(formats).Read(text);
}

}  // namespace sonavel
