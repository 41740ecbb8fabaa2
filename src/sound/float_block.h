// A large block of floats for one run over a sound, zero to begin with.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>

#include "sound/huge_pages.h"

namespace sonavel {

class FloatBlock {
  public:
    explicit FloatBlock(std::size_t count)
        : count_(count), floats_(static_cast<float*>(std::calloc(count, sizeof(float)))) {
        if (floats_) AdviseHugePages(floats_.get(), count * sizeof(float));
    }

    // False when the memory could not be had; there is then nothing to read.
    bool HasMemory() const { return floats_ != nullptr; }
    std::span<float> Floats() { return {floats_.get(), count_}; }
    std::span<const float> Floats() const { return {floats_.get(), count_}; }

  private:
    struct Free {
        void operator()(float* floats) const { std::free(floats); }
    };
    std::size_t count_;
    std::unique_ptr<float[], Free> floats_;
};

}  // namespace sonavel
