// Who is told what a player does. All calls come on the user-interface thread.
#pragma once

#include <cstdint>
#include <string_view>

namespace sonavel {

class PlayPositionObserver {
  public:
    virtual ~PlayPositionObserver() = default;

    // Byte offset of the block that is being heard, of `totalBytes`; equal to it when playing has
    // ended.
    virtual void OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) = 0;
};

class PeakObserver {
  public:
    virtual ~PeakObserver() = default;

    // Peaks for both meter channels as sample magnitudes, a mono sound's on both; -999999 for an
    // empty range.
    virtual void OnPeaks(std::int32_t left, std::int32_t right) = 0;
};

class PlayerObserver : public PlayPositionObserver, public PeakObserver {
  public:
    // "(Stopped) ", "(Playing) ", "(Pausing) "; the frame is that of the next byte to be queued.
    virtual void OnPlayState(std::string_view stateText, std::uint32_t frame) = 0;
    // Playing has stopped and the device is closed.
    virtual void OnStopped() = 0;
    // "(Recording)" with the recorded time, samples and bytes, and how many gaps there are; once
    // for every recorded block.
    virtual void OnRecorded(std::string_view /*stateText*/) {}
    // The recording cannot go on: the device is lost, or there is no more room. Who is told ends it
    // with StopRecording; else the player does, at the start of the sound.
    virtual void OnRecordingEnded() {}
};

}  // namespace sonavel
