// The end of a save, which waits for the disk, while somebody polls.
#pragma once

#include <functional>
#include <string_view>

#include "platform/outcome.h"
#include "platform/replacing_file.h"

namespace sonavel {

// Flushes and commits the file beside the calling thread, which polls meanwhile. `poll` gives true
// when the person cancels: before the target is replaced, the save is cancelled then and leaves it
// as it was. Fails with that reason where the disk fails.
Outcome CommitBeside(ReplacingFile& file, const std::function<bool()>& poll,
                     std::string_view reason);

}  // namespace sonavel
