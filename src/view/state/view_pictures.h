// Which pictures of its sound a view shows, and the tiles of its spectrogram.
#pragma once

#include "sound/wave.h"
#include "view/draw/spectrogram_tiles.h"
#include "view/state/display_settings.h"
#include "view/state/repaint_notes.h"

namespace sonavel {

class ViewPictures {
  public:
    // Both must outlive it.
    ViewPictures(const CWave& sound, const RepaintNotes& notes) : sound_(sound), notes_(notes) {}

    SoundPicture Now() const { return now_; }
    // Who calls it has the view laid out anew.
    void Choose(SoundPicture picture);
    // What has been computed of the spectrogram, for whoever draws it.
    SpectrogramTiles& Tiles() const { return tiles_; }

    // The strip over the waveform with the whole sound.
    bool ShowsOverview() const;
    void TakeOverview(OverviewOf overview);

  private:
    const CWave& sound_;
    const RepaintNotes& notes_;
    SoundPicture now_ = SoundPicture::kWaveform;
    OverviewOf overview_ = OverviewOf::kLongSounds;
    mutable SpectrogramTiles tiles_;
};

}  // namespace sonavel
