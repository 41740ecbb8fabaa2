#include "sound/write_beside.h"

#include <new>

#include "platform/beside.h"
#include "platform/commit_beside.h"
#include "platform/failure_texts.h"
#include "sound/transfer_progress.h"

namespace sonavel {

Outcome WriteBeside(ReplacingFile& file, const TransferHost& host,
                    const std::function<bool()>& write) {
    // How far it is, the other thread does not say.
    TransferProgress progress(host, "Write sound file", 0);
    const auto poll = [&] { return progress.Poll(); };
    Outcome written = Failed(failure::kWriteData);
    const bool goesOn = DoBeside(poll, [&](const std::atomic<bool>&) {
        try {
            if (write()) written = Done();
        } catch (const std::bad_alloc&) {
            written = Failed(failure::kMemory);
        }
    });
    if (!written) return written;
    return goesOn ? CommitBeside(file, poll, failure::kWriteData) : Cancelled();
}

}  // namespace sonavel
