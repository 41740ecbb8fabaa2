// The path of a moving source in double precision, for what must not show the steps of single
// precision: a source's arrival time bends the pitch.
#pragma once

#include <span>
#include <vector>

#include "spatial/course.h"
#include "spatial/vector3.h"

namespace sonavel {

class ExactPath {
  public:
    // At least one point, joined by straight legs. A path of no length stays at its first point.
    explicit ExactPath(std::span<const SourcePosition> points);
    explicit ExactPath(Course course);

    // `share` of the range, from 0 to 1; shares outside count as the nearest, but for a loop, which
    // goes on.
    Vector3 At(double share) const;
    bool IsAtRest() const { return points_.size() == 1; }

  private:
    Course course_;  // its corners unused
    std::vector<Vector3> points_;
};

}  // namespace sonavel
