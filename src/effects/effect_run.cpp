#include "effects/effect_run.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "sound/sample_io.h"

namespace sonavel {
namespace {

constexpr const char* kEmptySound = "The sound is empty.";

}  // namespace

void PairBuffer::Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values) {
    float* to = floats_.get() + std::size_t{2} * firstFrame + slot;
    for (std::size_t i = 0; i < values.size(); ++i) to[2 * i] = values[i];
}

void PairBuffer::CopyLeftToRight() {
    for (std::size_t i = 0; i < frames_; ++i) floats_[2 * i + 1] = floats_[2 * i];
}

float PairBuffer::Peak(unsigned slot) const {
    float peak = 0;
    for (std::size_t i = 0; i < frames_; ++i)
        peak = std::max(peak, std::abs(floats_[2 * i + slot]));
    return peak;
}

void PairBuffer::Scale(unsigned slot, float factor) {
    for (std::size_t i = 0; i < frames_; ++i) floats_[2 * i + slot] *= factor;
}

void PairBuffer::Rescale(unsigned slot, float from, float to) {
    for (std::size_t i = 0; i < frames_; ++i) {
        float& value = floats_[2 * i + slot];
        value = value / from * to;
    }
}

bool CheckMemory(CSoundDoc& document, const PairBuffer& pairs) {
    if (pairs.Frames() != 0 && pairs.HasMemory()) return true;
    document.SetLastError(pairs.Frames() ? "Memory Allocation Failure." : kEmptySound);
    return false;
}

bool BeginApply(CSoundDoc& document) {
    if (document.Sound().HasData()) return document.PushUndoStep("Copy Sample");
    document.SetLastError(kEmptySound);
    return false;
}

void EndApply(CSoundDoc& document, EffectRange range) {
    document.SetModified(true);
    document.NotifyChanged(range.start);
}

std::unique_ptr<ProgressWindow> ShowProgress(const CSoundDoc& document, std::string_view suffix) {
    return document.Services().progress.CreateProgress("Progress" + std::string(suffix));
}

bool SetPreviewResult(CSoundDoc& document, std::span<const float> pairs, std::uint32_t count,
                      PreviewPlay play) {
    return document.MakePreview(pairs, play, count, CSoundDoc::PreviewFormat::kStereo16);
}

void ApplyEffectResult(CSoundDoc& document, EffectRange range, std::span<const float> pairs,
                       std::uint32_t count) {
    CWavePlayer& sound = document.Sound();
    document.Preview().Create(2, 16, sound.GetSamplesPerSecond(), 0);
    if (count / 2 != range.length) return;
    WriteInterleaved(sound, range.start, pairs);
}

}  // namespace sonavel
