// CWavePlayer: a sound that plays itself through a ring of ten device blocks, and that records into
// itself.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "audio/block_ring.h"
#include "audio/peak_search.h"
#include "audio/play_source.h"
#include "audio/player_observer.h"
#include "audio/recorder.h"
#include "platform/wave_device.h"
#include "sound/wave.h"

namespace sonavel {

enum class PlayState { kStopped = 0, kPlaying = 1, kPaused = 3, kRecording = 4 };

class CWavePlayer : public CWave {
  public:
    static constexpr int kBlockCount = BlockRing::kCount;

    CWavePlayer(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices);
    ~CWavePlayer() override;  // stops without reports and drops what was being recorded

    // May be null.
    void SetObserver(PlayerObserver* observer) { observer_ = observer; }
    // Takes the play positions in the observer's place, as a dialog does while it is open; null
    // gives them back.
    void SetPositionObserver(PlayPositionObserver* observer) { positionObserver_ = observer; }

    // Device ids from -2 (none) and -1 (default) to 256; block sizes from 128 to 32767 frames.
    // Values outside are ignored, and others hold from the next start on.
    void SetPlaybackDevice(int id);
    void SetPlaybackBlockFrames(int frames);
    void SetRecordDevice(int id);
    void SetRecordBlockFrames(int frames);

    // --- Playing

    // Byte offsets into the sound, cut off at its end. Each returns false when nothing was started
    // or resumed.
    bool Play(std::uint64_t startByte);
    bool PlayRange(std::uint64_t startByte, std::uint64_t endByte);
    // Leaves out the bytes between the skip bounds, both of which must lie in the range.
    bool PlaySkip(std::uint64_t startByte, std::uint64_t endByte, std::uint64_t skipStart,
                  std::uint64_t skipEnd);
    // Between playing and paused; false in any other state.
    bool Pause();
    enum class StopReport { kSilent, kShow };
    void Stop(StopReport report);
    void SetLooping(bool looping) { source_.SetLooping(looping); }
    bool IsLooping() const { return source_.IsLooping(); }

    PlayState GetState() const { return state_; }
    bool IsStopped() const { return state_ == PlayState::kStopped; }
    bool IsPlaying() const { return state_ == PlayState::kPlaying; }
    bool IsPaused() const { return state_ == PlayState::kPaused; }
    bool IsRecording() const { return state_ == PlayState::kRecording; }

    // The service step: takes finished blocks back, fills and queues them again.
    void Refill();

    // --- Recording

    // Records in the sound's own format until StopRecording. Playing stops first. False when the
    // device cannot be had, which is shown unless the device id is -2.
    bool StartRecording();
    // Ends recording and inserts what came at `cursorFrame` (clamped), as much of it as the memory
    // holds, with a marker "Gap" wherever the device lost sound; other markers keep their frames
    // and the sound is marked modified. False, with the sound unchanged, when nothing was recorded
    // or kept. The sound changes from `cursorFrame` on.
    bool StopRecording(std::uint32_t cursorFrame);
    // Shows, once, why the last recording ended by itself or is not whole. To be called behind
    // StopRecording when everyone knows of the sound's change, because a message box may wait.
    void ReportRecordingEnd();
    // Hears what is recorded; may be null.
    void SetRecordingTap(RecordingTap* tap) { recorder_.SetTap(tap); }
    std::uint32_t GetRecordedFrames() const { return recorder_.RecordedFrames(); }

  private:
    enum class EndReport { kNone, kPosition, kPositionAndLevels };
    struct Report {
        std::uint64_t positionBytes;
        std::uint64_t totalBytes;
        ChannelPeaks peaks;
    };

    // What the devices' notifications call.
    void ServeOutput();
    void ServeInput();
    void TakeRecordedBlocks();

    WaveFormat DeviceFormat() const;
    bool IsActive() const { return IsPlaying() || IsPaused(); }
    bool StopForNewStart();
    bool Start(ByteRange range, std::optional<ByteRange> skip);
    bool OpenOutput();
    WaveResult CloseOutput();
    bool Resume();
    WaveResult QueueBlocks();
    // Shows one error and returns it: the cause, or else what closing the device gave.
    WaveResult EndPlaying(EndReport report, WaveResult cause = kWaveSuccess);
    void FailPlaying(WaveResult result);
    Report MakeReport() const;
    void SendReport(const Report& report);
    void ShowState(std::string_view text);
    void ShowPeaks(const ChannelPeaks& peaks);
    bool InsertRecorded(std::uint32_t frame, const RecordedSound& recorded);
    std::uint32_t GrowBy(std::uint32_t frames);
    void CopyRecorded(ByteRange room, const RecordedSound& recorded);
    void MarkGaps(std::uint32_t frame, std::uint32_t frames, const RecordedSound& recorded);

    WaveDevices& devices_;
    PlayerObserver* observer_ = nullptr;
    PlayPositionObserver* positionObserver_ = nullptr;
    PlayState state_ = PlayState::kStopped;
    int playbackDevice_ = kDefaultWaveDevice;
    int recordDevice_ = kDefaultWaveDevice;
    int playbackBlockFrames_ = kDefaultBlockFrames;
    int recordBlockFrames_ = kDefaultBlockFrames;
    bool busy_ = false;  // keeps a message box's event loop from entering Refill again
    std::unique_ptr<WaveOut> out_;
    BlockRing ring_;
    PlaySource source_;
    Recorder recorder_;
    // What ReportRecordingEnd has to tell.
    WaveResult recordingError_ = kWaveSuccess;
    RecordingEnd recordingEnd_ = RecordingEnd::kNone;
};

}  // namespace sonavel
