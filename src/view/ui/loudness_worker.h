// How loud a range of a sound is, measured on a thread of its own while a dialog is open, and the
// texts that say it.
#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <functional>
#include <thread>

#include "sound/frame_range.h"
#include "sound/sound_loudness.h"

namespace sonavel {

class LoudnessWorker : public QObject {
  public:
    using Take = std::function<void(const Result<SoundLoudness>& found)>;

    // `take` is called once, on the thread that made this, unless it is destroyed before. The sound
    // stays as it is until then.
    LoudnessWorker(const Sound& sound, FrameRange range, Take take);
    // Ends the measurement, and waits until it has ended.
    ~LoudnessWorker() override;

  private:
    void Measure(const Sound& sound, FrameRange range);

    Take take_;
    std::atomic<bool> isUnwanted_ = false;
    std::thread thread_;
};

// What is shown while nothing is known yet.
QString NotYetText();
QString IntegratedText(const SoundLoudness& loudness);     // "-16.2 LUFS", or why there is none
QString LoudnessRangeText(const SoundLoudness& loudness);  // "6.1 LU"
QString DecibelsText(double share);                        // "-0.3 dB"

}  // namespace sonavel
