// The input side: a ring of device blocks whose data is kept, block by block, until recording ends.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "audio/block_ring.h"
#include "audio/peak_search.h"
#include "platform/wave_device.h"

namespace sonavel {

// What came from the device, in order of arrival and in whole frames.
struct RecordedSound {
    std::vector<std::vector<std::uint8_t>> blocks;  // to move it takes no memory
    std::uint64_t bytes = 0;
    // Where the device lost sound: what comes from this byte on does not follow what is before it.
    std::vector<std::uint64_t> gaps;
};

struct RecorderSettings {
    int deviceId = kDefaultWaveDevice;
    WaveFormat format;
    std::uint32_t blockFrames = 1024;
    std::uint64_t limitBytes = 0;  // sound beyond it is dropped
};

// Hears what is recorded while it comes, on the thread of the recorder's owner.
class RecordingTap {
  public:
    virtual ~RecordingTap() = default;

    virtual void OnRecorded(std::span<const std::uint8_t> wholeFrames) = 0;
};

// Why a recording cannot go on.
enum class RecordingEnd { kNone, kDeviceLost, kFull, kNoMemory };

class Recorder {
  public:
    explicit Recorder(WaveDevices& devices) : devices_(devices) {}
    ~Recorder();  // closes the device; what was recorded is lost
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Forgets what was recorded before and starts the device. On failure it is closed again.
    WaveResult Start(const RecorderSettings& settings, WaveBlockDone onBlockDone);
    // Takes one block that the device has filled, keeps its data and hands the device a new one.
    // Returns the block's peaks; nothing when no block with sound is waiting.
    std::optional<ChannelPeaks> TakeBlock();
    // Once blocks have been taken: kFull when not one frame more has room.
    RecordingEnd End() const;
    // Ends recording, keeps the blocks that the device then hands back, and closes it. The first
    // error of the device, also that with which it was lost.
    WaveResult Stop();
    // Hands over what was recorded.
    RecordedSound Take();

    // May be null.
    void SetTap(RecordingTap* tap) { tap_ = tap; }

    std::uint64_t RecordedBytes() const { return recorded_.bytes; }
    std::uint32_t RecordedFrames() const;
    std::size_t GapCount() const { return recorded_.gaps.size(); }

  private:
    WaveResult OpenAndQueue(WaveBlockDone onBlockDone);
    WaveResult QueueFreeBlocks();
    std::optional<ChannelPeaks> KeepOldest();
    void Append(WaveBlock& block, std::size_t bytes);
    WaveResult Close();

    WaveDevices& devices_;
    std::unique_ptr<WaveIn> in_;
    BlockRing ring_;
    RecorderSettings settings_;
    RecordedSound recorded_;
    bool open_ = false;
    bool outOfMemory_ = false;
    RecordingTap* tap_ = nullptr;
};

}  // namespace sonavel
