// CSoundView: the view of one sound document without any toolkit. It holds what the window shows
// (sizes, zoom, selection, cursor, play position, colours) and tells its window what to repaint.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "document/sound_doc.h"
#include "view/block_extremes.h"
#include "view/colour_table.h"
#include "view/display_settings.h"
#include "view/pixel_map.h"
#include "view/scroll_state.h"
#include "view/selection.h"
#include "view/sound_view_observer.h"
#include "view/view_dialogs.h"
#include "view/view_geometry.h"

namespace sonavel {

class CSoundView : public PlayerObserver, public DocumentObserver {
  public:
    // Registers itself with the document and its sound's player.
    CSoundView(CSoundDoc& document, ViewDialogs& dialogs, ViewHost& host);
    ~CSoundView() override;
    CSoundView(const CSoundView&) = delete;
    CSoundView& operator=(const CSoundView&) = delete;

    // May be null.
    void SetObserver(SoundViewObserver* observer);

    CSoundDoc& Document() { return document_; }
    const CSoundDoc& Document() const { return document_; }
    CWavePlayer& Sound() { return document_.Sound(); }
    const CWavePlayer& Sound() const { return document_.Sound(); }
    ViewDialogs& Dialogs() const { return dialogs_; }
    ViewHost& Host() const { return host_; }
    std::uint32_t FrameCount() const { return Sound().GetFrameCount(); }

    // Why the last command did nothing; empty when it did its work.
    const std::string& LastError() const { return lastError_; }
    // Stores the reason and returns false, for commands to end with.
    bool Refuse(std::string_view reason);
    void ClearError() { lastError_.clear(); }

    // --- Sizes
    // ------------------------------------------------------------------------------------

    // The first show in a client area of this size: reads the settings, loads the colours, fits the
    // sound into the window and applies the default zoom.
    void Show(int width, int height);
    // Keeps both zoom ratios. Ignored before Show.
    void Resize(int width, int height);
    bool IsShown() const { return shown_; }
    const ViewGeometry& Geometry() const { return geometry_; }
    int WaveformWidth() const;
    int WaveformHeight() const;

    // --- Settings
    // ---------------------------------------------------------------------------------

    // Reads Display.ini and Options.ini anew, as after a change of the preferences.
    void ReloadSettings();
    const DisplaySettings& Settings() const { return settings_; }
    const ColourTable& Colours() const { return colours_; }
    // 0 sample numbers, 1 time, 2 seconds; stored in Options.ini.
    void SetStatusFormat(int format);

    // --- Scrolling and zoom
    // -----------------------------------------------------------------------

    const ScrollState& Horizontal() const { return horizontal_; }
    const ScrollState& Vertical() const { return vertical_; }
    PixelMap Pixels() const;
    const BlockExtremes& Extremes() const { return extremes_; }

    enum class ScrollAction { kLineBack, kLineForward, kPageBack, kPageForward, kToStart, kToEnd };
    void ScrollHorizontally(ScrollAction action);
    void ScrollVertically(ScrollAction action);
    void ScrollHorizontallyTo(std::int64_t position);  // pixels of the virtual width
    void ScrollVerticallyTo(std::int64_t position);
    // Moves the least distance that brings the frame into the waveform rectangle.
    void ScrollToShow(std::uint32_t frame);
    bool IsFrameInSight(std::uint32_t frame) const;
    // The frame that the "byte offset of a stereo stream" stands for: half of it for 8-bit sounds,
    // a quarter for 16-bit, whatever the channel count.
    void ScrollToPlayPosition(std::uint64_t position);

    void ZoomTimeIn();
    void ZoomTimeOut();
    void ZoomTimeFull();
    void ZoomLevelIn();
    void ZoomLevelOut();
    void ZoomLevelFull();
    void ZoomToRange(std::uint32_t startFrame, std::uint32_t endFrame);
    void ZoomDefault();
    void ResetTimeZoom();  // fits the window
    // What the dialog "User Defined Zoom" is filled with, and what its OK does.
    UserZoom CurrentUserZoom() const;
    void ApplyUserZoom(const UserZoom& zoom);
    // In or out, keeping the frame under the client pixel `x` there.
    enum class ZoomStep { kIn, kOut };
    void ZoomTimeAt(int x, ZoomStep step);

    std::int64_t TimeZoomRatio() const;  // frames per pixel, 0 when there is no width
    double TimeZoomPercent() const;
    double LevelZoomPercent() const;

    // --- Selection and cursor
    // ---------------------------------------------------------------------

    const Selection& GetSelection() const { return selection_; }
    bool HasSelection() const { return !selection_.IsEmpty(); }
    std::uint32_t Cursor() const { return cursor_; }
    // Each is clamped to the sound and repaints what differs; start and end may come in either
    // order.
    void SetSelection(std::uint32_t start, std::uint32_t end);
    void SetCursor(std::uint32_t frame);
    // The selection, or the whole sound without one.
    Selection SelectionOrAll() const;

    // --- Playing
    // ----------------------------------------------------------------------------------

    // The flags that the transport commands leave for each other and for the window's buttons.
    struct TransportFlags {
        bool playingSelection = false;
        bool playToEnd = false;
    };
    TransportFlags& Transport() { return transport_; }
    const TransportFlags& Transport() const { return transport_; }
    // The column of the play position in client pixels while playing or paused, else nothing.
    std::optional<Rectangle> PlayPosition() const;
    void ClearPlayPosition();
    void ShowStatusText(std::string_view text);
    const std::string& StatusText() const { return statusText_; }
    // The sample values under the pointer, unless the engine plays or records.
    void ShowSampleValues(int x, int y);

    // --- Repainting
    // -------------------------------------------------------------------------------

    void Invalidate(ViewArea area);
    // The waveform, the horizontal ruler and the marker strip.
    void InvalidateTimeAreas();
    // Rebuilds the extremes from this frame on, as after an edit through the document.
    void OnSoundChanged(std::uint32_t firstChangedFrame) override;

    // --- From the document and the player
    // -------------------------------------------------------------

    void OnTitleOrModifiedChanged() override {}
    void MaximizeFrame() override;
    void PlayFromStart() override;
    void OnPlayPosition(std::uint32_t positionBytes, std::uint32_t totalBytes) override;
    void OnPlayState(std::string_view stateText, std::uint32_t frame) override;
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    void OnStopped() override;

  private:
    class WaitCursorScope;

    void SetHorizontal(std::int64_t maximum, std::int64_t position);
    void SetVertical(std::int64_t maximum, std::int64_t position);
    void FitHorizontal();
    void FitVertical();
    void AfterHorizontalChange();
    void AfterVerticalChange();
    void ClampToSound();
    void FollowPlayPosition(std::uint32_t frame);
    void MovePlayColumn(std::uint32_t frame);
    void InvalidateColumn(std::uint32_t frame);

    CSoundDoc& document_;
    ViewDialogs& dialogs_;
    ViewHost& host_;
    SoundViewObserver* observer_ = nullptr;

    bool shown_ = false;
    bool maximizePending_ = false;
    ViewGeometry geometry_;
    DisplaySettings settings_;
    ColourTable colours_;
    ScrollState horizontal_;
    ScrollState vertical_;
    BlockExtremes extremes_;
    unsigned channels_ = 0;  // of the sound when it was last looked at

    Selection selection_;
    std::uint32_t cursor_ = 0;
    TransportFlags transport_;
    std::optional<std::uint32_t> playFrame_;
    int playReports_ = 0;
    int playColumn_ = 0;  // where the play position stands in the window while scrolling
    std::int64_t framesPerPixel_ = 0;
    std::string statusText_;
    std::string lastError_;
};

}  // namespace sonavel
