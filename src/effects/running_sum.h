// RunningSum: a float to which the same step is added again and again, each sum rounded to single
// precision. Long runs depend on that rounding, so it is kept to the last bit; yet any number of
// steps is taken at once.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sonavel {

class RunningSum {
  public:
    // A sum is formed in double precision before it is rounded.
    RunningSum(float start, double step) : value_(start), step_(step) {}

    float Value() const { return value_; }
    void Skip(std::uint32_t steps);
    // The value now and after each step but the last, which is taken too.
    void Take(std::span<float> values);

  private:
    struct Stretch {
        std::uint32_t steps;
        float first;      // the value after the first step
        float increment;  // of every further one
    };
    float Next(float value) const { return static_cast<float>(value + step_); }
    Stretch NextStretch(std::uint32_t atMost) const;

    float value_;
    double step_;
};

// The sum at the start of each piece of a run.
std::vector<RunningSum> SumsAtPieces(RunningSum sum, std::uint32_t runFrames,
                                     std::uint32_t pieceFrames);

}  // namespace sonavel
