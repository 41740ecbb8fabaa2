// A short tone on a chosen device, so that a person hears whether the device works.
#pragma once

#include <QObject>
#include <QString>
#include <functional>

#include "audio/wave_player.h"
#include "platform/headless/headless_progress.h"
#include "platform/headless/silent_prompts.h"

namespace sonavel {

// Keeps the last message instead of showing it in a box.
class NotedPrompts : public SilentPrompts {
  public:
    void ShowMessage(std::string_view text) override {
        note = text;
        if (onNote) onNote();
    }
    std::string note;
    std::function<void()> onNote;
};

class TestTone : public QObject, private PlayerObserver {
    Q_OBJECT

  public:
    explicit TestTone(WaveDevices& devices, QObject* parent = nullptr);

    // False when the device cannot be had; Problem() then says why.
    bool Start(int deviceId, int blockFrames);
    void Stop();
    bool IsPlaying() const { return player_.IsPlaying(); }
    QString Problem() const;

  Q_SIGNALS:
    // Played to its end, stopped, or failed, which may come a second time with the problem.
    void Ended();

  private:
    void MakeTone();
    void OnPlayPosition(std::uint64_t, std::uint64_t) override {}
    void OnPlayState(std::string_view, std::uint32_t) override {}
    void OnPeaks(std::int32_t, std::int32_t) override {}
    void OnStopped() override { Q_EMIT Ended(); }

    NotedPrompts prompts_;
    HeadlessProgress progress_;
    CWavePlayer player_;
};

}  // namespace sonavel
