#include "effects/panpot.h"

#include <array>
#include <cmath>

#include "effects/running_sum.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

constexpr float kPercent = 0.01f;
constexpr double kExponentScale = 0.04587155963302752;  // 1 / 21.8

SONAVEL_VECTOR_CLONES
void Lower(std::span<float> channel, float share) {
    for (float& sample : channel) sample = sample * share * kPercent;
}

// Lowers the left channel where the position is to the right of the centre, and the other way
// round.
SONAVEL_VECTOR_CLONES
void ApplyLinear(std::span<const float> positions, float* left, float* right) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const float position = positions[i];
        left[i] = position > 0 ? left[i] * (100 - position) * kPercent : left[i];
        right[i] = position < 0 ? right[i] * (position + 100) * kPercent : right[i];
    }
}

// The factor does not reach 1 beside the centre, where nothing is lowered: the curve jumps there.
float ExponentialFactor(float share) {
    return static_cast<float>(std::exp(share * kExponentScale) * 0.01);
}

void ApplyExponential(std::span<const float> positions, float* left, float* right) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const float position = positions[i];
        if (position > 0) left[i] *= ExponentialFactor(100 - position);
        if (position < 0) right[i] *= ExponentialFactor(position + 100);
    }
}

// Positions below ten units count as the centre: the division is one of integers.
int Position(double value) {
    return static_cast<int>(std::lround(value)) / 10;
}

class PanProcessor : public EffectProcessor {
  public:
    explicit PanProcessor(int position) : position_(static_cast<float>(position)) {}

    void Process(const EffectPiece& piece) override {
        if (position_ > 0) Lower(piece.channels[0], 100 - position_);
        if (position_ < 0) Lower(piece.channels[1], position_ + 100);
    }

  private:
    float position_;
};

enum class CrossfadeLaw { kLinear, kExponential };

class CrossfadeProcessor : public EffectProcessor {
  public:
    CrossfadeProcessor(int from, int to, CrossfadeLaw law, std::uint32_t frames) : law_(law) {
        const float step = frames ? static_cast<float>(from - to) / static_cast<float>(frames) : 0;
        RunningSum position(static_cast<float>(from), -step);
        position.Skip(1);
        positions_ = SumsAtPieces(position, frames, kPieceFrames);
    }

    void Process(const EffectPiece& piece) override {
        std::array<float, kPieceFrames> positions;
        const std::span<float> used = std::span(positions).first(piece.frames);
        RunningSum position = positions_[piece.first / kPieceFrames];
        position.Take(used);
        const auto apply = law_ == CrossfadeLaw::kLinear ? ApplyLinear : ApplyExponential;
        apply(used, piece.channels[0].data(), piece.channels[1].data());
    }

  private:
    CrossfadeLaw law_;
    std::vector<RunningSum> positions_;
};

}  // namespace

std::unique_ptr<EffectProcessor> MakePanpot(std::span<const double> values, const EffectRun& run) {
    if (static_cast<PanMode>(std::lround(values[0])) == PanMode::kPan)
        return std::make_unique<PanProcessor>(Position(values[1]));
    const auto law = values[4] != 0 ? CrossfadeLaw::kExponential : CrossfadeLaw::kLinear;
    return std::make_unique<CrossfadeProcessor>(Position(values[2]), Position(values[3]), law,
                                                run.frames);
}

}  // namespace sonavel
