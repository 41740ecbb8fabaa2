// Draws strips of the waveform area into an image of device pixels. The envelope is computed in
// device pixels, so that it is as sharp as the screen.
#pragma once

#include <QImage>
#include <QPainter>

#include "view/draw/envelope.h"
#include "view/ui/waveform_look.h"

namespace sonavel {

struct WaveformSource {
    const Sound& wave;
    const BlockExtremes& extremes;                  // of that sound
    const SpectrogramTiles* spectrogram = nullptr;  // likewise, as wanted for that look
};

class WaveformRenderer {
  public:
    WaveformRenderer(QImage& image, const WaveformLook& look, const WaveformSource& source);

    // Columns [first, last) in pixels from the waveform's left edge, full height.
    void RenderStrip(ColumnRange strip);

  private:
    Rectangle Local(const Rectangle& rectangle) const;
    void FillBackground(QPainter& painter) const;
    void FillBetween(QPainter& painter, const std::array<Rectangle, 2>& lanes) const;
    void DrawGrid(QPainter& painter) const;
    void DrawLaneLines(QPainter& painter, unsigned channel) const;
    // The device row at which silence is drawn, so that it covers the line.
    std::optional<int> CentreRow(unsigned channel) const;
    void DrawSpectrogram(unsigned channel, ColumnRange deviceStrip) const;
    void DrawEnvelope(unsigned channel, ColumnRange deviceStrip) const;
    bool IsWiderThanSound() const;
    EnvelopeRequest PixelRequest(unsigned channel) const;
    EnvelopeRequest DeviceRequest(unsigned channel) const;
    int ToDevice(int pixels) const;
    QRgb Pen(ColumnPen pen) const;

    QImage& image_;
    const WaveformLook& look_;
    WaveformSource source_;
};

}  // namespace sonavel
