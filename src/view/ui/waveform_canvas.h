// The off-screen picture of the waveform area: background, selection, grid, lanes with their
// envelopes. The cursor and the play position are not part of it, so that moving them draws nothing
// anew.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRegion>

#include "view/ui/waveform_look.h"

namespace sonavel {

class WaveformCanvas {
  public:
    // What the window must show anew after Follow(); pixels from the waveform's left top corner.
    struct Update {
        enum class Kind { kNothing, kParts, kScrolled, kAll };
        Kind kind = Kind::kNothing;
        int scrolledBy = 0;  // to the right; before `parts` are shown
        QRegion parts;
    };

    // Takes over the view's present look. What needs more than a few strips is drawn by the next
    // Draw().
    Update Follow(const CSoundView& view, double pixelRatio);
    // Columns of the spectrogram have come about, in device pixels of the whole sound: draws them,
    // or leaves them to the next Draw().
    Update ShowColumns(const CSoundView& view, const ColumnSpan& columns);
    // Draws `source` (pixels from the left top corner) of the picture there in the window.
    void Draw(QPainter& painter, const QRect& source, const CSoundView& view);
    // Likewise of the picture that was drawn last, while the sound is no sight.
    void DrawAsItWas(QPainter& painter, const QRect& source) const;
    // The picture in device pixels, complete after Draw().
    const QImage& Image() const { return image_; }

  private:
    Update All();
    Update Scroll(const CSoundView& view, std::int64_t distance);
    Update Reselect(const CSoundView& view, const Selection& before);
    void RenderAll(const CSoundView& view);

    WaveformLook look_;
    bool complete_ = false;
    QImage image_;
};

}  // namespace sonavel
