// What the effects share when they run on a document: the undo step, the progress window, and the
// hand-over of a result held as float pairs, left and right of each frame.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "effects/effect_range.h"
#include "effects/effect_table.h"
#include "effects/run_end.h"
#include "platform/progress_window.h"
#include "sound/float_block.h"

namespace sonavel {

// Zeroed float pairs of a range, one for each frame whatever the sound's channel count.
class PairBuffer {
  public:
    explicit PairBuffer(std::uint32_t frames) : block_(std::size_t{2} * frames) {}

    bool IsEmpty() const { return block_.Floats().empty(); }
    bool HasMemory() const { return block_.HasMemory(); }
    std::span<float> Pairs() { return block_.Floats(); }
    // Stores values into one slot (0 left, 1 right) of consecutive pairs.
    void Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values);
    // The right slot of every pair becomes its left one.
    void CopyLeftToRight();
    float Peak(unsigned slot) const;  // the greatest magnitude
    void Scale(unsigned slot, float factor);
    // Every value / from * to.
    void Rescale(unsigned slot, float from, float to);

  private:
    FloatBlock block_;
};

// The frames that an effect on this target works on.
EffectRange RangeOf(const EffectTarget& target);

// False when the range is empty or the memory could not be had; the last error then says which.
bool CheckMemory(CSoundDoc& document, const PairBuffer& pairs);

// The first step of every apply: nothing when the sound is empty, is being recorded, or when the
// undo step could not be made and the person chose to stop; the last error then says which.
Result<SoundEdit> BeginApply(CSoundDoc& document);
// The last step, once the sound holds the result; the preview, which no longer fits, is emptied.
void EndApply(CSoundDoc& document, SoundEdit& edit, EffectRange range);

// "Progress" with the effect's suffix as caption.
std::unique_ptr<ProgressWindow> ShowProgress(const CSoundDoc& document, std::string_view suffix);
// For a run that cannot be cancelled, once a piece: shows the percentage of the frames done and
// keeps the window alive.
void ShowDone(ProgressWindow& progress, std::uint32_t done, std::uint32_t total);

// Hand-overs. `count` is channels x frames of the run; both take it as the sample count of a stereo
// result, so a mono range is previewed for half its length, and is not applied at all.
bool SetPreviewResult(CSoundDoc& document, std::span<const float> pairs, std::uint32_t count,
                      PreviewPlay play);
void ApplyEffectResult(CSoundDoc& document, EffectRange range, std::span<const float> pairs,
                       std::uint32_t count);

}  // namespace sonavel
