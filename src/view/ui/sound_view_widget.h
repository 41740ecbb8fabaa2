// The window of a sound view: turns mouse and keys into the view's gestures and commands, and shows
// the view through an off-screen picture, two scroll bars and three zoom buttons.
#pragma once

#include <QBasicTimer>
#include <QScrollBar>
#include <QWidget>

#include "view/input/mouse_input.h"
#include "view/sound_view.h"
#include "view/ui/command_menu.h"
#include "view/ui/context_menus.h"
#include "view/ui/level_bar.h"
#include "view/ui/marker_name_edit.h"
#include "view/ui/waveform_canvas.h"
#include "view/ui/zoom_button.h"

class QSinglePointEvent;

namespace sonavel {

class SoundViewWidget : public QWidget, private SoundViewObserver {
    Q_OBJECT

  public:
    // Both must outlive the widget, which is the view's observer until it is destroyed. Keys and
    // context menus run through the actions.
    SoundViewWidget(CSoundView& view, CommandActions& actions, QWidget* parent = nullptr);
    ~SoundViewWidget() override;

    CSoundView& View() { return view_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void SelectionChanged();  // or the cursor
    void ScrollChanged();     // or the zoom
    void StatusTextChanged(const QString& text);
    void ColoursChanged();
    void TransportChanged();
    void OverviewChanged();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void Invalidate(ViewArea area) override;
    void InvalidateRectangle(const Rectangle& rectangle) override;
    void OnScrollChanged() override;
    void OnSelectionChanged() override;
    void OnStatusText(std::string_view text) override;
    void SetWaitCursor(WaitCursor cursor) override;
    void OnColoursChanged() override;
    void OnNameWanted(const NameWanted& wanted) override;
    void OnTransportChanged() override;
    void OnOverviewChanged() override;

    void AddScrollBars();
    void AddZoomButtons();
    ZoomButton* AddZoomButton(ZoomButton::Picture picture, const QString& toolTip);
    void FitView();
    void LayOutChildren();
    void ShowScrollStates();
    void OnScrollBarAction(Qt::Orientation orientation, int action);

    void FollowWaveform();
    void ScrollWaveform(const WaveformCanvas::Update& change);
    void ShowNewTiles();
    void PaintWaveform(QPainter& painter, const QRect& area);
    void PaintColumns(QPainter& painter);

    PointerEvent PointerOf(const QSinglePointEvent& event) const;
    bool HoldsMarkerAt(const QPointF& position) const;
    void FollowDrag();
    void ShowPointerShape(const QPointF& position);
    // What the mouse leaves to the window, at that place of the widget.
    void Carry(MouseRequest request, const QPoint& place);
    void OpenContextMenu(ContextMenu menu, const QPoint& globalPosition);

    CSoundView& view_;
    CommandActions& actions_;
    MouseInput mouse_;
    WaveformCanvas canvas_;
    QScrollBar* horizontalBar_ = nullptr;
    LevelBar* verticalBar_ = nullptr;
    ZoomButton* timeZoom_ = nullptr;
    ZoomButton* levelZoom_ = nullptr;
    ZoomButton* zoomer_ = nullptr;
    QBasicTimer dragTimer_;
    // Where the last paint left the cursor and the play position: a scroll moves them along.
    QRegion paintedColumns_;
};

}  // namespace sonavel
