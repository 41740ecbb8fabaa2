// The path of a moving source: straight legs between points, run through at constant speed or as a
// course says.
#pragma once

#include <span>
#include <vector>

#include "spatial/course.h"

namespace sonavel {

class SourcePath {
  public:
    // At least one point. A path of no length stays at its first point.
    explicit SourcePath(std::span<const SourcePosition> points);
    explicit SourcePath(const Course& course);

    // `share` of the range, from 0 to 1.
    SourcePosition At(float share) const;

  private:
    std::vector<SourcePosition> points_;
    std::vector<float> legStarts_;  // the share at which each leg begins, and 1 behind the last
    Course rounds_;                 // of a loop; its corners unused
};

}  // namespace sonavel
