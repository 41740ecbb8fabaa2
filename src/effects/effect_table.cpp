#include "effects/effect_table.h"

#include <cmath>

#include "effects/effect_commands.h"

namespace sonavel {
namespace {

using Values = std::span<const double>;

int Whole(double value) {
    return static_cast<int>(std::lround(value));
}
int Tenths(double value) {
    return static_cast<int>(std::lround(value * 10));
}

// --- Volume

constexpr EffectParameter kVolumeParameters[] = {
    {"percent", "Volume", "%", 0, 100, kGreatestVolumePercent, 1, 0},
    {"hold", "Hold at full scale", "", 0, 0, 1, 1, kSwitch,
     "values beyond full scale are held there instead of wrapping around"},
};

VolumeParameters Volume(Values values) {
    return {Whole(values[0]), values[1] != 0 ? Overload::kHold : Overload::kWrap};
}

// --- Panpot and crossfade

constexpr EffectParameter kPanParameters[] = {
    {"value", "Pan", "", -1000, 0, 1000, 1, 0},
};
constexpr EffectParameter kCrossfadeParameters[] = {
    {"from", "From :", "", -1000, 0, 1000, 1, 0},
    {"to", "To :", "", -1000, 0, 1000, 1, 0},
    {"nonlinear", "Nonlinear", "", 0, 0, 1, 1, kSwitch},
};

PanpotParameters Pan(Values values) {
    PanpotParameters parameters;
    parameters.pan = Whole(values[0]);
    return parameters;
}

PanpotParameters Crossfade(Values values) {
    PanpotParameters parameters;
    parameters.mode = PanMode::kCrossfade;
    parameters.from = Whole(values[0]);
    parameters.to = Whole(values[1]);
    parameters.law = values[2] != 0 ? CrossfadeLaw::kExponential : CrossfadeLaw::kLinear;
    return parameters;
}

// --- Reverberation

constexpr EffectParameter kReverbParameters[] = {
    {"early", "Early Reflection", "ms", 0, 50, 200, 1, 0},
    {"time", "Late Reverberation", "ms", 0, 1500, 6000, 10, 0},
    {"reflections", "E. Reflections", "", 0, 6, 6, 1, 0},
    {"dry", "Dry", "%", 0, 70, 100, 1, 0},
    {"wet", "Wet", "%", 0, 30, 100, 1, 0},
};

ReverbParameters Reverb(Values values) {
    return {Whole(values[0]), Whole(values[1]), Whole(values[2]), Whole(values[3]),
            Whole(values[4])};
}

// --- Flanger

constexpr EffectParameter kFlangerParameters[] = {
    {"delay", "Delay", "ms", 0, 0.1, 15, 0.1, 1},
    {"modulation", "Modulation", "Hz", 0, 0.1, 10, 0.1, 1},
};

FlangerParameters Flanger(Values values) {
    return {Tenths(values[0]), Tenths(values[1])};
}

// --- Modulator

constexpr EffectParameter kModulatorParameters[] = {
    {"frequency1", "Frequency", "1/20 Hz", 0, 0, 2000, 1, 0},
    {"delay1", "Delay", "ms", 0, 0, 10000, 1, 0},
    {"amplitude1", "Amp.", "%", 0, 0, 100, 1, 0},
    {"frequency2", "Frequency", "1/20 Hz", 0, 0, 2000, 1, 0},
    {"delay2", "Delay", "ms", 0, 0, 10000, 1, 0},
    {"amplitude2", "Amp.", "%", 0, 0, 100, 1, 0},
};

ModulatorParameters Modulator(Values values) {
    return {{Whole(values[0]), Whole(values[1]), Whole(values[2])},
            {Whole(values[3]), Whole(values[4]), Whole(values[5])}};
}

// --- Dynamics

constexpr EffectParameter kDynamicsParameters[] = {
    {"threshold", "Thres :", "%", 0, 100, 100, 1, 2},
    {"below", "Below 1:", "", 0.1, 1, 20, 0.1, 2},
    {"above", "Above 1:", "", 0.1, 1, 20, 0.1, 2},
    {"threshold-right", "Thres :", "%", 0, 100, 100, 1, 2},
    {"below-right", "Below 1:", "", 0.1, 1, 20, 0.1, 2},
    {"above-right", "Above 1:", "", 0.1, 1, 20, 0.1, 2},
};

DynamicsParameters Dynamics(Values values) {
    return {DynamicsCurve::FromDialog(values[0], values[1], values[2]),
            DynamicsCurve::FromDialog(values[3], values[4], values[5])};
}

// --- Graphic equalizer

constexpr EffectParameter kEqualizerParameters[] = {
    {"gains", "60Hz", "dB", -40, 0, 40, 0.1, 1},   {"gains", "150Hz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "400Hz", "dB", -40, 0, 40, 0.1, 1},  {"gains", "1kHz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "2.4kHz", "dB", -40, 0, 40, 0.1, 1}, {"gains", "6kHz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "15kHz", "dB", -40, 0, 40, 0.1, 1},
};

EqualizerParameters Equalizer(Values values) {
    EqualizerParameters parameters;
    for (int band = 0; band < kEqualizerBands; ++band)
        parameters.positions[band] = -Tenths(values[band]);
    return parameters;
}

template <auto Read, auto Run>
bool Apply(const EffectTarget& target, Values values) {
    return Run(target, Read(values));
}

template <auto Read, auto Run>
bool Preview(const EffectTarget& target, Values values, PreviewPlay play) {
    return Run(target, Read(values), play);
}

// OK in the equalizer only closes its dialog; its result is kept through the preview.
bool ApplyNothing(const EffectTarget&, Values) {
    return true;
}

using namespace effect_command;

constexpr Effect kEffects[] = {
    {kVolume, "volume", "&Volume...", "Change the volume", "Volume_", kVolumeParameters,
     Apply<Volume, ApplyVolume>, Preview<Volume, PreviewVolume>},
    {kPanpot, "pan", "&Panpot/Crossfade...", "Move the sound between left and right", "",
     kPanParameters, Apply<Pan, ApplyPanpot>, nullptr},
    {kPanpot, "crossfade", "&Panpot/Crossfade...", "Move the sound between left and right", "",
     kCrossfadeParameters, Apply<Crossfade, ApplyPanpot>, nullptr},
    {kReverb, "reverb", "&Reverberation...", "Add the sound of a room", "Reverb_",
     kReverbParameters, Apply<Reverb, ApplyReverb>, Preview<Reverb, PreviewReverb>},
    {kFlanger, "flanger", "&Flanger...", "Mix with a copy of sweeping delay", "Flanging_",
     kFlangerParameters, Apply<Flanger, ApplyFlanger>, Preview<Flanger, PreviewFlanger>},
    {kModulator, "modulator", "&Modulator...", "Multiply by two sine oscillators", "",
     kModulatorParameters, Apply<Modulator, ApplyModulator>, nullptr},
    {kDynamics, "dynamics", "&Dynamics...", "Reshape the level by a curve", "Dynamics_",
     kDynamicsParameters, Apply<Dynamics, ApplyDynamics>, nullptr},
    {kEqualizer, "equalizer", "&Graphic EQ...", "Shape the spectrum with seven bands", "Equalizer_",
     kEqualizerParameters, ApplyNothing, Preview<Equalizer, PreviewEqualizer>},
};

}  // namespace

std::span<const Effect> Effects() {
    return kEffects;
}

const Effect* FindEffect(std::string_view name) {
    for (const Effect& effect : kEffects)
        if (effect.name == name) return &effect;
    return nullptr;
}

}  // namespace sonavel
