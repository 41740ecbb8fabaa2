// How what was computed fits into 16 bits. Peaks beyond them are brought down first; 8-bit sounds
// are brought up afterwards, and what passes 16 bits then is held at their ends.
#pragma once

#include <span>

namespace sonavel {

class Fitting {
  public:
    // The greatest magnitude that was computed, and the bits of the sound that it came from.
    Fitting(float peak, unsigned bits);

    void Fit(std::span<float> pairs) const;

  private:
    bool tooLoud_;
    bool eightBits_;
    float factor_ = 1;
};

}  // namespace sonavel
