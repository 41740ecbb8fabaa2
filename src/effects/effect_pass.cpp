#include "effects/effect_pass.h"

#include <algorithm>
#include <memory>

#include "effects/quantizer.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

// Some milliseconds' work, so that starting threads for them costs little.
constexpr std::size_t kPiecesAtOnce = 64;

// Each channel apart, so that the two may be computed beside each other.
bool ComputesChannelsApart(const EffectTraits& traits, UnitOrder order) {
    return order == UnitOrder::kChannelByChannel || traits.spread == Spread::kChannels;
}

}  // namespace

EffectPass::EffectPass(const EffectTraits& traits, const Sound& sound, FrameRange range,
                       EffectProcessor& processor, ProgressWindow& progress)
    : traits_(traits),
      sound_(sound),
      range_(range),
      processor_(processor),
      progress_(progress),
      pieceFrames_(processor.PieceFrames()),
      input_{traits, sound, range, processor.HistoryFrames()},
      pieces_((std::size_t{range.Frames()} + pieceFrames_ - 1) / pieceFrames_),
      slots_(sound.GetChannels()) {}

WorkEnd EffectPass::RunInPlace(Sound& sound) {
    const bool quantizes =
        traits_.storing == Storing::kQuantized && AreWholeNumbers(sound_.GetBits());
    const auto store = [&](const Unit& unit, const auto& samples) {
        if (quantizes)
            for (const std::span<float> channel : samples) QuantizeInPlace(channel);
        const std::uint32_t first = range_.start + unit.first;
        if (unit.slots == 2) return WriteBothTruncated(sound, first, samples[0], samples[1]);
        WriteTruncated(sound, unit.firstSlot, first, samples[unit.firstSlot]);
    };
    const std::size_t atOnce = Threads() > 1 ? kPiecesAtOnce : 1;
    for (std::size_t first = 0; first < pieces_; first += atOnce) {
        const std::size_t count = std::min(pieces_ - first, atOnce);
        for (std::size_t i = first; i < first + count; ++i)
            ShowBefore(UnitAt(UnitOrder::kPieceByPiece, i));
        const WorkEnd end = ComputeParts(count, [&](std::size_t part) {
            Compute(UnitAt(UnitOrder::kPieceByPiece, first + part), store);
        });
        if (end != WorkEnd::kFinished) return end;
    }
    ShowEnd();
    return WorkEnd::kFinished;
}

WorkEnd EffectPass::RunIntoPairs(PairBuffer& pairs) {
    const bool bothSides = traits_.monoPreview == MonoPreview::kBothSides;
    // A mono sound's right side is announced as one of its own.
    if (bothSides && traits_.previewOrder == UnitOrder::kChannelByChannel) slots_ = 2;
    const WorkEnd end = Run(traits_.previewOrder, [&](const Unit& unit, const auto& samples) {
        for (unsigned slot = unit.firstSlot; slot < unit.firstSlot + unit.slots; ++slot) {
            pairs.Put(slot, unit.first, samples[slot]);
            if (traits_.peak == PeakRule::kNone) continue;
            peaks_[slot].after = std::max(peaks_[slot].after, PeakOf(samples[slot]));
        }
    });
    if (bothSides && slots_ == 1) pairs.CopyLeftToRight();
    return end;
}

template <class Store>
WorkEnd EffectPass::Run(UnitOrder order, const Store& store) {
    const UnitsOfWork work{
        .count = UnitCount(order),
        .lanes = Lanes(),
        .compute = [&](std::size_t unit) { Compute(UnitAt(order, unit), store); },
        .before = [&](std::size_t unit) { return ShowBefore(UnitAt(order, unit)); }};
    const WorkEnd end = ComputeUnits(work, Threads()).end;
    if (end == WorkEnd::kFinished) ShowEnd();
    return end;
}

// Less than a second's sound is done before another thread has started.
unsigned EffectPass::Threads() const {
    return range_.Frames() < sound_.GetSamplesPerSecond() ? 1 : ThreadsToUse();
}

void EffectPass::ShowEnd() {
    if (traits_.percentages != Percentages::kExact) progress_.SetPosition(100);
}

std::size_t EffectPass::UnitCount(UnitOrder order) const {
    return ComputesChannelsApart(traits_, order) ? pieces_ * slots_ : pieces_;
}

std::size_t EffectPass::Lanes() const {
    if (traits_.spread == Spread::kPieces) return UnitsOfWork::kEachAlone;
    return traits_.spread == Spread::kChannels ? slots_ : 1;
}

EffectPass::Unit EffectPass::UnitAt(UnitOrder order, std::size_t index) const {
    std::size_t piece = index;
    Unit unit{0, 0, 0, slots_};
    if (ComputesChannelsApart(traits_, order)) {
        const bool channelByChannel = order == UnitOrder::kChannelByChannel;
        piece = channelByChannel ? index % pieces_ : index / slots_;
        unit.firstSlot = static_cast<unsigned>(channelByChannel ? index / pieces_ : index % slots_);
        unit.slots = 1;
    }
    unit.first = static_cast<std::uint32_t>(piece * pieceFrames_);
    unit.frames = std::min(range_.Frames() - unit.first, pieceFrames_);
    return unit;
}

template <class Store>
void EffectPass::Compute(const Unit& unit, const Store& store) {
    const std::size_t each = std::size_t{input_.historyFrames} + unit.frames;
    // Pieces without history take no memory: nothing fails once the sound has begun to change.
    std::array<float, std::size_t{2} * kPieceFrames> usual;
    std::unique_ptr<float[]> longer;
    if (each * unit.slots > usual.size())
        longer = std::make_unique_for_overwrite<float[]>(each * unit.slots);
    float* samples = longer ? longer.get() : usual.data();
    EffectPiece piece{unit.first, unit.frames, {}};
    for (unsigned i = 0; i < unit.slots; ++i) {
        const unsigned slot = unit.firstSlot + i;
        piece.channels[slot] = {samples + i * each, each};
    }
    input_.Load(piece, unit.firstSlot, unit.slots);
    if (traits_.peak == PeakRule::kAsBefore) NotePeaksBefore(unit, piece);
    if (!cancelled_) processor_.Process(piece);
    for (std::span<float>& channel : piece.channels)
        if (!channel.empty()) channel = channel.last(unit.frames);
    store(unit, piece.channels);
}

void EffectPass::NotePeaksBefore(const Unit& unit, const EffectPiece& piece) {
    for (unsigned slot = unit.firstSlot; slot < unit.firstSlot + unit.slots; ++slot) {
        Peaks& peaks = peaks_[std::min(slot, sound_.GetChannels() - 1)];
        const auto heard = piece.channels[slot].subspan(input_.SilentFrames(piece));
        peaks.before = std::max(peaks.before, PeakOf(heard));
    }
}

Onward EffectPass::ShowBefore(const Unit& unit) {
    progress_.SetPosition(PercentOf(unit.first - unit.first % processor_.FramesPerStep()));
    if (cancelled_ || !progress_.Poll()) return Onward::kGoOn;
    if (traits_.cancelling == Cancelling::kHandsNothingOver) return Onward::kStop;
    if (traits_.cancelling == Cancelling::kLeavesTheRestAsItIs) cancelled_ = true;
    return Onward::kGoOn;
}

int EffectPass::PercentOf(std::uint32_t done) const {
    if (traits_.percentages == Percentages::kSinglePrecisionToTheEnd)
        return static_cast<int>(100.0f / static_cast<float>(range_.Frames()) *
                                static_cast<float>(done));
    return static_cast<int>(std::uint64_t{done} * 100 / range_.Frames());
}

}  // namespace sonavel
