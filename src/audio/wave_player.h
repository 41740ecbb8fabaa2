// CWavePlayer: a sound that plays itself through a ring of ten device blocks.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/wave_device.h"
#include "sound/wave.h"

namespace sonavel {

enum class PlayState { kStopped = 0, kPlaying = 1, kPaused = 3, kRecording = 4 };

// Who shows what the player does. All calls come on the user-interface thread.
class PlayerObserver {
  public:
    virtual ~PlayerObserver() = default;

    // Byte offset of the oldest queued block, of `totalBytes`; equal to it when playing has ended.
    virtual void OnPlayPosition(std::uint32_t positionBytes, std::uint32_t totalBytes) = 0;
    // "(Stopped) ", "(Playing) ", "(Pausing) "; the frame is that of the current position.
    virtual void OnPlayState(std::string_view stateText, std::uint32_t frame) = 0;
    // Peaks of both meter channels as sample magnitudes; -999999 for an empty range.
    virtual void OnPeaks(std::int32_t left, std::int32_t right) = 0;
    // Playing has stopped and the device is closed.
    virtual void OnStopped() = 0;
};

class CWavePlayer : public CWave {
  public:
    static constexpr int kBlockCount = 10;
    static constexpr int kDefaultBlockFrames = 1024;

    CWavePlayer(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices);
    ~CWavePlayer() override;  // stops without reports

    // Both may be null. The view observes everything; a dialog that is open gets the positions too.
    void SetObserver(PlayerObserver* observer) { observer_ = observer; }

    // Device ids from -2 (none) and -1 (default) to 256; block sizes from 128 to 32767 frames. Values
    // outside are ignored.
    void SetPlaybackDevice(int id);
    void SetPlaybackBlockFrames(int frames);
    void SetRecordDevice(int id);
    void SetRecordBlockFrames(int frames);

    // Byte offsets into the sound. Each returns false when nothing was started or resumed.
    bool Play(std::uint32_t startByte);
    bool PlayRange(std::uint32_t startByte, std::uint32_t endByte);
    bool PlaySkip(std::uint32_t startByte, std::uint32_t endByte, std::uint32_t skipStart,
                  std::uint32_t skipEnd);
    // Between playing and paused.
    bool Pause();
    enum class StopReport { kSilent, kShow };
    void Stop(StopReport report);
    void SetLooping(bool looping);
    bool IsLooping() const;

    PlayState GetState() const { return state_; }
    bool IsStopped() const { return state_ == PlayState::kStopped; }
    bool IsPlaying() const { return state_ == PlayState::kPlaying; }
    bool IsPaused() const { return state_ == PlayState::kPaused; }
    bool IsRecording() const { return state_ == PlayState::kRecording; }

    // The service step: takes finished blocks back, fills and queues them again.
    void Refill();

  private:
    PlayerObserver* observer_ = nullptr;
    PlayState state_ = PlayState::kStopped;
    WaveDevices& devices_;
};

}  // namespace sonavel
