#include "effects/range_effect.h"

#include <algorithm>
#include <vector>

#include "platform/parallel.h"
#include "sound/share_io.h"

namespace sonavel {
namespace {

// Some milliseconds' work, so that starting threads for them costs little.
constexpr std::size_t kPiecesAtOnce = 32;

std::size_t PiecesOf(const RangeWork& work) {
    return (std::size_t{work.Frames()} + kRangePieceFrames - 1) / kRangePieceFrames;
}

bool Goes(const RangeWork& work, std::size_t piece, PercentPart part) {
    const std::size_t span = static_cast<std::size_t>(part.to - part.from);
    work.progress.SetPosition(part.from + static_cast<int>(piece * span / PiecesOf(work)));
    return !work.progress.Poll();
}

void ChangePiece(const RangeWork& work, RangeSink& sink, std::size_t piece,
                 const std::function<void(const RangePiece&)>& change) {
    const auto first = static_cast<std::uint32_t>(piece * kRangePieceFrames);
    const std::uint32_t frames = std::min(work.Frames() - first, kRangePieceFrames);
    // On the stack: nothing fails once the sound has begun to change.
    float room[std::size_t{2} * kRangePieceFrames];
    const std::span<float> shares(room, std::size_t{frames} * work.Channels());
    work.Read(first, shares);
    change({first, shares});
    sink.Put(first, shares);
}

}  // namespace

void RangeWork::Read(std::uint32_t first, std::span<float> shares) const {
    const std::uint32_t left = first < Frames() ? Frames() - first : 0;
    const std::size_t inside = std::min(shares.size(), std::size_t{left} * Channels());
    ReadShares(sound, range.start + first, shares.first(inside));
    std::ranges::fill(shares.subspan(inside), 0.0f);
}

Outcome ChangePieces(const RangeWork& work, RangeSink& sink, Cancel cancel,
                     const std::function<void(const RangePiece&)>& change, PercentPart part) {
    const std::size_t pieces = PiecesOf(work);
    const std::size_t atOnce = ThreadsToUse() > 1 ? kPiecesAtOnce : 1;
    for (std::size_t first = 0; first < pieces; first += atOnce) {
        if (!Goes(work, first, part) && cancel == Cancel::kHeeded) return Cancelled();
        const WorkEnd end = ComputeParts(std::min(pieces - first, atOnce), [&](std::size_t index) {
            ChangePiece(work, sink, first + index, change);
        });
        if (end != WorkEnd::kFinished) return Failed(failure::kMemory);
    }
    work.progress.SetPosition(part.to);
    return Done();
}

Outcome ChangeInOrder(const RangeWork& work, RangeSink& sink,
                      const std::function<void(const RangePiece&)>& change, PercentPart part) {
    for (std::size_t piece = 0; piece < PiecesOf(work); ++piece) {
        if (!Goes(work, piece, part)) return Cancelled();
        ChangePiece(work, sink, piece, change);
    }
    work.progress.SetPosition(part.to);
    return Done();
}

}  // namespace sonavel
