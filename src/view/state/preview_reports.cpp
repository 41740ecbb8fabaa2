#include "view/state/preview_reports.h"

#include "view/sound_view.h"

namespace sonavel {
namespace {

constexpr std::string_view kStopped = "(Stopped) ";

// The meter measures by the full scale of the document's sound, which may have other bits.
std::int32_t Rescaled(std::int32_t peak, const CWave& from, const CWave& to) {
    if (peak < 0 || from.GetBits() == to.GetBits()) return peak;
    const std::int64_t scale = std::int64_t{to.GetMaxValue()} + 1;
    return static_cast<std::int32_t>(peak * scale / (std::int64_t{from.GetMaxValue()} + 1));
}

}  // namespace

void PreviewReports::OnPlayState(std::string_view stateText, std::uint32_t frame) {
    frame_ = frame;
    showsStopped_ = stateText == kStopped;
    view_.ShowPlayState(view_.Document().Preview(), stateText, frame);
}

void PreviewReports::OnPeaks(std::int32_t left, std::int32_t right) {
    const CWave& preview = view_.Document().Preview();
    view_.OnPeaks(Rescaled(left, preview, view_.Sound()), Rescaled(right, preview, view_.Sound()));
}

void PreviewReports::OnStopped() {
    view_.OnPeaks(0, 0);
    if (!showsStopped_) OnPlayState(kStopped, frame_);
}

}  // namespace sonavel
