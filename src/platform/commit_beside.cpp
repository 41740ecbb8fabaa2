#include "platform/commit_beside.h"

#include "platform/beside.h"

namespace sonavel {

Outcome CommitBeside(ReplacingFile& file, const std::function<bool()>& poll,
                     std::string_view reason) {
    bool flushed = false;
    const bool goesOn = DoBeside(poll, [&](const std::atomic<bool>&) { flushed = file.Flush(); });
    if (!flushed) return Failed(reason);
    if (!goesOn) return Cancelled();
    bool committed = false;
    DoBeside(poll, [&](const std::atomic<bool>&) { committed = file.Commit(); });
    return DoneIf(committed, reason);
}

}  // namespace sonavel
