#include "sound/foreign_extensions.h"

#include <algorithm>
#include <string>

#include "sound/file_formats.h"

namespace sonavel {
namespace {

constexpr std::string_view kForeign[] = {
    ".wave", ".bwf",  ".rf64", ".w64", ".caf",  ".aifc", ".flac", ".ogg",
    ".oga",  ".opus", ".mp3",  ".mp2", ".m4a",  ".m4b",  ".aac",  ".wma",
    ".wv",   ".g722", ".mp4",  ".mkv", ".webm", ".mov",  ".avi",  ".ogv",
};

}  // namespace

std::span<const std::string_view> ForeignExtensions() {
    return kForeign;
}

bool IsSoundExtension(std::string_view extension) {
    if (FileFormatOfExtension(extension)) return true;
    std::string small(extension);
    for (char& c : small)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return std::ranges::find(kForeign, small) != std::end(kForeign);
}

}  // namespace sonavel
