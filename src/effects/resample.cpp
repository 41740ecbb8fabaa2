#include "effects/resample.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "libraries/resampler.h"
#include "platform/failure_texts.h"
#include "platform/parallel.h"
#include "sound/share_io.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kPieceFrames = 32768;

std::uint64_t FramesAt(std::uint64_t frames, std::uint32_t from, std::uint32_t to) {
    return (frames * to + from / 2) / from;
}

// The channels are resampled beside each other, each piece by piece.
class Resampling {
  public:
    Resampling(const Sound& from, Sound& to) : from_(from), to_(to) {
        for (unsigned channel = 0; channel < from.GetChannels(); ++channel)
            lanes_[channel].resampler = std::make_unique<Resampler>(1, from.GetSamplesPerSecond(),
                                                                    to.GetSamplesPerSecond());
    }

    // The last one finishes the channel.
    std::size_t PiecesOfAChannel() const { return from_.GetFrameCount() / kPieceFrames + 1; }
    std::size_t Units() const { return PiecesOfAChannel() * from_.GetChannels(); }
    std::size_t Channels() const { return from_.GetChannels(); }

    void Compute(std::size_t unit) {
        const auto channel = static_cast<unsigned>(unit % Channels());
        const auto first = static_cast<std::uint32_t>(unit / Channels() * kPieceFrames);
        Lane& lane = lanes_[channel];
        lane.shares.resize(std::min(kPieceFrames, from_.GetFrameCount() - first));
        ReadChannelShares(from_, channel, first, lane.shares);
        lane.resampled.clear();
        const bool last = unit / Channels() + 1 == PiecesOfAChannel();
        if (!lane.resampler->Add(lane.shares, lane.resampled) ||
            (last && !lane.resampler->Finish(lane.resampled)))
            throw std::bad_alloc();
        if (last)
            lane.resampled.resize(to_.GetFrameCount() - std::min(lane.done, to_.GetFrameCount()));
        WriteChannelShares(to_, channel, lane.done, lane.resampled);
        lane.done += static_cast<std::uint32_t>(lane.resampled.size());
    }

  private:
    struct Lane {
        std::unique_ptr<Resampler> resampler;
        std::vector<float> shares, resampled;
        std::uint32_t done = 0;
    };

    const Sound& from_;
    Sound& to_;
    std::array<Lane, 2> lanes_;
};

Outcome Resample(const Sound& from, Sound& to, ProgressWindow& progress) try {
    Resampling resampling(from, to);
    const std::size_t units = resampling.Units();
    const auto show = [&](std::size_t unit) {
        progress.SetPosition(static_cast<int>(unit * 100 / units));
        return progress.Poll() ? Onward::kStop : Onward::kGoOn;
    };
    const WorkDone done =
        ComputeUnits({.count = units,
                      .lanes = resampling.Channels(),
                      .compute = [&](std::size_t unit) { resampling.Compute(unit); },
                      .before = show},
                     ThreadsToUse());
    if (done.end == WorkEnd::kStopped) return Cancelled();
    return DoneIf(done.end == WorkEnd::kFinished, failure::kMemory);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<Sound> MakeRoom(const Sound& from, std::uint32_t samplesPerSecond) {
    const Result<std::uint32_t> frames = FramesWhenResampled(from, samplesPerSecond);
    if (!frames) return frames.Ended();
    Sound to;
    if (!to.Create(from.GetChannels(), from.GetBits(), samplesPerSecond, *frames))
        return Failed(failure::kMemory);
    to.Markers() = from.Markers();
    to.Markers().ShiftForStretch(0, from.GetFrameCount(), to.GetFrameCount());
    return to;
}

}  // namespace

Result<std::uint32_t> FramesWhenResampled(const Sound& sound, std::uint32_t samplesPerSecond) {
    if (!sound.HasData()) return Failed("The sound is empty.");
    if (samplesPerSecond < kLeastResampledRate || samplesPerSecond > kGreatestResampledRate)
        return Failed("Sounds are resampled to 1000 to 768000 Hz.");
    const std::uint64_t frames =
        FramesAt(sound.GetFrameCount(), sound.GetSamplesPerSecond(), samplesPerSecond);
    if (frames * sound.GetBlockAlign() > MostSoundBytes(sound.GetFormat()) ||
        frames > std::numeric_limits<std::uint32_t>::max())
        return Failed("The sound would become too long.");
    return static_cast<std::uint32_t>(frames);
}

Result<Sound> Resampled(const Sound& sound, std::uint32_t samplesPerSecond,
                        ProgressWindow& progress) {
    Result<Sound> resampled = MakeRoom(sound, samplesPerSecond);
    if (!resampled) return resampled;
    if (Outcome done = Resample(sound, *resampled, progress); !done) return done;
    return resampled;
}

Outcome ResampleSound(CSoundDoc& document, std::uint32_t samplesPerSecond) {
    const CWave& sound = document.Sound();
    if (!sound.HasData()) return Failed("The sound is empty.");
    if (sound.GetSamplesPerSecond() == samplesPerSecond) return Done();
    const auto resampled = [&] {
        const auto progress = document.Services().progress.CreateProgress("Progress Resample");
        return Resampled(sound, samplesPerSecond, *progress);
    };
    Result<Sound> made = resampled();
    if (!made) return made.Ended();
    const DescribedStep step(document.Steps(), {{"resample " + std::to_string(samplesPerSecond)}});
    Result<SoundEdit> edit = document.BeginReplacement("Copy Sample");
    if (!edit) return edit.Ended();
    edit->ReplaceSound(std::move(*made));
    document.ClearPreview();
    edit->Commit(0);
    return Done();
}

void KeepPlaces(CSoundView& view, const Selection& at, std::uint32_t cursor, std::uint32_t before) {
    const auto moved = [&](std::uint32_t frame) {
        return ResampledFrame(frame, before, view.Sound().GetSamplesPerSecond());
    };
    view.State().SetSelection(moved(at.start), moved(at.end));
    view.State().SetCursor(moved(cursor));
    view.Repaint().TimeAreas();
}

Outcome ResampleView(CSoundView& view, std::uint32_t samplesPerSecond) {
    const std::uint32_t before = view.Sound().GetSamplesPerSecond();
    const Selection at = view.State().GetSelection();
    const std::uint32_t cursor = view.State().Cursor();
    Outcome resampled = ResampleSound(view.Document(), samplesPerSecond);
    if (resampled && before != samplesPerSecond) KeepPlaces(view, at, cursor, before);
    return resampled;
}

std::uint32_t ResampledFrame(std::uint32_t frame, std::uint32_t from, std::uint32_t to) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(FramesAt(frame, from, to), kMost));
}

}  // namespace sonavel
