// The strip over a waveform that shows the whole sound and, as a frame to drag, what the waveform
// shows of it. A press beside the frame goes there.
#pragma once

#include <QImage>
#include <QWidget>

#include "view/draw/overview.h"
#include "view/sound_view.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

class OverviewStrip : public QWidget {
    Q_OBJECT

  public:
    // Of the view in that window; it must not outlive it.
    explicit OverviewStrip(SoundViewWidget& window, QWidget* parent = nullptr);

    // As the view has it: shows or hides itself. To be called when the sound has changed, too.
    void FollowView();
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    int ShownWidth() const { return view_.State().WaveformWidth(); }
    void DrawWaveform();
    void PaintPlaces(QPainter& painter) const;
    void PaintFrame(QPainter& painter) const;
    void ScrollTo(std::optional<std::int64_t> position);

    CSoundView& view_;
    OverviewDrag drag_;
    // The waveform in device pixels, of that content and those colours.
    QImage image_;
    std::uint64_t revision_ = 0;
    ColourTable colours_;
};

}  // namespace sonavel
