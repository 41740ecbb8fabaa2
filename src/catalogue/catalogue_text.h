// How a catalogue lies in its file: UTF-8 lines of parts between tabs. The first line is a title
// with the version, then comes "fields" with the names of the fields, then for each entry "file",
// its path, rate, frames, channels, bits, size in bytes and format, and its values; version 1 has
// no formats. A backslash begins what would break a line apart: \\, \t, \n, \r, and \xHH for any
// other byte that is no text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/catalogue.h"

namespace sonavel {

struct LoadedCatalogue {
    Catalogue catalogue;
    std::size_t damagedLines = 0;  // left out, because they say nothing or repeat a path
};

std::string TextOfCatalogue(const Catalogue& catalogue);
// Takes whatever can be read. Nothing when the text is not a catalogue of a known version.
std::optional<LoadedCatalogue> CatalogueFromText(std::string_view text);

}  // namespace sonavel
