// Which reader and writer a path stands for.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sonavel {

enum class FileKind { kUnknown, kWav, kNextSun, kAiff };

// The text from the first "." of the whole path on, empty without one. A "." in a folder's name
// therefore decides: files in such a folder have no known kind, which is intended.
std::string ExtensionFromFirstDot(const std::filesystem::path& path);
// ".WAV", ".AU", ".SND", ".AIFF" and ".AIF" in any case are known.
FileKind FileKindOfExtension(std::string_view extension);

}  // namespace sonavel
