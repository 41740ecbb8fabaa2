// CSoundView: the view of one sound document without any toolkit. It holds what the window shows
// (sizes, zoom, selection, cursor, play position, colours) and tells its window what to repaint.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "document/sound_doc.h"
#include "view/commands/view_dialogs.h"
#include "view/draw/block_extremes.h"
#include "view/draw/colour_table.h"
#include "view/sound_view_observer.h"
#include "view/state/display_settings.h"
#include "view/state/pixel_map.h"
#include "view/state/preview_reports.h"
#include "view/state/scroll_state.h"
#include "view/state/selection.h"
#include "view/state/view_geometry.h"
#include "view/state/zoom.h"
#include "view/state/zoom_axis.h"

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

    // The first show in a client area of this size: reads the settings, loads the colours, fits the
    // sound into the window and applies the default zoom.
    void Show(int width, int height);
    // Keeps both zoom ratios; a size that was there before brings its zoom back. Ignored before
    // Show.
    void Resize(int width, int height);
    bool IsShown() const { return shown_; }
    // The client area, from 0, 0.
    const Rectangle& Client() const { return client_; }
    const ViewGeometry& Geometry() const { return geometry_; }
    int WaveformWidth() const;
    int WaveformHeight() const;

    // --- Settings

    // Reads Display.ini and Options.ini anew, as after a change of the preferences.
    void ReloadSettings();
    const DisplaySettings& Settings() const { return settings_; }
    const GridSettings& Grid() const { return grid_; }
    const ColourTable& Colours() const { return colours_; }
    StatusFormat GetStatusFormat() const { return statusFormat_; }
    // Stores the format in Options.ini and has every open view take it. False when it cannot be
    // written; it holds all the same.
    bool SetStatusFormat(StatusFormat format);
    // Takes over a format that is stored already.
    void ShowStatusFormat(StatusFormat format);

    // --- Scrolling and zoom

    const ScrollState& Horizontal() const { return horizontal_.Now(); }
    const ScrollState& Vertical() const { return vertical_.Now(); }
    // The window then has a bar to offer; it shows it when it is wanted.
    bool ShowsVerticalScrollBar() const { return IsLevelZoomed(Zoom()); }
    PixelMap Pixels() const { return {FrameCount(), Horizontal()}; }
    const BlockExtremes& Extremes() const { return extremes_; }

    void ScrollHorizontally(ScrollStep step);
    void ScrollVertically(ScrollStep step);
    void ScrollHorizontallyTo(std::int64_t position);  // pixels of the virtual width
    void ScrollVerticallyTo(std::int64_t position);
    bool IsFrameInSight(std::uint32_t frame) const;
    // Brings a frame that is out of sight to the middle of the waveform.
    void ScrollToShow(std::uint32_t frame);
    // A byte offset of the player, taken as that of a stereo sound whatever the channel count.
    void ScrollToPlayPosition(std::int64_t positionBytes);

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

    std::int64_t TimeRatio() const;  // frames per pixel, 0 when there is no width
    double TimePercent() const;
    double LevelPercent() const;

    // --- Selection and cursor

    Selection GetSelection() const { return selectionEnds_.Range(); }
    bool HasSelection() const { return !GetSelection().IsEmpty(); }
    // For the moves that go on from them; everything else works on the selection.
    const SelectionEnds& GetSelectionEnds() const { return selectionEnds_; }
    std::uint32_t Cursor() const { return cursor_; }
    // Each is clamped to the sound and repaints what differs; start and end may come in either
    // order.
    void SetSelection(std::uint32_t start, std::uint32_t end);
    void SetCursor(std::uint32_t frame);
    // Moves the start alone, past the end too; the other end stays where it is.
    void SetSelectionStart(std::uint32_t frame);

    // --- Playing

    // The column of the play position in client pixels while playing or paused, else nothing.
    std::optional<Rectangle> PlayPosition() const;
    // Its frame, likewise.
    std::optional<std::uint32_t> PlayFrame() const { return playFrame_; }
    void ClearPlayPosition();
    // Tells the window when the player is in another state than before; recording has no reports of
    // its own for its start and its end.
    void NoteTransportState();
    void ShowStatusText(std::string_view text);
    // A player's state with the position and length of its sound.
    void ShowPlayState(const CWave& sound, std::string_view stateText, std::uint32_t frame);
    const std::string& StatusText() const { return statusText_; }
    // Ends recording, inserts what was recorded at the cursor and shows the whole sound. False when
    // nothing was recorded, or nothing is being recorded.
    bool EndRecording();
    // The sample values under the pointer, unless the engine plays or records.
    void ShowSampleValues(int x, int y);

    // --- Repainting

    void Invalidate(ViewArea area);
    // The waveform, the horizontal ruler and the marker strip.
    void InvalidateTimeAreas();
    // Rebuilds the extremes from this frame on, as after an edit through the document.
    void OnSoundChanged(std::uint32_t firstChangedFrame) override;

    // --- From the document and the player

    void OnTitleOrModifiedChanged() override {}
    void MaximizeFrame() override;
    void PlayFromStart() override;
    void OnWaiting(Waiting waiting) override;
    void OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) override;
    void OnPlayState(std::string_view stateText, std::uint32_t frame) override;
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    void OnStopped() override;
    void OnRecorded(std::string_view stateText) override;
    void OnRecordingEnded() override { EndRecording(); }

  private:
    class WaitCursorScope;

    ZoomContext Context() const;
    void TakeSettings();
    ZoomState Zoom() const { return {Horizontal(), Vertical()}; }
    void LayOut();
    void Rescale();
    void ApplyTimeZoom(const ZoomState& state);
    void ApplyLevelZoom(const ZoomState& state);
    void AdaptZoomToSound();
    void ClampToSound();
    void FollowPlayPosition(std::uint32_t frame);
    void InvalidateFrames(std::uint32_t a, std::uint32_t b);
    void InvalidateSelectionChange(const Selection& before, const Selection& after);
    void StoreSelection(const SelectionEnds& ends);
    void InvalidatePlayColumn();
    void ShowPlayReport();

    CSoundDoc& document_;
    ViewDialogs& dialogs_;
    ViewHost& host_;
    SoundViewObserver* observer_ = nullptr;
    PreviewReports previewReports_{*this};

    bool shown_ = false;
    bool maximizePending_ = false;
    Rectangle client_;
    ViewGeometry geometry_;
    DisplaySettings settings_;
    GridSettings grid_;
    StatusFormat statusFormat_ = StatusFormat::kTime;
    ColourTable colours_;
    ZoomAxis horizontal_;
    ZoomAxis vertical_;
    BlockExtremes extremes_;

    SelectionEnds selectionEnds_;
    std::uint32_t cursor_ = 0;
    PlayState lastState_ = PlayState::kStopped;
    std::optional<std::uint32_t> playFrame_;
    int playReports_ = 0;
    std::optional<std::int64_t> playColumn_;  // where play scrolling keeps the position, in pixels
    // What the status text tells of a player, the sound's or the preview's, if it does: it follows
    // that sound's length and the status format.
    struct PlayReport {
        const CWave* sound = nullptr;
        std::string state;
        std::uint32_t frame = 0;
    };
    std::optional<PlayReport> playReport_;
    std::string statusText_;
    std::string lastError_;
};

// The dialog "User Defined Zoom". False when it was cancelled or there is no sound.
bool AskUserZoom(CSoundView& view);

}  // namespace sonavel
