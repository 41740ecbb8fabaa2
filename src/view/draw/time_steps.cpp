#include "view/draw/time_steps.h"

#include "sound/sound_texts.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

constexpr std::int64_t kMostUnits = 10'000'000'000'000;  // longer than any sound in milliseconds
constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kMinute = 60 * kSecond;
constexpr std::int64_t kHour = 60 * kMinute;

// 1, 2 and 5 times the powers of ten, times `unit`, below `end`.
void AppendDecimal(std::int64_t unit, std::int64_t end, std::vector<std::int64_t>& steps) {
    for (std::int64_t power = unit; power < end; power *= 10) {
        for (const std::int64_t factor : {1, 2, 5}) {
            if (factor * power < end) steps.push_back(factor * power);
        }
    }
}

std::vector<std::int64_t> TimeStepTable() {
    std::vector<std::int64_t> steps;
    AppendDecimal(1, kSecond, steps);
    for (const std::int64_t unit : {kSecond, kMinute}) {
        for (const std::int64_t factor : {1, 2, 5, 10, 15, 30}) steps.push_back(factor * unit);
    }
    AppendDecimal(kHour, kMostUnits, steps);
    return steps;
}

std::vector<std::int64_t> SampleStepTable() {
    std::vector<std::int64_t> steps;
    AppendDecimal(1, kMostUnits, steps);
    return steps;
}

}  // namespace

TimeSteps::TimeSteps(StatusFormat format, std::uint32_t samplesPerSecond, const PixelMap& map)
    : format_(samplesPerSecond > 0 ? format : StatusFormat::kSample),
      samplesPerSecond_(samplesPerSecond),
      map_(map),
      steps_(format_ == StatusFormat::kSample ? SampleStepTable() : TimeStepTable()) {}

std::int64_t TimeSteps::FrameOf(std::int64_t unit) const {
    return format_ == StatusFormat::kSample ? unit : unit * samplesPerSecond_ / kSecond;
}

std::int64_t TimeSteps::UnitAt(std::int64_t frame) const {
    return format_ == StatusFormat::kSample ? frame : frame * kSecond / samplesPerSecond_;
}

std::string TimeSteps::Label(std::int64_t unit) const {
    if (format_ == StatusFormat::kTime) return TimeText(static_cast<double>(unit) / kSecond);
    return PositionText(format_, unit, kSecond);
}

double TimeSteps::PixelsOf(std::int64_t units) const {
    const double frames = format_ == StatusFormat::kSample
                              ? static_cast<double>(units)
                              : static_cast<double>(units) * samplesPerSecond_ / kSecond;
    return frames * static_cast<double>(map_.VirtualWidth()) /
           static_cast<double>(map_.FrameCount());
}

std::int64_t TimeSteps::LeastStep(int pixels) const {
    for (const std::int64_t step : steps_) {
        if (PixelsOf(step) >= pixels) return step;
    }
    return steps_.back();
}

std::int64_t TimeSteps::Subdivision(std::int64_t step, int pixels) const {
    for (const std::int64_t part : steps_) {
        if (part >= step) break;
        if (step % part == 0 && step / part <= 10 && PixelsOf(part) >= pixels) return part;
    }
    return step;
}

}  // namespace sonavel
