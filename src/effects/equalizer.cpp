#include "effects/equalizer.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "effects/effect_table.h"
#include "platform/vector_clones.h"

namespace sonavel {
const std::array<EqualizerSection, kEqualizerBands> kEqualizerSections = {{
    {0.002557974075898528f, -1.9948111772537231f, 0.9948840737342834f},
    {0.006370087154209614f, -1.986806035041809f, 0.9872598052024841f},
    {0.016800761222839355f, -1.9632060527801514f, 0.9663984775543213f},
    {0.04085782170295715f, -1.8988473415374756f, 0.9182843565940857f},
    {0.09140072762966156f, -1.7119922637939453f, 0.8171985149383545f},
    {0.18456728756427765f, -1.0703823566436768f, 0.6308654546737671f},
    {0.376077800989151f, 0.6695288419723511f, 0.2478443682193756f},
}};

float EqualizerWeight(int position) {
    return static_cast<float>(std::pow(10.0, -position * 0.005));
}

std::array<const char*, kEqualizerBands> EqualizerLabels(std::uint32_t samplesPerSecond) {
    switch (samplesPerSecond) {
        case 44100:
            return {"60Hz", "150Hz", "400Hz", "1kHz", "2.4kHz", "6kHz", "15kHz"};
        case 32000:
            return {"44Hz", "109Hz", "290Hz", "726Hz", "1.7kHz", "4.4kHz", "10kHz"};
        case 22050:
            return {"30Hz", "75Hz", "200Hz", "500Hz", "1.2kHz", "3kHz", "7.5kHz"};
        default:
            return {"", "", "", "", "", "", ""};
    }
}

namespace {

constexpr int kLanes = EqualizerFilters::kLanes;
constexpr int kLastLane = kEqualizerBands - 1;

using Lanes = float __attribute__((vector_size(kLanes * sizeof(float))));
using LaneNumbers = std::int32_t __attribute__((vector_size(kLanes * sizeof(std::int32_t))));

// The bands from the last lane down to the first; one more fills the vector and stays 0. At step i
// each works on the frame behind the one of the lane above it: the last lane takes in frame i while
// the first one completes frame i - 6, so that the sums of the frames move on by a lane a step.
struct Bank {
    Bank(const EqualizerParameters& parameters, const std::array<float, kLanes>& w1,
         const std::array<float, kLanes>& w2) {
        for (int band = 0; band < kEqualizerBands; ++band) {
            const int lane = kLastLane - band;
            g[lane] = kEqualizerSections[band].g;
            a1[lane] = kEqualizerSections[band].a1;
            a2[lane] = kEqualizerSections[band].a2;
            weight[lane] = EqualizerWeight(parameters.positions[band]);
        }
        std::memcpy(&previous, w1.data(), sizeof previous);
        std::memcpy(&beforePrevious, w2.data(), sizeof beforePrevious);
    }

    Lanes g{}, a1{}, a2{}, weight{};
    Lanes previous, beforePrevious;
    Lanes sums{};
};

// `frames`: that of each lane. Lanes that `active` (-1, else 0) leaves out keep their states.
inline void Step(Bank& bank, const float* frames, const LaneNumbers& active) {
    Lanes x;
    std::memcpy(&x, frames, sizeof x);
    const Lanes w = bank.g * x - bank.a1 * bank.previous - bank.a2 * bank.beforePrevious;
    const Lanes out = bank.weight * (w - bank.beforePrevious);
    bank.sums = __builtin_shufflevector(bank.sums, x, 1, 2, 3, 4, 5, 6, kLanes + kLastLane, 7);
    bank.sums += out;
    bank.beforePrevious = active ? bank.previous : bank.beforePrevious;
    bank.previous = active ? w : bank.previous;
}

// `padded`: the piece with 6 values before it and 8 behind, which are not part of it.
SONAVEL_VECTOR_CLONES
void FilterPiece(Bank& kept, const float* padded, float* out, std::size_t frames) {
    constexpr LaneNumbers kAll = {-1, -1, -1, -1, -1, -1, -1, -1};
    constexpr LaneNumbers kNumbers = {0, 1, 2, 3, 4, 5, 6, 7};
    Bank bank = kept;
    const auto count = static_cast<std::int32_t>(frames);
    // At both ends of the piece some lanes have no frame.
    const auto stepAtEnd = [&](std::int32_t i) {
        const LaneNumbers frame = kNumbers + (i - kLastLane);
        Step(bank, padded + i, (frame >= 0) & (frame < count));
        if (i >= kLastLane) out[i - kLastLane] = bank.sums[0];
    };
    std::int32_t i = 0;
    for (; i < kLastLane; ++i) stepAtEnd(i);
    for (; i < count; ++i) {
        Step(bank, padded + i, kAll);
        out[i - kLastLane] = bank.sums[0];
    }
    for (; i < count + kLastLane; ++i) stepAtEnd(i);
    kept = bank;
}

class EqualizerProcessor : public EffectProcessor {
  public:
    EqualizerProcessor(const EqualizerParameters& parameters, EqualizerFilters& filters)
        : parameters_(parameters), filters_(filters) {}

    void Process(const EffectPiece& piece) override {
        for (const std::span<float> samples : piece.channels)
            filters_.Process(samples, parameters_);
    }

  private:
    EqualizerParameters parameters_;
    EqualizerFilters& filters_;
};

}  // namespace

void EqualizerFilters::Process(std::span<float> samples, const EqualizerParameters& parameters) {
    Bank bank(parameters, previous_, beforePrevious_);
    std::array<float, kLastLane + kPieceFrames + kLanes> padded{};
    while (!samples.empty()) {
        const std::size_t frames = std::min<std::size_t>(samples.size(), kPieceFrames);
        const auto behind = std::copy_n(samples.begin(), frames, padded.begin() + kLastLane);
        std::fill_n(behind, kLanes, 0.0f);
        FilterPiece(bank, padded.data(), samples.data(), frames);
        samples = samples.subspan(frames);
    }
    std::memcpy(previous_.data(), &bank.previous, sizeof bank.previous);
    std::memcpy(beforePrevious_.data(), &bank.beforePrevious, sizeof bank.beforePrevious);
}

std::unique_ptr<EffectProcessor> MakeEqualizer(std::span<const double> values,
                                               const EffectRun& run) {
    EqualizerParameters parameters;
    for (int band = 0; band < kEqualizerBands; ++band)
        parameters.positions[band] = -static_cast<int>(std::lround(values[band] * 10));
    return std::make_unique<EqualizerProcessor>(parameters, run.state.equalizer);
}

}  // namespace sonavel
