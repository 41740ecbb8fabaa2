#include "view/ui/loudness_worker.h"

#include <cmath>
#include <system_error>
#include <utility>

namespace sonavel {

namespace {

// Shows nothing, and hears from another thread that nobody waits any more.
class SilentProgress : public ProgressWindow {
  public:
    explicit SilentProgress(const std::atomic<bool>& isUnwanted) : isUnwanted_(isUnwanted) {}
    void SetRange(int, int) override {}
    void SetPosition(int) override {}
    bool Poll() override { return isUnwanted_; }

  private:
    const std::atomic<bool>& isUnwanted_;
};

QString WithUnit(double value, const char* unit) {
    // Adding 0 makes a plain one of a negative zero.
    const double shown = std::round(value * 10) / 10 + 0.0;
    return QStringLiteral("%1 %2").arg(shown, 0, 'f', 1).arg(QLatin1String(unit));
}

}  // namespace

LoudnessWorker::LoudnessWorker(const Sound& sound, FrameRange range, Take take)
    : take_(std::move(take)) {
    try {
        thread_ = std::thread([this, &sound, range] { Measure(sound, range); });
    } catch (const std::system_error&) {
        take_(Failed("There is no thread to measure with."));
    }
}

LoudnessWorker::~LoudnessWorker() {
    isUnwanted_ = true;
    if (thread_.joinable()) thread_.join();
}

void LoudnessWorker::Measure(const Sound& sound, FrameRange range) {
    SilentProgress progress(isUnwanted_);
    const Result<SoundLoudness> found = MeasureLoudness(sound, range, progress);
    if (isUnwanted_) return;
    QMetaObject::invokeMethod(
        this, [this, found] { take_(found); }, Qt::QueuedConnection);
}

QString NotYetText() {
    return QString(QChar(0x2026));
}

QString IntegratedText(const SoundLoudness& loudness) {
    return loudness.integrated ? WithUnit(*loudness.integrated, "LUFS")
                               : QObject::tr("none: silence, or too short");
}

QString LoudnessRangeText(const SoundLoudness& loudness) {
    return WithUnit(loudness.range, "LU");
}

QString DecibelsText(double share) {
    const double decibels = DecibelsOfShare(share);
    return std::isfinite(decibels) ? WithUnit(decibels, "dB") : QObject::tr("-Inf. dB");
}

}  // namespace sonavel
