// The path of a moving source in double precision, for what must not show the steps of single
// precision: a source's arrival time bends the pitch.
#pragma once

#include <span>
#include <vector>

#include "spatial/direction.h"
#include "spatial/vector3.h"

namespace sonavel {

class ExactPath {
  public:
    // At least one point, joined by straight legs. A path of no length stays at its first point.
    explicit ExactPath(std::span<const SourcePosition> points);

    // `share` from 0 at the first point to 1 at the last, at constant speed; shares outside count
    // as the nearest.
    Vector3 At(double share) const;

  private:
    std::vector<Vector3> points_;
    std::vector<double> reached_;  // the share of the path at each point
};

}  // namespace sonavel
