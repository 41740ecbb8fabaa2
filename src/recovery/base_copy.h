// A copy of the file that a document was opened from, taken into the folder of its unsaved work, so
// that another program may overwrite the file.
#pragma once

#include <filesystem>
#include <memory>

#include "recovery/journal_thread.h"

namespace sonavel::recovery {

// Where the copy of that file lies, or is going to lie, with the extension of the file.
std::filesystem::path BaseCopyPath(const std::filesystem::path& folder,
                                   const std::filesystem::path& file);

// A job that copies the file if it is still the one of that origin, or shares its blocks where the
// file system can. Without the room or the rights there is no copy, which is no fault: the file
// itself is then what is read again.
JournalThread::LongJob CopyingBase(std::shared_ptr<JournalFile> journal, const FileOrigin& origin);

}  // namespace sonavel::recovery
