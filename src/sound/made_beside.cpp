#include "sound/made_beside.h"

#include "platform/beside.h"
#include "platform/failure_texts.h"

namespace sonavel {

Result<Sound> MadeBeside(ProgressFactory& factory, std::uint64_t bytes, const SoundMaker& make) {
    if (bytes < kProgressFromBytes) return make(Unwatched);
    const auto window = factory.CreateProgress("Progress Convert");
    Result<Sound> made = Failed(failure::kMemory);
    const auto work = [&](const PieceWatch& watch) { made = make(watch); };
    if (!DoWatchedBeside(*window, work)) return Cancelled();
    return made;
}

}  // namespace sonavel
