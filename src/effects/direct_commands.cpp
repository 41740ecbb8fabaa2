// The effects that run piece by piece in place: volume, panpot and crossfade, modulator, dynamics.
#include <algorithm>
#include <array>

#include "effects/effect_buffer.h"
#include "effects/effect_commands.h"
#include "effects/effect_run.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

void MultiplyBy(std::span<float> samples, std::span<const float> gains) {
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] *= gains[i];
}

}  // namespace

bool ApplyVolume(const EffectTarget& target, const VolumeParameters& parameters) {
    CSoundDoc& document = target.document;
    const EffectRange range = RangeOf(target);
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    // Volume's suffix has no blank before it.
    const auto progress = ShowProgress(document, "Volume");
    CWave& sound = document.Sound();
    std::array<float, 2 * kMaxPieceFrames> samples;
    for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
        ShowDone(*progress, done, range.length);
        const std::uint32_t frames = std::min(range.length - done, kMaxPieceFrames);
        const auto piece = std::span(samples).first(std::size_t{frames} * sound.GetChannels());
        ReadInterleaved(sound, range.start + done, piece);
        ScaleVolume(piece, parameters, sound.GetBits());
        WriteInterleaved(sound, range.start + done, piece);
    }
    EndApply(document, *edit, range);
    return true;
}

bool PreviewVolume(const EffectTarget& target, const VolumeParameters& parameters,
                   PreviewPlay play) {
    CSoundDoc& document = target.document;
    const CWave& sound = document.Sound();
    const EffectRange range = RangeOf(target);
    PairBuffer pairs(range.length);
    if (!CheckMemory(document, pairs)) return false;
    const auto progress = ShowProgress(document, "Volume");
    std::array<float, kMaxPieceFrames> samples;
    for (unsigned slot = 0; slot < 2; ++slot) {
        const unsigned channel = std::min(slot, sound.GetChannels() - 1);
        for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
            ShowDone(*progress, done, range.length);
            const auto piece =
                std::span(samples).first(std::min(range.length - done, kMaxPieceFrames));
            ReadChannel(sound, channel, range.start + done, piece, EightBitReading::kFull);
            ScaleVolume(piece, parameters, sound.GetBits());
            pairs.Put(slot, done, piece);
        }
    }
    return SetPreviewResult(document, pairs.Pairs(), range.length * sound.GetChannels(), play);
}

bool ApplyPanpot(const EffectTarget& target, const PanpotParameters& parameters) {
    CSoundDoc& document = target.document;
    CWavePlayer& sound = document.Sound();
    if (sound.GetChannels() != 2) {
        constexpr const char* kRefusal = "Can not use Panpot/Crossfade in Mono File.";
        document.SetLastError(kRefusal);
        document.Services().prompts.ShowMessage(kRefusal);
        return false;
    }
    const EffectRange range = RangeOf(target);
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    const auto progress = ShowProgress(document, " Panpot/Crossfade");
    Panpot panpot(parameters, range.length);
    ForEachPiece(sound, range, [&](CEffectBuffer& buffer, std::uint32_t done) {
        ShowDone(*progress, done, range.length);
        panpot.Process(buffer.Left(), buffer.Right());
    });
    EndApply(document, *edit, range);
    return true;
}

bool ApplyModulator(const EffectTarget& target, const ModulatorParameters& parameters) {
    CSoundDoc& document = target.document;
    CWavePlayer& sound = document.Sound();
    const EffectRange range = RangeOf(target);
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    const auto progress = ShowProgress(document, " Modulator");
    CModOscillator first(parameters.first, sound.GetSamplesPerSecond());
    CModOscillator second(parameters.second, sound.GetSamplesPerSecond());
    std::array<float, kMaxPieceFrames> gains;
    ForEachPiece(sound, range, [&](CEffectBuffer& buffer, std::uint32_t done) {
        ShowDone(*progress, done, range.length);
        const auto used = std::span(gains).first(buffer.FrameCount());
        std::fill(used.begin(), used.end(), 1.0f);
        first.Run(used);
        second.Run(used);
        MultiplyBy(buffer.Left(), used);
        MultiplyBy(buffer.Right(), used);
    });
    EndApply(document, *edit, range);
    return true;
}

bool ApplyDynamics(const EffectTarget& target, const DynamicsParameters& parameters) {
    CSoundDoc& document = target.document;
    const EffectRange range = RangeOf(target);
    Result<SoundEdit> edit = BeginApply(document);
    if (!edit) return false;
    const auto progress = ShowProgress(document, " Dynamics");
    ForEachPiece(document.Sound(), range, [&](CEffectBuffer& buffer, std::uint32_t done) {
        ShowDone(*progress, done, range.length);
        ApplyCurve(buffer.Left(), parameters.left);
        ApplyCurve(buffer.Right(), parameters.right);
    });
    progress->SetPosition(100);
    EndApply(document, *edit, range);
    return true;
}

}  // namespace sonavel
