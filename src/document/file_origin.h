// Where a document's sound was read from, told so that the same sound can be read again.
#pragma once

#include <filesystem>
#include <optional>

#include "exchange/sound_import.h"
#include "platform/file_identity.h"

namespace sonavel {

struct FileOrigin {
    std::filesystem::path path;          // absolute
    FileIdentity identity;               // when it was read
    std::optional<ImportChoice> import;  // nothing where it was opened
};

// What other programs did to the file of a document; kNone: it has none.
enum class FileState { kNone, kAsItWas, kChanged, kGone };

// What a file that was read or written can give back of the sound as it was then.
enum class FileHolds { kAll, kLess };

}  // namespace sonavel
