#include "effects/range_runner.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "effects/effect_runner.h"
#include "platform/failure_texts.h"
#include "sound/pair_buffer.h"
#include "sound/sample_types.h"
#include "sound/share_io.h"

namespace sonavel {
namespace {

constexpr const char* kEmptySound = "The sound is empty.";
constexpr const char* kTooLong = "The sound would become too long.";

class SoundSink : public RangeSink {
  public:
    SoundSink(Sound& sound, FrameRange range) : sound_(sound), range_(range) {}

    void Put(std::uint32_t first, std::span<const float> shares) override {
        if (first >= range_.Frames()) return;
        const std::size_t room = std::size_t{range_.Frames() - first} * sound_.GetChannels();
        WriteShares(sound_, range_.start + first, shares.first(std::min(room, shares.size())));
    }

  private:
    Sound& sound_;
    FrameRange range_;
};

// As preview sounds are made: left and right of each frame, in units of 16 bits.
class PairSink : public RangeSink {
  public:
    PairSink(PairBuffer& pairs, unsigned channels) : pairs_(pairs), channels_(channels) {}

    void Put(std::uint32_t first, std::span<const float> shares) override {
        const std::span<float> all = pairs_.Pairs();
        const std::size_t start = std::min(std::size_t{2} * first, all.size());
        const auto out = all.subspan(start);
        const std::size_t frames = std::min(shares.size() / channels_, out.size() / 2);
        for (std::size_t i = 0; i < frames; ++i) {
            out[2 * i] = ValueOf(shares[i * channels_]);
            out[2 * i + 1] = ValueOf(shares[i * channels_ + channels_ - 1]);
        }
    }

  private:
    static float ValueOf(float share) {
        return std::clamp(FloatSample::Finite(share), -1.0f, 32767.0f / 32768) *
               FloatSample::kHalfScale;
    }

    PairBuffer& pairs_;
    unsigned channels_;
};

std::uint32_t NewFrames(const Effect& effect, std::span<const double> values, FrameRange range) {
    return effect.range.count ? effect.range.count(values, range.Frames()) : range.Frames();
}

Outcome Compute(const Effect& effect, const EffectTarget& target, std::span<const double> values,
                RangeSink& sink) try {
    CSoundDoc& document = target.document;
    const auto progress = document.Services().progress.CreateProgress(std::string("Progress") +
                                                                      effect.traits.progressSuffix);
    return effect.range.compute(
        {document.Sound(), RangeOf(target), values, target.state, *progress}, sink);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

// The computed frames in place of the range. Behind it first, so that short memory leaves the
// sound as it was.
Outcome Replace(CWave& sound, FrameRange range, std::span<const std::uint8_t> frames) {
    const std::size_t align = sound.GetBlockAlign();
    const std::size_t start = std::size_t{range.start} * align;
    if (frames.size() == std::size_t{range.Frames()} * align) {
        std::memcpy(sound.MutableBytes().data() + start, frames.data(), frames.size());
        return Done();
    }
    MarkerList markers = sound.Markers();
    markers.ShiftForStretch(range.start, range.end,
                            static_cast<std::uint32_t>(frames.size() / align));
    if (!sound.InsertFrames(range.end, frames)) return Failed(failure::kMemory);
    if (!sound.RemoveFrames(range.start, range.end)) return Failed(failure::kMemory);
    sound.Markers() = std::move(markers);
    return Done();
}

class RangeApplication {
  public:
    RangeApplication(const Effect& effect, const EffectTarget& target,
                     std::span<const double> values)
        : effect_(effect), target_(target), values_(values), range_(RangeOf(target)) {}

    Outcome Run() {
        if (range_.Frames() == 0) return Failed(kEmptySound);
        return effect_.range.storage == ResultStorage::kInPlace ? ChangeInPlace()
                                                                : ComputeAndReplace();
    }

  private:
    CWave& Sound() { return target_.document.Sound(); }

    Outcome ChangeInPlace() {
        Result<SoundEdit> edit =
            target_.document.BeginEdit("Copy Sample", ReplacesFrames(range_.start, range_.end));
        if (!edit) return edit.Ended();
        SoundSink sink(Sound(), range_);
        if (Outcome computed = Compute(effect_, target_, values_, sink); !computed) return computed;
        return End(*edit);
    }

    Outcome ComputeAndReplace() {
        sonavel::Sound result;
        const std::uint32_t frames = NewFrames(effect_, values_, range_);
        if (Outcome room = MakeRoom(result, frames); !room) return room;
        Result<SoundEdit> edit =
            target_.document.BeginEdit("Copy Sample", ReplacesFrames(range_.start, range_.end));
        if (!edit) return edit.Ended();
        SoundSink sink(result, {0, frames});
        if (Outcome computed = Compute(effect_, target_, values_, sink); !computed) return computed;
        if (Outcome replaced = Replace(Sound(), range_, std::as_const(result).Bytes()); !replaced)
            return replaced;
        return End(*edit);
    }

    Outcome MakeRoom(sonavel::Sound& result, std::uint32_t frames) {
        const CWave& sound = Sound();
        const std::uint64_t whole = std::uint64_t{sound.GetFrameCount()} - range_.Frames() + frames;
        if (whole * sound.GetBlockAlign() > MostSoundBytes(sound.GetFormat()))
            return Failed(kTooLong);
        return DoneIf(result.Create(sound.GetChannels(), sound.GetBits(),
                                    sound.GetSamplesPerSecond(), frames),
                      failure::kMemory);
    }

    Outcome End(SoundEdit& edit) {
        target_.document.ClearPreview();
        edit.Commit(range_.start);
        return Done();
    }

    const Effect& effect_;
    const EffectTarget& target_;
    std::span<const double> values_;
    FrameRange range_;
};

}  // namespace

Outcome ApplyRangeEffect(const Effect& effect, const EffectTarget& target,
                         std::span<const double> values) {
    return RangeApplication(effect, target, values).Run();
}

Outcome PreviewRangeEffect(const Effect& effect, const EffectTarget& target,
                           std::span<const double> values, CSoundDoc::PreviewPlay play) {
    const FrameRange range = RangeOf(target);
    if (range.Frames() == 0) return Failed(kEmptySound);
    const std::uint32_t frames = NewFrames(effect, values, range);
    PairBuffer pairs(frames);
    if (!pairs.HasMemory()) return Failed(failure::kMemory);
    PairSink sink(pairs, target.document.Sound().GetChannels());
    if (Outcome computed = Compute(effect, target, values, sink); !computed) return computed;
    return target.document.MakePreview(pairs.Pairs(), play, std::uint64_t{frames} * 2,
                                       CSoundDoc::PreviewFormat::kComputedStereo);
}

}  // namespace sonavel
