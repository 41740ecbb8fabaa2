// A source that moves without steps: each ear reads the sound through a delay that glides, and
// filters it with minimum-phase responses that fade into those of the next 128 frames.
#pragma once

#include <memory>
#include <vector>

#include "spatial/block_renderer.h"
#include "spatial/heard_places.h"

namespace sonavel {

struct SmoothCourse {
    Course course;
    std::optional<double> metresPerUnit;  // as in Flight
    DistanceLaw law{};
};

class SmoothRenderer : public BlockRenderer {
  public:
    SmoothRenderer(const RangeInput& input, std::shared_ptr<const ResponseSet> responses,
                   const SmoothCourse& course);

    void Render(std::size_t block, BlockOutput output) const override;

  private:
    struct Heard;
    double ReadAt(std::int64_t frame, Ear ear) const;
    void Read(std::size_t block, Heard& heard) const;
    void Filter(std::size_t block, Ear ear, std::span<const float> signal,
                BlockOutput output) const;

    RangeInput input_;
    ResponseBank bank_;
    std::vector<HeardPlace> places_;
};

}  // namespace sonavel
