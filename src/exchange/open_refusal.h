// Why Open refuses a file that Import may take.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "sound/codec_values.h"

namespace sonavel {

// Looks at the name and the header alone. Files that are not there, and those that Open reads, are
// not refused.
bool OpenRefuses(const std::filesystem::path& path);

// The reason, a clause for the person: "24-bit sound", "the first dot in its path decides the
// format". `description` is what Import finds in the file.
std::string OpenRefusalReason(const std::filesystem::path& path,
                              const SoundFileDescription& description);

}  // namespace sonavel
