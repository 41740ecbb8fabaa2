#include "catalogue/catalogue_columns.h"

#include <cstdio>

#include "platform/code_page_949.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

constexpr const char* kTitles[kFixedColumns] = {"Name",     "Length", "Rate",   "Bits",
                                                "Channels", "Size",   "Format", "Folder"};

std::string SizeText(std::uint64_t bytes) {
    constexpr const char* kUnits[] = {"KB", "MB", "GB", "TB"};
    if (bytes < 1024) return std::to_string(bytes) + " B";
    double size = static_cast<double>(bytes) / 1024;
    std::size_t unit = 0;
    for (; size >= 1000 && unit < 3; ++unit) size /= 1024;
    char text[32];
    std::snprintf(text, sizeof text, "%.1f %s", size, kUnits[unit]);
    return text;
}

std::string LengthText(double seconds) {
    constexpr double kMostSeconds = 1e9;
    return seconds <= kMostSeconds ? TimeText(seconds) : std::string();
}

std::string FactText(const SampleFacts& facts, CatalogueColumn column) {
    switch (column) {
        case CatalogueColumn::kLength:
            return facts.samplesPerSecond ? LengthText(facts.Seconds()) : std::string();
        case CatalogueColumn::kRate:
            return facts.samplesPerSecond ? RateText(facts.samplesPerSecond) : std::string();
        case CatalogueColumn::kBits:
            return facts.bits ? BitsText(facts.bits) : std::string();
        case CatalogueColumn::kChannels:
            return facts.channels ? ChannelsText(facts.channels) : std::string();
        case CatalogueColumn::kSize:
            return facts.fileBytes ? SizeText(facts.fileBytes) : std::string();
        case CatalogueColumn::kFormat:
            return facts.format;
        default:
            return {};
    }
}

}  // namespace

std::size_t ColumnCount(const Catalogue& catalogue) {
    return kFixedColumns + catalogue.ShownFields();
}

std::string ColumnTitle(const Catalogue& catalogue, std::size_t column) {
    return column < kFixedColumns ? kTitles[column] : catalogue.Fields()[column - kFixedColumns];
}

bool IsNumberColumn(std::size_t column) {
    return column >= static_cast<std::size_t>(CatalogueColumn::kLength) &&
           column <= static_cast<std::size_t>(CatalogueColumn::kSize);
}

double CellNumber(const CatalogueEntry& entry, std::size_t column) {
    switch (static_cast<CatalogueColumn>(column)) {
        case CatalogueColumn::kLength:
            return entry.facts.Seconds();
        case CatalogueColumn::kRate:
            return entry.facts.samplesPerSecond;
        case CatalogueColumn::kBits:
            return entry.facts.bits;
        case CatalogueColumn::kChannels:
            return entry.facts.channels;
        case CatalogueColumn::kSize:
            return static_cast<double>(entry.facts.fileBytes);
        default:
            return 0;
    }
}

std::string CellText(const Catalogue& catalogue, std::size_t entry, std::size_t column) {
    if (column >= kFixedColumns) return catalogue.Value(entry, column - kFixedColumns);
    const CatalogueEntry& shown = catalogue.At(entry);
    switch (static_cast<CatalogueColumn>(column)) {
        case CatalogueColumn::kName:
            return DisplayText(shown.FileName());
        case CatalogueColumn::kFolder:
            return DisplayText(shown.Folder());
        default:
            return FactText(shown.facts, static_cast<CatalogueColumn>(column));
    }
}

}  // namespace sonavel
