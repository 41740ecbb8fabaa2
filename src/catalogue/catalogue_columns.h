// The columns in which a catalogue is shown: what is read from the files, then the person's fields.
#pragma once

#include <string>

#include "catalogue/catalogue.h"

namespace sonavel {

enum class CatalogueColumn { kName, kLength, kRate, kBits, kChannels, kSize, kFormat, kFolder };
inline constexpr std::size_t kFixedColumns = 8;

std::size_t ColumnCount(const Catalogue& catalogue);
std::string ColumnTitle(const Catalogue& catalogue, std::size_t column);
// True for what is sorted as a number and stands at the right of its column.
bool IsNumberColumn(std::size_t column);
double CellNumber(const CatalogueEntry& entry, std::size_t column);
// As people read it; a value that is not known is empty.
std::string CellText(const Catalogue& catalogue, std::size_t entry, std::size_t column);

}  // namespace sonavel
