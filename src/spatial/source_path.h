// The path of a moving source: straight legs between points, run through at constant speed.
#pragma once

#include <span>
#include <vector>

#include "spatial/direction.h"

namespace sonavel {

class SourcePath {
  public:
    // At least one point. A path of no length stays at its first point.
    explicit SourcePath(std::span<const SourcePosition> points);

    // `t` from 0 at the first point to 1 at the last.
    SourcePosition At(float t) const;

  private:
    std::vector<SourcePosition> points_;
    std::vector<float> legStarts_;  // the t at which each leg begins, and 1 behind the last
};

}  // namespace sonavel
