// How loud two versions of a sound are beside each other while they are rendered, so that they can
// be compared at the same level.
#pragma once

#include <span>

namespace sonavel {

class LoudnessMatch {
  public:
    // What is heard at once are pieces of this length.
    explicit LoudnessMatch(double pieceSeconds);

    // The next piece of both, equally long.
    void Hear(std::span<const float> untouched, std::span<const float> changed);
    // What brings the untouched one to the level of the changed one, root mean squares of about the
    // last 0.4 seconds; 1 while one of them is silent, and from 1/16 to 16.
    float GainOfUntouched() const;

  private:
    double share_;  // of a new piece in the mean
    double heard_ = 0;
    double untouched_ = 0;
    double changed_ = 0;
};

}  // namespace sonavel
