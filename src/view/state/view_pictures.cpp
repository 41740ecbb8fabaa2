#include "view/state/view_pictures.h"

#include <utility>

namespace sonavel {

void ViewPictures::Choose(SoundPicture picture) {
    now_ = picture;
    if (picture == SoundPicture::kWaveform) tiles_.Rest();
}

bool ViewPictures::ShowsOverview() const {
    constexpr double kLongSeconds = 600;
    if (overview_ == OverviewOf::kLongSounds) return sound_.GetDuration() > kLongSeconds;
    return overview_ == OverviewOf::kAllSounds;
}

void ViewPictures::TakeOverview(OverviewOf overview) {
    if (std::exchange(overview_, overview) != overview) notes_.Window().OnOverviewChanged();
}

}  // namespace sonavel
