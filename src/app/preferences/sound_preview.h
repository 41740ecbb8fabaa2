// A small waveform that shows what colours, rulers and grid will look like.
#pragma once

#include <QWidget>

#include "app/preferences/preferences.h"
#include "sound/sound.h"
#include "view/draw/block_extremes.h"
#include "view/ui/waveform_look.h"

namespace sonavel {

class SoundPreview : public QWidget {
    Q_OBJECT

  public:
    explicit SoundPreview(QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void MakeSound();
    WaveformLook Look(const ViewGeometry& geometry) const;
    void PaintWaveform(QPainter& painter, const WaveformLook& look) const;
    void PaintMarkers(QPainter& painter, const Rectangle& strip, const PixelMap& map) const;
    QColor Colour(ColourSlot slot) const;

    Sound sound_;
    BlockExtremes extremes_;
    Preferences preferences_;
};

}  // namespace sonavel
