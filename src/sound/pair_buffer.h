// Float pairs of a range, left and right of each frame whatever the sound's channel count: what is
// computed before its result is handed over as a whole.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "sound/float_block.h"

namespace sonavel {

// The greatest magnitude; 0 of nothing.
float PeakOf(std::span<const float> values);
// Every value * factor.
void MultiplyBy(float factor, std::span<float> values);

// Zero to begin with. What goes over all pairs is spread over the cores.
class PairBuffer {
  public:
    explicit PairBuffer(std::uint32_t frames) : block_(std::size_t{2} * frames) {}

    // False when the memory could not be had; there is then nothing to use.
    bool HasMemory() const { return block_.HasMemory(); }
    std::span<float> Pairs() { return block_.Floats(); }
    // Stores values into one slot (0 left, 1 right) of consecutive pairs.
    void Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values);
    // The right slot of every pair becomes its left one.
    void CopyLeftToRight();
    // Every value of both slots * factor.
    void Scale(float factor);
    // Every value of a slot / from * to.
    void Rescale(unsigned slot, float from, float to);

    // change(first, pairs) for parts of it, the first frame of each and its pairs, beside each
    // other.
    void ForEachPart(const std::function<void(std::uint32_t, std::span<float>)>& change);

  private:
    FloatBlock block_;
};

}  // namespace sonavel
