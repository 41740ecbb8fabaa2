// The folder that several files are to be written into.
#pragma once

#include <filesystem>

#include "platform/outcome.h"

namespace sonavel {

// Makes the folder, and those that it lies in, where they are missing. Fails where that cannot be
// done, or where something else has that name.
Outcome MakeTargetFolder(const std::filesystem::path& folder);

}  // namespace sonavel
