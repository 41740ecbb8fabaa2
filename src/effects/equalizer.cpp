#include "effects/equalizer.h"

#include <cmath>

#include "effects/effect_table.h"

namespace sonavel {
namespace {

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

void EqualizerFilters::Process(std::span<float> samples, const EqualizerParameters& parameters) {
    // Eight lanes, one a band: the bands are independent, so one vector carries them all.
    alignas(32) float g[8]{}, a1[8]{}, a2[8]{}, weight[8]{};
    alignas(32) float w1[8], w2[8], out[8];
    for (int band = 0; band < 8; ++band) {
        w1[band] = previous_[band];
        w2[band] = beforePrevious_[band];
        if (band == kEqualizerBands) break;
        g[band] = kEqualizerSections[band].g;
        a1[band] = kEqualizerSections[band].a1;
        a2[band] = kEqualizerSections[band].a2;
        weight[band] = EqualizerWeight(parameters.positions[band]);
    }
    for (float& sample : samples) {
        const float x = sample;
        for (int band = 0; band < 8; ++band) {
            const float w = g[band] * x - a1[band] * w1[band] - a2[band] * w2[band];
            out[band] = weight[band] * (w - w2[band]);
            w2[band] = w1[band];
            w1[band] = w;
        }
        float y = x;
        for (int band = 0; band < kEqualizerBands; ++band) y += out[band];
        sample = y;
    }
    for (int band = 0; band < kEqualizerBands; ++band) {
        previous_[band] = w1[band];
        beforePrevious_[band] = w2[band];
    }
}

std::unique_ptr<EffectProcessor> MakeEqualizer(std::span<const double> values,
                                               const EffectRun& run) {
    EqualizerParameters parameters;
    for (int band = 0; band < kEqualizerBands; ++band)
        parameters.positions[band] = -static_cast<int>(std::lround(values[band] * 10));
    return std::make_unique<EqualizerProcessor>(parameters, run.state.equalizer);
}

}  // namespace sonavel
