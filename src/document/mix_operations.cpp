// Mixing the clip into the sound.
#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "document/edit_operations.h"
#include "document/edit_step.h"
#include "sound/sample_types.h"

namespace sonavel::edit {
namespace {

constexpr double kGreatestGain = 1000;  // keeps every result within 32 bits

double Sane(double gain) {
    return gain == gain ? std::clamp(gain, -kGreatestGain, kGreatestGain) : 0;
}

MixGains Sane(const MixGains& gains) {
    return {Sane(gains.clip), Sane(gains.sound)};
}

class ConstantGain {
  public:
    explicit ConstantGain(const MixGains& gains) : gains_(gains) {}
    template <class Index>
    MixGains At(Index) const {
        return gains_;
    }

  private:
    MixGains gains_;
};

// By the index of a sample, all channels of a frame having the same gains. Both ends are met
// exactly.
template <std::int32_t kChannels>
class LinearGain {
  public:
    LinearGain(const CrossfadeGains& gains, std::uint64_t frames)
        : gains_(gains), last_(static_cast<double>(frames > 2 ? frames - 1 : 1)) {}

    template <class Index>
    MixGains At(Index sample) const {
        const Index frame = sample / kChannels;
        const double t = static_cast<double>(frame) / last_;
        return {gains_.start.clip * (1 - t) + gains_.end.clip * t,
                gains_.start.sound * (1 - t) + gains_.end.sound * t};
    }

  private:
    CrossfadeGains gains_;
    double last_;
};

// Whole numbers wrap around at the ends of their range. Bytes count from 0, so that even silence,
// 128, is scaled: results of 8-bit mixes depend on it.
template <class Type>
typename Type::Stored Mixed(double value) {
    if constexpr (kHoldsWholeNumbers<Type>)
        return static_cast<typename Type::Stored>(static_cast<std::int32_t>(value));
    else
        return Type::Finite(static_cast<typename Type::Stored>(value));
}

// `sound` is the range to process; its first `old` samples were there before the range grew.
template <class Type, class Gain>
void MixSamples(std::span<typename Type::Stored> sound, std::span<const typename Type::Stored> clip,
                std::size_t old, const Gain& gain) {
    // Narrow where all indices fit, for speed.
    using Index = std::conditional_t<kHoldsWholeNumbers<Type>, std::int32_t, std::int64_t>;
    const auto length = static_cast<Index>(sound.size());
    const auto clipEnd = static_cast<Index>(std::min(sound.size(), clip.size()));
    const auto bothEnd = static_cast<Index>(std::min({sound.size(), clip.size(), old}));
    auto* const to = sound.data();
    const auto* const from = clip.data();
    for (Index i = 0; i < bothEnd; ++i) {
        const MixGains at = gain.At(i);
        to[i] = Mixed<Type>(from[i] * at.clip + to[i] * at.sound);
    }
    for (Index i = bothEnd; i < clipEnd; ++i) to[i] = Mixed<Type>(from[i] * gain.At(i).clip);
    for (Index i = clipEnd; i < length; ++i) to[i] = Mixed<Type>(to[i] * gain.At(i).sound);
}

struct MixRange {
    std::size_t startByte = 0;
    std::size_t bytes = 0;
    std::size_t oldBytes = 0;  // of them before the sound grew
};

template <class Gain>
void MixBytes(CWave& sound, const ClipRecord& clip, const MixRange& range, const Gain& gain) {
    const std::span<std::uint8_t> bytes =
        sound.MutableBytes().subspan(range.startByte, range.bytes);
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const std::size_t old = range.oldBytes / sizeof(typename Type::Stored);
        MixSamples<Type>(SamplesOf<Type>(bytes), SamplesOf<Type>(clip.Bytes()), old, gain);
    });
}

// What the sound grows to hold, from the start of the range: only what is processed, or the clip to
// its end, also where a selection has less of it processed.
enum class Growth { kProcessedRange, kWholeClip };

// In frames, 64-bit, because the sum may be more than a sound can hold.
struct MixFrames {
    std::uint64_t start = 0;
    std::uint64_t end = 0;   // of what is processed
    std::uint64_t held = 0;  // up to where the sound grows, unless it is longer
};

MixFrames FramesOfMix(const ClipRecord& clip, const EditSelection& at, Growth growth) {
    const bool selected = !at.IsEmpty();
    const std::uint64_t start = selected ? at.startFrame : at.cursorFrame;
    const std::uint64_t end = start + (selected ? at.Frames() : clip.GetFrameCount());
    const bool whole = growth == Growth::kWholeClip;
    return {start, end, whole ? std::max(end, start + clip.GetFrameCount()) : end};
}

EditPlan PlanOfMix(const CWave& sound, const MixFrames& frames) {
    const std::uint64_t count = sound.GetFrameCount();
    // Where the sound grows, everything up to its end is part of the change.
    const std::uint64_t end = frames.held > count ? count : frames.end;
    return ReplacesFrames(static_cast<std::uint32_t>(frames.start),
                          static_cast<std::uint32_t>(end));
}

// Nothing when the sound cannot grow.
std::optional<MixRange> MakeRoom(CWave& sound, const MixFrames& frames) {
    const std::size_t startByte = frames.start * sound.GetBlockAlign();
    const std::size_t oldBytes = sound.GetDataSize() - startByte;
    const std::size_t bytes = (frames.end - frames.start) * sound.GetBlockAlign();
    if (frames.held * sound.GetBlockAlign() > MostSoundBytes(sound.GetFormat()) ||
        !sound.GrowWithSilence(static_cast<std::uint32_t>(frames.held)))
        return std::nullopt;
    return MixRange{startByte, bytes, std::min(oldBytes, bytes)};
}

// `mix` fills the range once it is there.
template <class MixInto>
Result<EditSelection> RunMix(CSoundDoc& document, const ClipRecord& clip,
                             const EditSelection& requested, Growth growth, MixInto mix) {
    CWavePlayer& sound = document.Sound();
    EditSelection at = ClampedTo(sound, requested);
    if (Outcome fits = CheckClip(sound, clip); !fits) return fits;
    const MixFrames frames = FramesOfMix(clip, at, growth);
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", PlanOfMix(sound, frames));
    if (!edit) return edit.Ended();
    const std::optional<MixRange> range = MakeRoom(sound, frames);
    if (!range) return Failed(failure::kMemory);
    mix(sound, *range);
    if (!at.IsEmpty()) at.cursorFrame = at.startFrame;
    edit->Commit(at.cursorFrame);
    return at;
}

template <std::int32_t kChannels>
void CrossfadeBytes(CWave& sound, const ClipRecord& clip, const MixRange& range,
                    const CrossfadeGains& gains) {
    const std::uint64_t frames = range.bytes / sound.GetBlockAlign();
    MixBytes(sound, clip, range, LinearGain<kChannels>(gains, frames));
}

}  // namespace

Result<EditSelection> Mix(CSoundDoc& document, const ClipRecord& clip, const EditSelection& at,
                          const MixGains& gains) {
    const auto mix = [&](CWave& sound, const MixRange& range) {
        MixBytes(sound, clip, range, ConstantGain(Sane(gains)));
    };
    return RunMix(document, clip, at, Growth::kWholeClip, mix);
}

Result<EditSelection> CrossfadeMix(CSoundDoc& document, const ClipRecord& clip,
                                   const EditSelection& at, const CrossfadeGains& gains) {
    const CrossfadeGains sane{Sane(gains.start), Sane(gains.end)};
    const auto mix = [&](CWave& sound, const MixRange& range) {
        if (sound.GetChannels() == 2)
            CrossfadeBytes<2>(sound, clip, range, sane);
        else
            CrossfadeBytes<1>(sound, clip, range, sane);
    };
    return RunMix(document, clip, at, Growth::kProcessedRange, mix);
}

}  // namespace sonavel::edit
