// CSoundView: the view of one sound document without any toolkit. It owns what the window shows, in
// parts, and joins them to the document.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "document/sound_doc.h"
#include "view/commands/view_questions.h"
#include "view/draw/block_extremes.h"
#include "view/state/play_follower.h"
#include "view/state/repaint_notes.h"
#include "view/state/view_pictures.h"
#include "view/state/view_settings.h"
#include "view/state/view_state.h"

namespace sonavel {

class CSoundView : public DocumentObserver {
  public:
    // Registers itself with the document and its players.
    CSoundView(CSoundDoc& document, ViewHost& host);
    ~CSoundView() override;
    CSoundView(const CSoundView&) = delete;
    CSoundView& operator=(const CSoundView&) = delete;

    // May be null.
    void SetObserver(SoundViewObserver* observer) { repaint_.SetWindow(observer); }

    CSoundDoc& Document() { return document_; }
    const CSoundDoc& Document() const { return document_; }
    CWavePlayer& Sound() { return document_.Sound(); }
    const CWavePlayer& Sound() const { return document_.Sound(); }
    ViewHost& Host() const { return host_; }
    std::uint32_t FrameCount() const { return Sound().GetFrameCount(); }

    // --- Its parts

    ViewState& State() { return state_; }
    const ViewState& State() const { return state_; }
    ViewZoom& Zoom() { return state_.Zoom(); }
    const ViewZoom& Zoom() const { return state_.Zoom(); }
    PlayFollower& Playing() { return playing_; }
    const PlayFollower& Playing() const { return playing_; }
    // Of the sound as it is now: what has changed is read when it is asked for, so that several
    // edits in a row, or edits that nobody looks at, read the sound once or never.
    const BlockExtremes& Extremes() const;
    ViewPictures& Pictures() { return pictures_; }
    const ViewPictures& Pictures() const { return pictures_; }
    const RepaintNotes& Repaint() const { return repaint_; }

    // --- Sizes

    // The first show in a client area of this size: reads the settings, loads the colours, fits the
    // sound into the window and applies the default zoom.
    void Show(int width, int height);
    // Keeps both zoom ratios; a size that was there before brings its zoom back. Ignored before
    // Show.
    void Resize(int width, int height);

    // --- Settings

    const ViewSettings& Settings() const { return settings_; }
    // Reads Display.ini and Options.ini anew, as after a change of the preferences.
    void ReloadSettings();
    // Stores the format in Options.ini and has every open view take it. Fails when it cannot be
    // written; it holds all the same.
    Outcome SetStatusFormat(StatusFormat format);
    // Likewise of what is turned on or off.
    Outcome Turn(ViewSwitch which, Turned turned);
    // Shows, and stores nothing: holds until the next ReloadSettings().
    void ShowChosen(const ViewChoice& choice);

    // --- From the document

    // Notes that the extremes have changed from this frame on, as after an edit through the
    // document.
    void OnSoundChanged(std::uint32_t firstChangedFrame) override;
    void OnWaiting(Waiting waiting) override;

  private:
    void OnTitleOrModifiedChanged() override {}
    void TakeSettings();
    GeometryRequest GeometryOf(int width, int height) const;

    CSoundDoc& document_;
    ViewHost& host_;
    RepaintNotes repaint_;
    ViewSettings settings_;
    mutable BlockExtremes extremes_;
    unsigned channels_ = 0;  // as last shown
    ViewPictures pictures_{document_.Sound(), repaint_};
    ViewState state_{document_.Sound(), repaint_};
    PlayFollower playing_{document_, state_, settings_, repaint_};
};

// Back to the zoom of the first show.
void ZoomDefault(CSoundView& view);
// Shows the view's sound so, and notes it in Display.ini for sounds that are opened later. Fails
// when it cannot be written; it holds all the same.
Outcome ShowAs(CSoundView& view, SoundPicture picture);
// Stores over which sounds the strip with the whole sound stands and has every open view take it,
// likewise.
Outcome StoreOverview(CSoundView& view, OverviewOf overview);
// Stores how spectrograms look and has every open view take it, likewise.
Outcome StoreSpectrogram(CSoundView& view, const SpectrogramSettings& settings);

}  // namespace sonavel
