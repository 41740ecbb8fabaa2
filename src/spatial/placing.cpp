#include "spatial/placing.h"

#include <new>

#include "spatial/smooth_renderer.h"
#include "spatial/spline.h"

namespace sonavel {
namespace {

std::unique_ptr<const BlockFilter> FilterOf(const Placing& placing, std::uint32_t frames) {
    if (placing.kind == PlacingKind::kPoint)
        return std::make_unique<FixedSourceFilter>(placing.points.front());
    return std::make_unique<MovingSourceFilter>(SourcePath(PathOf(placing)), frames);
}

std::optional<double> MetresPerUnit(const Placing& placing) {
    if (placing.doppler == Doppler::kOff) return std::nullopt;
    return placing.metresPerUnit;
}

}  // namespace

std::vector<SourcePosition> PathOf(const Placing& placing) {
    return placing.curve == PathCurve::kSpline ? SplineThrough(placing.points) : placing.points;
}

Outcome CheckPlacing(const Placing& placing) {
    if (placing.doppler == Doppler::kOn && placing.smoothness != Smoothness::kSmooth)
        return Failed("Doppler needs smooth responses.");
    return Done();
}

Result<std::unique_ptr<const BlockRenderer>> MakeRenderer(const Placing& placing,
                                                          const RangeInput& input,
                                                          Listener& listener) try {
    if (Outcome checked = CheckPlacing(placing); !checked) return checked;
    std::unique_ptr<const BlockRenderer> renderer;
    if (placing.smoothness == Smoothness::kStepped) {
        renderer = std::make_unique<FilteredBlocks>(input, FilterOf(placing, input.range.Frames()));
        return renderer;
    }
    const auto responses = listener.At(input.sound.GetSamplesPerSecond());
    if (!responses) return responses.Ended();
    renderer = std::make_unique<SmoothRenderer>(input, *responses, PathOf(placing),
                                                MetresPerUnit(placing));
    return renderer;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
