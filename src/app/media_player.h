// The desktop's player control (MPRIS) and with it the media keys: offered while a sound is played
// or paused, and only then, so that they are not taken from other players.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace sonavel {

struct MediaState {
    bool isActive = false;  // playing or paused
    bool isPlaying = false;
    QString title;
    qint64 microseconds = 0;  // of the place that is played

    bool operator==(const MediaState&) const = default;
};

enum class MediaCommand { kPlay, kPause, kStop, kRaise };

class MediaPlayer : public QObject {
    Q_OBJECT

  public:
    // `run` does what the desktop asks for.
    explicit MediaPlayer(std::function<void(MediaCommand)> run, QObject* parent = nullptr);
    ~MediaPlayer() override;

    // Quiet on a desktop without a bus.
    void Follow(const MediaState& state);
    const MediaState& State() const { return state_; }
    void Run(MediaCommand command) { run_(command); }

  private:
    void Offer();
    void Withdraw();
    void TellChange();

    std::function<void(MediaCommand)> run_;
    MediaState state_;
    bool isOffered_ = false;
};

}  // namespace sonavel
