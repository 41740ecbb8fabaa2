#include "document/file_kind.h"

#include <algorithm>

namespace sonavel {
namespace {

char UpperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string ExtensionFromFirstDot(const std::filesystem::path& path) {
    const std::string text = path.string();
    const std::size_t dot = text.find('.');
    return dot == std::string::npos ? std::string() : text.substr(dot);
}

FileKind FileKindOfExtension(std::string_view extension) {
    std::string upper(extension);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperCase);
    if (upper == ".WAV") return FileKind::kWav;
    if (upper == ".AU" || upper == ".SND") return FileKind::kNextSun;
    if (upper == ".AIFF" || upper == ".AIF") return FileKind::kAiff;
    return FileKind::kUnknown;
}

}  // namespace sonavel
