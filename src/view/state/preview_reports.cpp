#include "view/state/preview_reports.h"

#include <algorithm>

#include "sound/sample_types.h"
#include "view/state/play_follower.h"

namespace sonavel {
namespace {

constexpr std::string_view kStopped = "(Stopped) ";

// The meter measures by the full scale of the document's sound, which may have other bits.
std::int32_t Rescaled(std::int32_t peak, const Sound& from, const Sound& to) {
    if (peak < 0 || from.GetBits() == to.GetBits()) return peak;
    const std::int64_t rescaled = peak * FullScaleOf(to.GetBits()) / FullScaleOf(from.GetBits());
    return static_cast<std::int32_t>(std::min<std::int64_t>(rescaled, INT32_MAX));
}

}  // namespace

void PreviewReports::OnPlayState(std::string_view stateText, std::uint32_t frame) {
    frame_ = frame;
    showsStopped_ = stateText == kStopped;
    follower_.ShowPlayState(document_.Preview(), stateText, frame);
}

void PreviewReports::OnPeaks(std::int32_t left, std::int32_t right) {
    const auto& preview = document_.Preview();
    const auto& sound = document_.Sound();
    follower_.OnPeaks(Rescaled(left, preview, sound), Rescaled(right, preview, sound));
}

void PreviewReports::OnStopped() {
    follower_.OnPeaks(0, 0);
    if (!showsStopped_) OnPlayState(kStopped, frame_);
}

}  // namespace sonavel
