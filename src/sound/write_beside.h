// A save that is one piece of work, done beside the thread that shows its progress window.
#pragma once

#include <functional>

#include "platform/outcome.h"
#include "platform/replacing_file.h"
#include "sound/transfer_host.h"

namespace sonavel {

// Has `write` put all into the open file, on another thread, and commits it; `write` gives false
// where the disk fails. A cancel leaves the target as it was.
Outcome WriteBeside(ReplacingFile& file, const TransferHost& host,
                    const std::function<bool()>& write);

}  // namespace sonavel
