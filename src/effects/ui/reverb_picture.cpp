#include "effects/ui/reverb_picture.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "effects/reverb.h"

namespace sonavel {

namespace {

constexpr double kLeastMs = 1;
constexpr double kGreatestMs = 8000;
constexpr double kLeastDb = -72;
constexpr QSize kSize{420, 170};

double Decibels(double level) {
    return level > 0 ? 20 * std::log10(level) : kLeastDb * 2;
}

std::size_t FrameAt(double ms, std::uint32_t samplesPerSecond, std::size_t count) {
    return std::min(static_cast<std::size_t>(std::max(ms, 0.0) * 0.001 * samplesPerSecond), count);
}

}  // namespace

std::vector<float> ReverbResponse(const ReverbParameters& parameters,
                                  std::uint32_t samplesPerSecond, double seconds) {
    ReverbParameters wet = parameters;
    wet.dryPercent = 0;
    wet.wetPercent = 100;
    ReverbChannel channel(wet, samplesPerSecond);
    std::vector<float> response(static_cast<std::size_t>(seconds * samplesPerSecond));
    if (response.empty()) return response;
    response[0] = 1;
    channel.Process(response);
    return response;
}

ReverbPicture::ReverbPicture(std::uint32_t samplesPerSecond, QWidget* parent)
    : PlotWidget({kLeastMs,
                  kGreatestMs,
                  PlotAxis::Scale::kLogarithmic,
                  {1, 3, 10, 30, 100, 300, 1000, 3000},
                  "ms"},
                 {kLeastDb, 0, PlotAxis::Scale::kLinear, {-60, -40, -20, 0}, "dB"}, kSize, parent),
      // The picture needs no more of very high rates, and stays cheap.
      samplesPerSecond_(std::clamp(samplesPerSecond, 8000u, 48000u)) {}

void ReverbPicture::SetParameters(const ReverbParameters& parameters) {
    const bool sameRoom = parameters.earlyMs == parameters_.earlyMs &&
                          parameters.timeMs == parameters_.timeMs &&
                          parameters.reflections == parameters_.reflections;
    if (!sameRoom) response_.clear();
    parameters_ = parameters;
    update();
}

void ReverbPicture::Compute() const {
    // Past its time the room is below what is drawn.
    const double seconds = std::min(parameters_.timeMs * 0.001 + 0.5, kGreatestMs * 0.001);
    if (response_.empty()) response_ = ReverbResponse(parameters_, samplesPerSecond_, seconds);
}

double ReverbPicture::LevelDb(std::size_t firstFrame, std::size_t endFrame) const {
    float level = 0;
    for (std::size_t i = firstFrame; i < std::min(endFrame, response_.size()); ++i)
        level = std::max(level, std::abs(response_[i]));
    return Decibels(level * parameters_.wetPercent * 0.01);
}

void ReverbPicture::DrawPicture(QPainter& painter) const {
    Compute();
    DrawDecay(painter);
    DrawTaps(painter);
    // The dry sound itself, which comes without any delay, stands on the left edge.
    painter.setPen(QPen(palette().color(QPalette::Text), 3));
    DrawStem(painter, kLeastMs, Decibels(parameters_.dryPercent * 0.01));
}

void ReverbPicture::DrawDecay(QPainter& painter) const {
    QColor faint = AccentColour();
    faint.setAlphaF(0.45F);
    painter.setPen(QPen(faint, 1));
    const QRectF plane = Plane();
    for (double x = plane.left(); x < plane.right(); x += 1) {
        const std::size_t first = FrameAt(AcrossAt(x), samplesPerSecond_, response_.size());
        const std::size_t end = FrameAt(AcrossAt(x + 1), samplesPerSecond_, response_.size());
        DrawStem(painter, AcrossAt(x), LevelDb(first, end));
    }
}

void ReverbPicture::DrawTaps(QPainter& painter) const {
    painter.setPen(CurvePen());
    for (const ReverbTap& tap : MakeReverbTaps(parameters_, samplesPerSecond_).taps)
        if (tap.gain > 0)
            DrawStem(painter, tap.delay * 1000.0 / samplesPerSecond_,
                     LevelDb(tap.delay, tap.delay + 1));
}

void ReverbPicture::DrawStem(QPainter& painter, double ms, double db) const {
    if (db <= kLeastDb) return;
    painter.drawLine(PointAt(ms, kLeastDb), PointAt(ms, db));
}

}  // namespace sonavel
