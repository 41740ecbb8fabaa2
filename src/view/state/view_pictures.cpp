#include "view/state/view_pictures.h"

namespace sonavel {

void ViewPictures::Choose(SoundPicture picture) {
    now_ = picture;
    if (picture == SoundPicture::kWaveform) tiles_.Rest();
}

bool ViewPictures::ShowsOverview() const {
    constexpr double kLongSeconds = 600;
    return overview_.value_or(sound_.GetDuration() > kLongSeconds);
}

void ViewPictures::ShowOverview(bool shown) {
    overview_ = shown;
    notes_.Window().OnOverviewChanged();
}

}  // namespace sonavel
