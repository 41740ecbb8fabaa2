#include "effects/flanger.h"

#include <algorithm>
#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Pi in single precision, all its digits: the sweep of a long sound depends on the last of them.
constexpr double kPi = 3.141592502593994;

int Tenths(double value) {
    return static_cast<int>(std::lround(value * 10));
}

// Mixes a channel's frames in place, each with what lies a delay before it: from the last one on,
// so that the earlier ones are still as they came. `longest` frames and one more lie before them.
void MixBackwards(const FlangerDelays& delays, std::span<float> frames, std::size_t longest) {
    for (std::size_t i = frames.size(); i-- > 0;) {
        float* here = frames.data() + i;
        const std::size_t whole = std::min<std::size_t>(delays.whole[i], longest);
        // A delay of 0 reads one frame beyond the longest delay.
        const float a = *(here - (whole ? whole : longest + 1));
        const float b = *(here - (whole + 1));
        *here = ((b - a) * delays.fraction[i] + a + *here) * 0.5f;
    }
}

// Delays beyond the run read silence only, and take no memory whatever rate a file claims.
class FlangerProcessor : public EffectProcessor {
  public:
    FlangerProcessor(const FlangerParameters& parameters, const EffectRun& run)
        : sweep_(parameters, run.samplesPerSecond),
          longest_(std::min(FlangerMaxDelay(parameters, run.samplesPerSecond), run.frames)) {}

    std::uint32_t HistoryFrames() const override { return longest_ + 1; }
    // At least as long as its history, and whole sections.
    std::uint32_t PieceFrames() const override {
        return (longest_ / kPieceFrames + 1) * kPieceFrames;
    }
    void Process(const EffectPiece& piece) override {
        FlangerDelays delays;
        const std::uint32_t sections = (piece.frames + kPieceFrames - 1) / kPieceFrames;
        for (std::uint32_t section = sections; section-- > 0;) {
            const std::uint32_t done = section * kPieceFrames;
            const std::size_t frames = std::min(piece.frames - done, kPieceFrames);
            sweep_.Delays(piece.first + done, frames, delays);
            for (const std::span<float> channel : piece.channels)
                if (!channel.empty())
                    MixBackwards(delays, channel.subspan(HistoryFrames() + done, frames), longest_);
        }
    }

  private:
    FlangerSweep sweep_;
    std::uint32_t longest_;
};

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

std::unique_ptr<EffectProcessor> MakeFlanger(std::span<const double> values, const EffectRun& run) {
    return std::make_unique<FlangerProcessor>(
        FlangerParameters{Tenths(values[0]), Tenths(values[1])}, run);
}

}  // namespace sonavel
