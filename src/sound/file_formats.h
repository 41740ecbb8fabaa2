// The table of the sound file formats, and the texts that are made from it.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "sound/file_format.h"

namespace sonavel {

// In the order in which dialogs offer them.
std::span<const FileFormat> FileFormats();

// By an extension with its ".", in letters of either case; null when there is none.
const FileFormat* FileFormatOfExtension(std::string_view extension);

// The text from the first "." of the whole path on, empty without one. A "." in a folder's name
// therefore decides: files in such a folder have no known format, which is intended.
std::string ExtensionFromFirstDot(const std::filesystem::path& path);

// The extensions of all formats, with `before` in front of each and `between` them.
std::string AllExtensions(std::string_view before, std::string_view between);

// The filter of the dialog "Save As": pairs "description|patterns|" and "|" behind the last.
std::string SaveFilter();

}  // namespace sonavel
