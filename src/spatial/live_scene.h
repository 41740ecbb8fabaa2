// A scene heard live: every source rendered as Apply does, mixed, over and over, while the sources
// are moved and made louder. What has not been moved is not made anew.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "audio/live_player.h"
#include "platform/latest_value.h"
#include "spatial/placing.h"

namespace sonavel {

class PlacedRange;

struct LiveSource {
    std::shared_ptr<const Sound> sound{};  // its channel 0; not empty
    std::uint32_t start = 0;               // frames of the scene
};

struct LiveSetting {
    Placing placing{};
    double gain = 0;  // dB
};

class LiveScene : public LiveMaker {
  public:
    // At this rate, in frames a second; sounds of other rates are resampled when they are heard
    // first. At least one source. The sounds stay as they are; the listener is used by nobody else
    // meanwhile.
    LiveScene(std::vector<LiveSource> sources, std::uint32_t framesPerSecond, Listener& listener);
    ~LiveScene() override;

    // One for each source. On one thread, beside the one that makes renderers. Of a placing without
    // points the last one stays heard.
    void Set(std::vector<LiveSetting> settings);

    // To the end of the last sound.
    LiveRange Range() const override;
    // The sounds with their gains, on both sides.
    std::unique_ptr<LiveRenderer> MakeUntouched() override;
    std::unique_ptr<LiveRenderer> MakeLatest() override;

    enum class Making { kKept, kFirst, kAnew };  // of a source's range

    // Shared with the renderers, which may be heard while other ones are made.
    struct Source {
        // At the scene's rate; null until it is resampled.
        std::atomic<const Sound*> sound{nullptr};
        std::optional<Sound> resampled{};
        std::uint32_t start = 0;
        std::atomic<float> gain{1};
    };

  private:
    struct Voice {
        Placing placing;
        std::shared_ptr<PlacedRange> range;  // null until there is a placing
    };

    // False without memory.
    bool HasAtRate(std::size_t number);
    // A new range for a source that is placed otherwise than before.
    Making Make(std::size_t number, const Placing& placing);

    std::vector<LiveSource> sources_;
    std::uint32_t rate_;
    Listener& listener_;
    std::shared_ptr<std::vector<Source>> shared_;
    std::vector<Voice> voices_;  // of the thread that makes
    LatestValue<std::vector<LiveSetting>> settings_;
};

}  // namespace sonavel
