#include "view/commands/view_questions.h"

#include <algorithm>
#include <charconv>

#include "view/sound_view.h"

namespace sonavel {
namespace {

Outcome CheckSound(const CSoundView& view) {
    return DoneIf(view.FrameCount() > 0, "The document has no sound.");
}

}  // namespace

double PercentFromText(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return 0;
    const std::size_t end = std::min(text.find('%'), text.size());
    double percent = 0;
    if (first < end) std::from_chars(text.data() + first, text.data() + end, percent);
    return percent;
}

Result<UserZoom> QuestionOfUserZoom(const CSoundView& view) {
    if (Outcome sound = CheckSound(view); !sound) return sound;
    return view.Zoom().CurrentUserZoom();
}

Result<GoToRequest> QuestionOfGoTo(const CSoundView& view) {
    if (Outcome sound = CheckSound(view); !sound) return sound;
    return GoToRequest{view.State().Cursor(), view.FrameCount(),
                       view.Sound().GetSamplesPerSecond()};
}

Result<MarkerDialogRequest> QuestionOfMarkers(const CSoundView& view,
                                              MarkerDialogRequest::Start start,
                                              std::uint32_t markerId) {
    if (Outcome sound = CheckSound(view); !sound) return sound;
    return MarkerDialogRequest{.start = start,
                               .markerId = markerId,
                               .markers = view.Sound().Markers(),
                               .frameCount = view.FrameCount(),
                               .samplesPerSecond = view.Sound().GetSamplesPerSecond(),
                               .newPosition = view.State().HasSelection()
                                                  ? view.State().GetSelection().start
                                                  : view.State().Cursor(),
                               .newLength = view.State().GetSelection().Frames()};
}

}  // namespace sonavel
