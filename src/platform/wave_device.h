// Wave-audio devices as the player and the recorder see them: a device takes prepared blocks one
// after another, and marks each as done when it has played or filled it.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace sonavel {

inline constexpr int kDefaultWaveDevice = -1;
inline constexpr int kNoWaveDevice = -2;
inline constexpr int kDefaultBlockFrames = 1024;

// 8-bit samples are unsigned bytes around 128, 16-bit samples little-endian signed words, 32-bit
// samples floats of +-1, which a device that takes none of them plays as 16 bits with dither, held
// at full scale. Frames are interleaved, left first.
struct WaveFormat {
    std::uint16_t channels = 1;
    std::uint32_t samplesPerSecond = 44100;
    std::uint16_t bitsPerSample = 16;

    std::uint32_t BlockAlign() const { return channels * (bitsPerSample / 8u); }
};

// One block of a device's ring. Between Write (or Add) and the done flag it belongs to the device,
// which must not move it.
struct WaveBlock {
    std::vector<std::uint8_t> data;   // always played or offered whole
    std::uint32_t recordedBytes = 0;  // input only: how much of it the device filled
    bool afterGap = false;            // input only: sound was lost before its first frame
    std::atomic<bool> done{false};    // set by the device, cleared by Write and Add
};

// What every call returns: 0 for success, else 1 to 20, the platform's multimedia error codes.
using WaveResult = int;
inline constexpr WaveResult kWaveSuccess = 0;
inline constexpr WaveResult kWaveUnexpectedError = 1;
inline constexpr WaveResult kWaveBadDeviceId = 2;
inline constexpr WaveResult kWaveNotEnabled = 3;
inline constexpr WaveResult kWaveAllocated = 4;
inline constexpr WaveResult kWaveInvalidHandle = 5;
inline constexpr WaveResult kWaveNoDriver = 6;
inline constexpr WaveResult kWaveNoMemory = 7;
inline constexpr WaveResult kWaveNotSupported = 8;
inline constexpr WaveResult kWaveNoAnswer = 20;  // the device hangs

// Told that at least one block is done (several may share one call), or that the device is lost. It
// comes from the host's event loop, on the thread that opened the device, never from inside a call
// of the device.
using WaveBlockDone = std::function<void()>;

// What outputs and inputs have in common.
class WaveDevice {
  public:
    // Closes the device when it is open.
    virtual ~WaveDevice() = default;

    // `deviceId`: kDefaultWaveDevice or an index of the host's device list.
    virtual WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) = 0;
    virtual WaveResult Prepare(WaveBlock& block) = 0;
    // Stops at once; every queued block comes back as done.
    virtual WaveResult Reset() = 0;
    virtual WaveResult Unprepare(WaveBlock& block) = 0;
    virtual WaveResult Close() = 0;

    // Why an open device moves no more blocks, which nobody asked it to: it went away, or hangs.
    // It must be closed then, which succeeds; opening it anew may find it again.
    virtual WaveResult Loss() const { return kWaveSuccess; }
};

class WaveOut : public WaveDevice {
  public:
    virtual WaveResult Write(WaveBlock& block) = 0;
    virtual WaveResult Pause() = 0;
    virtual WaveResult Restart() = 0;
};

class WaveIn : public WaveDevice {
  public:
    virtual WaveResult Add(WaveBlock& block) = 0;
    virtual WaveResult Start() = 0;
    // Ends recording; the block being filled comes back as done with what it holds.
    virtual WaveResult Stop() = 0;
};

struct WaveDeviceInfo {
    int id = kDefaultWaveDevice;
    std::string name;
};

// The devices of one direction. kDefaultWaveDevice can be opened only where there is a default.
struct WaveDeviceList {
    std::vector<WaveDeviceInfo> devices;
    bool hasDefault = false;
};

class FrameOut;

// The host's devices.
class WaveDevices {
  public:
    virtual ~WaveDevices() = default;

    virtual std::unique_ptr<WaveOut> CreateOut() = 0;
    virtual std::unique_ptr<WaveIn> CreateIn() = 0;
    // Null where there is none (frame_out.h).
    virtual std::unique_ptr<FrameOut> CreateFrameOut();
    virtual WaveDeviceList Outputs() const = 0;
    virtual WaveDeviceList Inputs() const = 0;
    // Looks for devices that have come or gone since they were listed. While one of them is open
    // this may find nothing new.
    virtual void ListAnew() {}
};

}  // namespace sonavel
