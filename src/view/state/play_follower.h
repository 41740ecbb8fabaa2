// What a view makes of its player's reports: the column of the play position, play scrolling, the
// state text and the end of a recording.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "document/sound_doc.h"
#include "view/state/preview_reports.h"
#include "view/state/view_settings.h"
#include "view/state/view_state.h"

namespace sonavel {

class PlayFollower : public PlayerObserver {
  public:
    // Registers itself with the players of the document's sound and of its preview. All must
    // outlive it.
    PlayFollower(CSoundDoc& document, ViewState& state, const ViewSettings& settings,
                 const RepaintNotes& notes);
    ~PlayFollower() override;
    PlayFollower(const PlayFollower&) = delete;
    PlayFollower& operator=(const PlayFollower&) = delete;

    // Who is shown the peaks of both players, in the values of the document's sound; may be null.
    void SetMeter(PeakObserver* meter) { meter_ = meter; }

    // The column of the play position in client pixels while playing or paused, else nothing.
    std::optional<Rectangle> PlayPosition() const;
    // Its frame, likewise.
    std::optional<std::uint32_t> PlayFrame() const { return playFrame_; }
    void ClearPlayPosition();
    // Tells the window when the player is in another state than before; recording has no reports of
    // its own for its start and its end.
    void NoteTransportState();

    const std::string& StatusText() const { return statusText_; }
    void ShowStatusText(std::string_view text);
    // A player's state with the position and length of its sound.
    void ShowPlayState(const CWave& sound, std::string_view stateText, std::uint32_t frame);
    // The state's text anew, after a change of the sound's length or of the status format.
    void RefreshPlayState();

    // Ends recording, inserts what was recorded at the cursor and shows the whole sound. Fails when
    // nothing was recorded, or nothing is being recorded.
    Outcome EndRecording();

    // --- From the player

    void OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) override;
    void OnPlayState(std::string_view stateText, std::uint32_t frame) override;
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    void OnStopped() override;
    void OnRecorded(std::string_view stateText) override;
    void OnRecordingEnded() override;

  private:
    // What the status text tells of a player, the sound's or the preview's, if it does: it follows
    // that sound's length and the status format.
    struct PlayReport {
        const CWave* sound = nullptr;
        std::string state;
        std::uint32_t frame = 0;
    };

    void Forget();
    void Follow(std::uint32_t frame);
    void NoteColumn() const;

    CSoundDoc& document_;
    ViewState& state_;
    const ViewSettings& settings_;
    const RepaintNotes& notes_;
    PreviewReports previewReports_;
    PeakObserver* meter_ = nullptr;
    PlayState lastState_ = PlayState::kStopped;
    std::optional<std::uint32_t> playFrame_;
    int playReports_ = 0;
    std::optional<std::int64_t> playColumn_;  // where play scrolling keeps the position, in pixels
    std::optional<PlayReport> playReport_;
    std::string statusText_;
};

}  // namespace sonavel
