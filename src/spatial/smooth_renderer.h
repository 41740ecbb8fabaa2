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
    SmoothRenderer(const RangeInput& input, std::shared_ptr<ResponseBank> bank,
                   const SmoothCourse& course);

    void Render(std::size_t block, BlockOutput output) const override;
    void Prepare(std::size_t block) const override;

  private:
    struct Heard;
    // Which frames of the range reach an ear, from the frame `first` on.
    void PutReadFrames(std::int64_t first, std::size_t ear, std::span<double> reads) const;
    void Read(std::size_t block, Heard& heard) const;
    void Filter(std::size_t block, Ear ear, std::span<const float> signal,
                BlockOutput output) const;

    RangeInput input_;
    std::shared_ptr<ResponseBank> bank_;
    HeardPlaces places_;
};

}  // namespace sonavel
