#include "effects/flanger.h"

#include <algorithm>
#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Pi in single precision, all its digits: the sweep of a long sound depends on the last of them.
constexpr double kPi = 3.141592502593994;

}  // namespace

std::uint32_t FlangerMaxDelay(const FlangerParameters& parameters, std::uint32_t samplesPerSecond) {
    const float delayMs = static_cast<float>(parameters.delayTenths * 0.1);
    return static_cast<std::uint32_t>(static_cast<double>(samplesPerSecond) * delayMs * 0.001);
}

FlangerSweep::FlangerSweep(const FlangerParameters& parameters, std::uint32_t samplesPerSecond)
    : middle_(FlangerMaxDelay(parameters, samplesPerSecond) * 0.5) {
    const float modulationHz = static_cast<float>(parameters.modulationTenths * 0.1);
    radiansPerFrame_ = 2 * kPi * (static_cast<double>(modulationHz) / samplesPerSecond);
    for (std::size_t i = 0; i < kBlockFrames; ++i) {
        const double angle = static_cast<double>(i) * radiansPerFrame_;
        cosines_[i] = std::cos(angle);
        sines_[i] = std::sin(angle);
    }
}

// Inside a block, the cosine of a sum of angles costs two products. Rounding may leave a delay less
// than a millionth outside its range, which truncation takes for its end.
SONAVEL_VECTOR_CLONES
void FlangerSweep::Delays(std::uint32_t firstFrame, std::size_t frames,
                          FlangerDelays& delays) const {
    const double middle = middle_;
    for (std::size_t done = 0; done < frames; done += kBlockFrames) {
        const double angle = static_cast<double>(firstFrame + done) * radiansPerFrame_;
        const double cosine = middle * std::cos(angle);
        const double sine = middle * std::sin(angle);
        std::uint32_t* whole = delays.whole.data() + done;
        float* fraction = delays.fraction.data() + done;
        const std::size_t count = std::min(frames - done, kBlockFrames);
        for (std::size_t i = 0; i < count; ++i) {
            const double delay = middle - (cosine * cosines_[i] - sine * sines_[i]);
            const auto truncated = static_cast<std::int32_t>(delay);
            whole[i] = static_cast<std::uint32_t>(truncated);
            fraction[i] = static_cast<float>(delay - truncated);
        }
    }
}

FlangerLine::FlangerLine(std::uint32_t maxDelay, std::uint32_t runFrames)
    : longest_(std::min(maxDelay, runFrames)), line_(2 * (longest_ + 1)) {}

std::span<float> FlangerLine::NextPairs(std::size_t frames) {
    next_ = line_.Extend(2 * frames);
    return {next_, 2 * frames};
}

void FlangerLine::Mix(const FlangerDelays& delays, std::span<float> pairs) {
    const float* here = next_;
    float* out = pairs.data();
    for (std::size_t i = 0; i < pairs.size() / 2; ++i, here += 2, out += 2) {
        const std::size_t whole = std::min<std::size_t>(delays.whole[i], longest_);
        // A delay of 0 reads the oldest frame of the line, one beyond the longest delay.
        const float* a = here - 2 * (whole ? whole : longest_ + 1);
        const float* b = here - 2 * (whole + 1);
        const float fraction = delays.fraction[i];
        for (int slot = 0; slot < 2; ++slot)
            out[slot] = ((b[slot] - a[slot]) * fraction + a[slot] + here[slot]) * 0.5f;
    }
    line_.Keep();
}

}  // namespace sonavel
