#include "catalogue/catalogue_store.h"

#include <algorithm>
#include <charconv>

#include "catalogue/hex_byte.h"
#include "catalogue/text_order.h"
#include "platform/code_page_949.h"
#include "platform/small_file.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFieldSection = "FIELD SECTION";
constexpr const char* kFieldKey = "FIELDS";
constexpr std::string_view kExtension = ".catalogue";
constexpr std::string_view kDamagedExtension = ".damaged";
constexpr std::size_t kMostFileBytes = std::size_t{256} << 20;
// Leaves room in a file name of 255 bytes for what is added while the file is written.
constexpr std::size_t kMostNameBytes = 220;

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool HasControls(std::string_view text) {
    return std::ranges::any_of(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

// A slash cannot stand in a file name, and a point at its start would hide the file.
std::string FileNameOf(std::string_view name) {
    std::string fileName;
    for (const char c : name) {
        if (c != '/' && c != '%' && (c != '.' || !fileName.empty())) {
            fileName += c;
            continue;
        }
        fileName += '%';
        AppendHex(fileName, static_cast<unsigned char>(c));
    }
    return fileName.append(kExtension);
}

// Nothing for a file that no catalogue's name leads to.
std::optional<std::string> NameOf(std::string_view fileName) {
    if (!fileName.ends_with(kExtension)) return std::nullopt;
    const std::string_view stem = fileName.substr(0, fileName.size() - kExtension.size());
    std::string name;
    for (std::size_t i = 0; i < stem.size(); ++i) {
        unsigned char byte = 0;
        if (stem[i] == '%' && i + 2 < stem.size() &&
            std::from_chars(&stem[i + 1], &stem[i + 1] + 2, byte, 16).ec == std::errc()) {
            name += static_cast<char>(byte);
            i += 2;
        } else {
            name += stem[i];
        }
    }
    const bool good = !name.empty() && IsValidUtf8(name) && !HasControls(name);
    return good && FileNameOf(name) == fileName ? std::optional(name) : std::nullopt;
}

// Of the first of ".damaged", ".damaged-2" … that is free.
fs::path DamagedCopy(const fs::path& file) {
    std::error_code error;
    fs::path copy = file;
    copy += kDamagedExtension;
    for (int i = 2; fs::exists(copy, error); ++i) {
        copy = file;
        copy += std::string(kDamagedExtension) + "-" + std::to_string(i);
    }
    return copy;
}

}  // namespace

std::vector<std::string> FieldNamesFrom(std::string_view commaSeparated) {
    std::vector<std::string> names;
    while (!commaSeparated.empty() && names.size() < Catalogue::kMostFields) {
        const std::size_t end = std::min(commaSeparated.find(','), commaSeparated.size());
        const std::string_view name = Trimmed(commaSeparated.substr(0, end));
        if (!name.empty() && std::ranges::find(names, name) == names.end())
            names.emplace_back(name);
        commaSeparated.remove_prefix(std::min(end + 1, commaSeparated.size()));
    }
    return names;
}

std::string JoinFieldNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        if (!joined.empty()) joined += ',';
        joined += name;
    }
    return joined;
}

fs::path CatalogueStore::FileOf(std::string_view name) const {
    return folder_.Path() / FileNameOf(name);
}

std::vector<std::string> CatalogueStore::Names() const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator file(folder_.Path(), error), end; !error && file != end;
         file.increment(error)) {
        std::error_code ignored;
        if (!file->is_regular_file(ignored)) continue;
        if (auto name = NameOf(file->path().filename().string())) names.push_back(*std::move(name));
    }
    const QCollator order = TextOrder();
    std::ranges::sort(names, [&order](const std::string& a, const std::string& b) {
        const int compared = order.compare(QString::fromStdString(a), QString::fromStdString(b));
        return compared != 0 ? compared < 0 : a < b;
    });
    return names;
}

std::string CatalogueStore::FreeName() const {
    const std::vector<std::string> names = Names();
    std::string name = "Catalogue";
    for (int i = 2; std::ranges::find(names, name) != names.end(); ++i)
        name = "Catalogue " + std::to_string(i);
    return name;
}

Outcome CatalogueStore::CheckFree(std::string_view name) const {
    if (name.empty()) return Failed("A catalogue needs a name.");
    if (!IsValidUtf8(name) || HasControls(name)) return Failed("A name is one line of text.");
    if (FileNameOf(name).size() > kMostNameBytes) return Failed("The name is too long.");
    std::error_code error;
    const fs::file_status status = fs::symlink_status(FileOf(name), error);
    return DoneIf(!fs::exists(status), "There is a catalogue of this name already.");
}

Outcome CatalogueStore::Create(std::string_view name) {
    name = Trimmed(name);
    if (Outcome free = CheckFree(name); !free) return free;
    return Save(name, Catalogue());
}

Outcome CatalogueStore::Rename(std::string_view from, std::string_view to) {
    to = Trimmed(to);
    if (from == to) return Done();
    if (Outcome free = CheckFree(to); !free) return free;
    std::error_code error;
    fs::rename(FileOf(from), FileOf(to), error);
    if (error) return Failed("The catalogue cannot be renamed: " + error.message());
    if (damaged_.erase(std::string(from)) > 0) damaged_.emplace(to);
    return Done();
}

Outcome CatalogueStore::Delete(std::string_view name) {
    std::error_code error;
    fs::remove(FileOf(name), error);
    if (error) return Failed("The catalogue cannot be deleted: " + error.message());
    damaged_.erase(std::string(name));
    return Done();
}

Result<LoadedCatalogue> CatalogueStore::Load(std::string_view name) {
    const std::optional<std::string> text = ReadSmallFile(FileOf(name), kMostFileBytes);
    if (!text) return Failed("The catalogue cannot be read.");
    std::optional<LoadedCatalogue> loaded = CatalogueFromText(*text);
    if (!loaded) return Failed("The file is not a catalogue.");
    if (loaded->damagedLines > 0) damaged_.emplace(name);
    loaded->catalogue.ShowFields(FieldNames());
    return *std::move(loaded);
}

Outcome CatalogueStore::KeepDamaged(std::string_view name) {
    const auto found = damaged_.find(name);
    if (found == damaged_.end()) return Done();
    std::error_code error;
    fs::copy_file(FileOf(name), DamagedCopy(FileOf(name)), error);
    if (error) return Failed("The damaged catalogue cannot be kept: " + error.message());
    damaged_.erase(found);
    return Done();
}

Outcome CatalogueStore::Save(std::string_view name, const Catalogue& catalogue) {
    const std::string text = TextOfCatalogue(catalogue);
    if (text.size() > kMostFileBytes) return Failed("The catalogue is too large.");
    if (Outcome kept = KeepDamaged(name); !kept) return kept;
    return DoneIf(ReplaceFile(FileOf(name), text), "The catalogue cannot be written.");
}

std::vector<std::string> CatalogueStore::FieldNames() const {
    return FieldNamesFrom(
        folder_.Profile("SampleDB.ini").Read().GetString(kFieldSection, kFieldKey));
}

Outcome CatalogueStore::SetFieldNames(const std::vector<std::string>& names) {
    return DoneIf(
        folder_.Profile("SampleDB.ini").SetString(kFieldSection, kFieldKey, JoinFieldNames(names)),
        "SampleDB.ini cannot be written.");
}

}  // namespace sonavel
