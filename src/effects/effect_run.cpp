#include "effects/effect_run.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "platform/vector_clones.h"
#include "sound/failure_texts.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

constexpr const char* kEmptySound = "The sound is empty.";

}  // namespace

void PairBuffer::Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values) {
    float* to = Pairs().data() + std::size_t{2} * firstFrame + slot;
    for (std::size_t i = 0; i < values.size(); ++i) to[2 * i] = values[i];
}

void PairBuffer::CopyLeftToRight() {
    const std::span<float> pairs = Pairs();
    for (std::size_t i = 0; i < pairs.size(); i += 2) pairs[i + 1] = pairs[i];
}

SONAVEL_VECTOR_CLONES
float PairBuffer::Peak(unsigned slot) const {
    const std::span<const float> pairs = block_.Floats();
    // Several maxima at once: one alone would wait for itself at every value.
    std::array<float, 16> peaks{};
    std::size_t i = slot;
    for (; i + 32 <= pairs.size(); i += 32)
        for (std::size_t k = 0; k < 16; ++k)
            peaks[k] = std::max(peaks[k], std::abs(pairs[i + 2 * k]));
    for (; i < pairs.size(); i += 2) peaks[0] = std::max(peaks[0], std::abs(pairs[i]));
    return *std::max_element(peaks.begin(), peaks.end());
}

void PairBuffer::Scale(unsigned slot, float factor) {
    const std::span<float> pairs = Pairs();
    for (std::size_t i = slot; i < pairs.size(); i += 2) pairs[i] *= factor;
}

void PairBuffer::Rescale(unsigned slot, float from, float to) {
    const std::span<float> pairs = Pairs();
    for (std::size_t i = slot; i < pairs.size(); i += 2) pairs[i] = pairs[i] / from * to;
}

EffectRange RangeOf(const EffectTarget& target) {
    return RangeToWorkOn(target.selectionStart, target.selectionEnd,
                         target.document.Sound().GetFrameCount());
}

bool CheckMemory(CSoundDoc& document, const PairBuffer& pairs) {
    if (!pairs.IsEmpty() && pairs.HasMemory()) return true;
    document.SetLastError(pairs.IsEmpty() ? kEmptySound : failure::kMemory);
    return false;
}

Result<SoundEdit> BeginApply(CSoundDoc& document) {
    Result<SoundEdit> edit =
        document.Sound().HasData() ? document.BeginEdit("Copy Sample") : Failed(kEmptySound);
    if (!edit) document.SetLastError(edit.Reason());
    return edit;
}

void EndApply(CSoundDoc& document, SoundEdit& edit, EffectRange range) {
    document.ClearPreview();
    edit.Commit(range.start);
}

std::unique_ptr<ProgressWindow> ShowProgress(const CSoundDoc& document, std::string_view suffix) {
    return document.Services().progress.CreateProgress("Progress" + std::string(suffix));
}

void ShowDone(ProgressWindow& progress, std::uint32_t done, std::uint32_t total) {
    progress.SetPosition(static_cast<int>(std::uint64_t{done} * 100 / total));
    progress.Poll();
}

bool SetPreviewResult(CSoundDoc& document, std::span<const float> pairs, std::uint32_t count,
                      PreviewPlay play) {
    return document.MakePreview(pairs, play, count, CSoundDoc::PreviewFormat::kStereo16);
}

void ApplyEffectResult(CSoundDoc& document, EffectRange range, std::span<const float> pairs,
                       std::uint32_t count) {
    if (count / 2 != range.length) return;
    WriteInterleaved(document.Sound(), range.start, pairs);
}

}  // namespace sonavel
