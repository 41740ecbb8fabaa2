#include "sound/sample_pieces.h"

#include <algorithm>
#include <new>

#include "platform/failure_texts.h"
#include "platform/parallel.h"

namespace sonavel {

Outcome ComputePieces(std::size_t samples, const PieceWatch& watch,
                      const SamplePiece& compute) try {
    const std::size_t pieces = samples / kPieceSamples + (samples % kPieceSamples != 0);
    const UnitsOfWork work{
        .count = pieces,
        .compute =
            [&](std::size_t piece) {
                const std::size_t first = piece * kPieceSamples;
                compute(first, std::min(kPieceSamples, samples - first));
            },
        .before =
            [&](std::size_t piece) {
                return watch(static_cast<double>(piece) / static_cast<double>(pieces));
            }};
    const WorkDone done = ComputeUnits(work, ThreadsToUse());
    if (done.end == WorkEnd::kStopped) return Cancelled();
    return DoneIf(done.end == WorkEnd::kFinished, failure::kMemory);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
