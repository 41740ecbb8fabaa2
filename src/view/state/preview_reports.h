// What the player of a document's preview sound reports, handed on to who follows the sound itself:
// its state text and its peaks.
#pragma once

#include "audio/player_observer.h"

namespace sonavel {

class CSoundDoc;
class PlayFollower;

class PreviewReports : public PlayerObserver {
  public:
    PreviewReports(const CSoundDoc& document, PlayFollower& follower)
        : document_(document), follower_(follower) {}

    // Positions go to whoever asked the player for them; in the sound they would name other frames.
    void OnPlayPosition(std::uint64_t, std::uint64_t) override {}
    void OnPlayState(std::string_view stateText, std::uint32_t frame) override;
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    // Also after a stop that showed nothing, the levels are at rest and the text says so.
    void OnStopped() override;

  private:
    const CSoundDoc& document_;
    PlayFollower& follower_;
    std::uint32_t frame_ = 0;
    bool showsStopped_ = true;
};

}  // namespace sonavel
