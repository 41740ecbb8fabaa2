// What the player of a document's preview sound reports, handed on to the document's view: its
// state text and its peaks, like those of the sound itself.
#pragma once

#include "audio/player_observer.h"

namespace sonavel {

class CSoundView;

class PreviewReports : public PlayerObserver {
  public:
    explicit PreviewReports(CSoundView& view) : view_(view) {}

    // Positions go to whoever asked the player for them; in the view they would name other frames.
    void OnPlayPosition(std::uint64_t, std::uint64_t) override {}
    void OnPlayState(std::string_view stateText, std::uint32_t frame) override;
    void OnPeaks(std::int32_t left, std::int32_t right) override;
    // Also after a stop that showed nothing, the levels are at rest and the text says so.
    void OnStopped() override;

  private:
    CSoundView& view_;
    std::uint32_t frame_ = 0;
    bool showsStopped_ = true;
};

}  // namespace sonavel
