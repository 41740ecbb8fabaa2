// Plays a range live: one thread makes renderers of what is set, another renders a little ahead of
// the device, and the device takes what is there. None of them waits for the user-interface thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <thread>
#include <vector>

#include "audio/frame_ring.h"
#include "audio/live_loop.h"
#include "platform/frame_out.h"
#include "platform/wake_up.h"

namespace sonavel {

// Makes renderers of what a person sets. Without memory it throws std::bad_alloc.
class LiveMaker {
  public:
    virtual ~LiveMaker() = default;

    virtual LiveRange Range() const = 0;
    // The range as it is.
    virtual std::unique_ptr<LiveRenderer> MakeUntouched() = 0;
    // Of what was set last; null when nothing has been set since, or when it cannot be rendered. On
    // a thread of its own, one call at a time.
    virtual std::unique_ptr<LiveRenderer> MakeLatest() = 0;
};

// The greatest magnitudes, as shares of full scale.
struct LivePeaks {
    float left = 0;
    float right = 0;
};

class LivePlayer final : private FrameSupply {
  public:
    LivePlayer(std::unique_ptr<LiveMaker> maker, WaveDevices& devices);
    ~LivePlayer();
    LivePlayer(const LivePlayer&) = delete;
    LivePlayer& operator=(const LivePlayer&) = delete;

    // Begins with the range's first frame. `onLost`: the device is lost, from the event loop.
    // Once; on failure nothing runs.
    WaveResult Start(int deviceId, std::function<void()> onLost);
    // Silent at once.
    void Stop();
    bool IsPlaying() const { return out_ != nullptr; }
    // Of the device, while playing.
    WaveResult Loss() const { return out_ ? out_->Loss() : kWaveSuccess; }

    // To be called when something has been set.
    void MakeAnew() { set_.Raise(); }
    void SetBypass(Bypass bypass) { bypass_ = bypass; }

    // The frame of the range that is heard now.
    std::uint32_t HeardFrame() const;
    // Of what was played since it was asked for last.
    LivePeaks TakePeaks();
    // How many frames the device asked for when none were there, once the first had come.
    std::uint64_t MissedFrames() const { return missed_; }
    // The most frames between what is rendered and what the device takes: 30 ms, more for a device
    // that asks for more at once.
    std::uint32_t AheadFrames() const { return aheadFrames_; }

  private:
    bool Prepare();
    void Pull(std::span<float> pairs, std::uint32_t latencyFrames) override;
    bool Flows();
    void NotePeaks(std::span<const float> pairs);
    void MakeUntilStopped();
    std::unique_ptr<LiveRenderer> MakeReady();
    void RenderUntilStopped();
    bool HasToRender() const;
    void DropMade() { delete made_.exchange(nullptr); }

    std::unique_ptr<LiveMaker> maker_;
    WaveDevices& devices_;
    LiveRange range_;
    std::unique_ptr<LiveLoop> loop_;  // of the rendering thread, and its room for a piece
    std::vector<float> piece_;
    std::unique_ptr<FrameRing> ring_;
    bool flows_ = false;  // of the device's thread: as much as is to be ahead was there once
    std::unique_ptr<FrameOut> out_;

    std::atomic<bool> stopping_{false};
    std::atomic<std::uint32_t> aheadFrames_;
    std::atomic<Bypass> bypass_{Bypass::kOff};
    std::atomic<LiveRenderer*> made_{nullptr};  // for the rendering thread, which owns it then
    std::atomic<std::uint32_t> renderedTo_{0};
    std::atomic<std::uint32_t> latencyFrames_{0};
    std::atomic<std::uint64_t> missed_{0};
    std::atomic<float> leftPeak_{0};
    std::atomic<float> rightPeak_{0};
    WakeUp set_;
    WakeUp room_;
    std::thread making_;
    std::thread rendering_;
};

}  // namespace sonavel
