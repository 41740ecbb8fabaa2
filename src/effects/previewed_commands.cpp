// The effects that compute a whole result before they hand it over: flanger, reverberation,
// equalizer.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "effects/effect_buffer.h"
#include "effects/effect_commands.h"
#include "effects/effect_run.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

constexpr const char* kCancelled = "The effect was cancelled.";

bool FailCancelled(CSoundDoc& document) {
    document.SetLastError(kCancelled);
    return false;
}

std::uint32_t HandOverCount(const CSoundDoc& document, EffectRange range) {
    return range.length * document.Sound().GetChannels();
}

int PercentDone(std::uint32_t done, std::uint32_t total) {
    return static_cast<int>(100.0f / static_cast<float>(total) * static_cast<float>(done));
}

// Results within 16 bits stay as they are.
void LimitToSixteenBits(PairBuffer& pairs) {
    constexpr float kLimit = 32767;
    const float peak = std::max(pairs.Peak(0), pairs.Peak(1));
    if (peak <= kLimit) return;
    for (unsigned slot : {0u, 1u}) pairs.Scale(slot, kLimit / peak);
}

void WriteLeftSlots(CWave& sound, EffectRange range, PairBuffer& pairs) {
    std::array<float, kMaxPieceFrames> left;
    for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
        const float* from = pairs.Pairs().data() + std::size_t{2} * done;
        const auto piece = std::span(left).first(std::min(range.length - done, kMaxPieceFrames));
        for (std::size_t i = 0; i < piece.size(); ++i) piece[i] = from[2 * i];
        WriteTruncated(sound, 0, range.start + done, piece);
    }
}

// A mono sound's samples go to the left slots, and the right ones stay silent.
void ReadPairs(const CWave& sound, std::uint32_t startFrame, std::span<float> pairs) {
    if (sound.GetChannels() == 2) {
        ReadInterleaved(sound, startFrame, pairs);
        return;
    }
    std::array<float, kMaxPieceFrames> samples;
    const auto left = std::span(samples).first(pairs.size() / 2);
    ReadChannel(sound, 0, startFrame, left, EightBitReading::kFull);
    std::fill(pairs.begin(), pairs.end(), 0.0f);
    for (std::size_t i = 0; i < left.size(); ++i) pairs[2 * i] = left[i];
}

RunEnd RunFlanger(CSoundDoc& document, EffectRange range, const FlangerParameters& parameters,
                  PairBuffer& pairs) {
    static_assert(kMaxPieceFrames <= FlangerDelays::kMostFrames);
    const auto progress = ShowProgress(document, " Flanger");
    const CWave& sound = document.Sound();
    const FlangerSweep sweep(parameters, sound.GetSamplesPerSecond());
    FlangerLine line(FlangerMaxDelay(parameters, sound.GetSamplesPerSecond()), range.length);
    FlangerDelays delays;
    for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
        if (progress->Poll()) return RunEnd::kCancelled;
        progress->SetPosition(PercentDone(done, range.length));
        const std::size_t frames = std::min(range.length - done, kMaxPieceFrames);
        sweep.Delays(done, frames, delays);
        ReadPairs(sound, range.start + done, line.NextPairs(frames));
        line.Mix(delays, pairs.Pairs().subspan(std::size_t{2} * done, 2 * frames));
    }
    progress->SetPosition(100);
    return RunEnd::kFinished;
}

RunEnd RunReverb(CSoundDoc& document, EffectRange range, const ReverbParameters& parameters,
                 PairBuffer& pairs) {
    const auto progress = ShowProgress(document, " Reverberation");
    const CWave& sound = document.Sound();
    std::vector<ReverbChannel> channels(
        sound.GetChannels(), ReverbChannel(parameters, sound.GetSamplesPerSecond(), range.length));
    std::vector<float> block(ReverbChannel::kBlockFrames);
    for (std::uint32_t done = 0; done < range.length; done += ReverbChannel::kBlockFrames) {
        const std::size_t frames = std::min(range.length - done, ReverbChannel::kBlockFrames);
        const auto piece = std::span(block).first(frames);
        for (unsigned channel = 0; channel < channels.size(); ++channel) {
            ReadChannel(sound, channel, range.start + done, piece, EightBitReading::kFull);
            if (channels[channel].Process(piece, *progress) == RunEnd::kCancelled)
                return RunEnd::kCancelled;
            pairs.Put(channel, done, piece);
        }
        progress->SetPosition(static_cast<int>((done + frames) * 100 / range.length));
    }
    if (channels.size() == 1) pairs.CopyLeftToRight();
    LimitToSixteenBits(pairs);
    return RunEnd::kFinished;
}

// Filters a channel of the range into its slot and returns the peak of its input. Cancelled, the
// rest keeps its unfiltered values.
float RunEqualizerChannel(const CWave& sound, unsigned channel, EffectRange range,
                          EqualizerFilters& filters, const EqualizerParameters& parameters,
                          PairBuffer& pairs, ProgressWindow& progress) {
    std::array<float, kMaxPieceFrames> samples;
    float peak = 0;
    bool cancelled = false;
    for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
        cancelled = cancelled || progress.Poll();
        progress.SetPosition(PercentDone(done, range.length));
        const auto piece = std::span(samples).first(std::min(range.length - done, kMaxPieceFrames));
        ReadChannel(sound, channel, range.start + done, piece, EightBitReading::kFull);
        for (const float sample : piece) peak = std::max(peak, std::abs(sample));
        if (!cancelled) filters.Process(piece, parameters);
        pairs.Put(channel, done, piece);
    }
    return peak;
}

// The channel's peak becomes what it was before. Silence stays silence, instead of 0 / 0.
void RestorePeak(PairBuffer& pairs, unsigned slot, float inputPeak) {
    const float outputPeak = pairs.Peak(slot);
    if (outputPeak > 0) pairs.Rescale(slot, outputPeak, inputPeak);
}

}  // namespace

bool ApplyFlanger(const EffectTarget& target, const FlangerParameters& parameters) {
    CSoundDoc& document = target.document;
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    if (RunFlanger(document, range, parameters, pairs) == RunEnd::kCancelled)
        return FailCancelled(document);
    ApplyEffectResult(document, range, pairs.Pairs(), HandOverCount(document, range));
    EndApply(document, *edit, range);
    return true;
}

bool PreviewFlanger(const EffectTarget& target, const FlangerParameters& parameters,
                    PreviewPlay play) {
    CSoundDoc& document = target.document;
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    if (RunFlanger(document, range, parameters, pairs) == RunEnd::kCancelled)
        return FailCancelled(document);
    return SetPreviewResult(document, pairs.Pairs(), HandOverCount(document, range), play);
}

bool ApplyReverb(const EffectTarget& target, const ReverbParameters& parameters) {
    CSoundDoc& document = target.document;
    CWave& sound = document.Sound();
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    if (RunReverb(document, range, parameters, pairs) == RunEnd::kCancelled)
        return FailCancelled(document);
    if (sound.GetChannels() == 1)
        WriteLeftSlots(sound, range, pairs);
    else
        ApplyEffectResult(document, range, pairs.Pairs(), HandOverCount(document, range));
    EndApply(document, *edit, range);
    return true;
}

bool PreviewReverb(const EffectTarget& target, const ReverbParameters& parameters,
                   PreviewPlay play) {
    CSoundDoc& document = target.document;
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    if (RunReverb(document, range, parameters, pairs) == RunEnd::kCancelled)
        return FailCancelled(document);
    if (document.Sound().GetBits() == 8)
        for (unsigned slot : {0u, 1u}) pairs.Scale(slot, kEightBitScale);
    return SetPreviewResult(document, pairs.Pairs(), HandOverCount(document, range), play);
}

bool PreviewEqualizer(const EffectTarget& target, const EqualizerParameters& parameters,
                      PreviewPlay play) {
    CSoundDoc& document = target.document;
    const CWave& sound = document.Sound();
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    const auto progress = ShowProgress(document, " Equalizer");
    for (unsigned channel = 0; channel < sound.GetChannels(); ++channel) {
        const float peak = RunEqualizerChannel(sound, channel, range, target.state.equalizer,
                                               parameters, pairs, *progress);
        RestorePeak(pairs, channel, peak);
    }
    progress->SetPosition(100);
    return SetPreviewResult(document, pairs.Pairs(), HandOverCount(document, range), play);
}

}  // namespace sonavel
