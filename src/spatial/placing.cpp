#include "spatial/placing.h"

#include <new>

#include "spatial/placing_times.h"
#include "spatial/smooth_renderer.h"

namespace sonavel {
namespace {

std::unique_ptr<const BlockFilter> FilterOf(const Placing& placing, std::uint32_t frames,
                                            double seconds) {
    if (placing.kind == PlacingKind::kPoint)
        return std::make_unique<FixedSourceFilter>(placing.points.front());
    return std::make_unique<MovingSourceFilter>(SourcePath(CourseOf(placing, seconds)), frames);
}

std::optional<double> MetresPerUnit(const Placing& placing) {
    if (placing.doppler == Doppler::kOff) return std::nullopt;
    return placing.metresPerUnit;
}

}  // namespace

Outcome CheckPlacing(const Placing& placing) {
    if (placing.doppler == Doppler::kOn && placing.smoothness != Smoothness::kSmooth)
        return Failed("Doppler needs smooth responses.");
    return CheckTimes(placing);
}

Result<std::unique_ptr<const BlockRenderer>> MakeRenderer(const Placing& placing,
                                                          const RangeInput& input,
                                                          Listener& listener) try {
    if (Outcome checked = CheckPlacing(placing); !checked) return checked;
    const double seconds = 1.0 * input.range.Frames() / input.sound.GetSamplesPerSecond();
    std::unique_ptr<const BlockRenderer> renderer;
    if (placing.smoothness == Smoothness::kStepped) {
        renderer = std::make_unique<FilteredBlocks>(
            input, FilterOf(placing, input.range.Frames(), seconds));
        return renderer;
    }
    const auto bank = listener.At(input.sound.GetSamplesPerSecond());
    if (!bank) return bank.Ended();
    renderer = std::make_unique<SmoothRenderer>(
        input, *bank,
        SmoothCourse{CourseOf(placing, seconds), MetresPerUnit(placing), placing.law});
    return renderer;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
