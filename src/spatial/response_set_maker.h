// How measured responses become a set: resampled, taken apart, and completed around the poles.
#pragma once

#include "spatial/response_set.h"

namespace sonavel {

class ResponseSetMaker {
  public:
    ResponseSetMaker(const MeasuredResponses& measured, double rate);

    Result<std::shared_ptr<const ResponseSet>> Make(const PieceWatch& watch);
    double GreatestGap();

  private:
    // A response taken apart.
    struct Parts {
        std::vector<float> power;
        double delay = 0;         // frames at the new rate
        std::size_t lastTap = 0;  // behind which the minimum-phase response is as good as silent
    };
    Outcome Analyse(const PieceWatch& watch);
    double MeanPower() const;
    void MatchTable();
    Parts PartsOf(std::size_t response) const;
    void CollectDirections();
    bool IsFarFromAll(const Vector3& direction, double degrees) const;
    void CompletePole(double sign);
    std::uint32_t AddMean(std::span<const std::uint32_t> responses);

    const MeasuredResponses& measured_;
    double rate_;
    AnalysisFft fft_;
    std::vector<Parts> parts_;
    std::vector<Vector3> directions_;
    std::vector<ResponseSet::EarNumbers> ears_;
};

}  // namespace sonavel
