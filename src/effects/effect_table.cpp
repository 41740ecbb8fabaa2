#include "effects/effect_table.h"

#include <iterator>

#include "effects/dynamics.h"
#include "effects/echo.h"
#include "effects/fade.h"
#include "effects/flanger.h"
#include "effects/modulator.h"
#include "effects/noise_reduction.h"
#include "effects/normalise.h"
#include "effects/panpot.h"
#include "effects/plain_changes.h"
#include "effects/reverb.h"
#include "effects/time_pitch.h"
#include "effects/volume.h"

namespace sonavel {
namespace {

// --- Volume

constexpr EffectParameter kVolumeParameters[] = {
    {"percent", "Volume", "%", 0, 100, kGreatestVolumePercent, 1, 0,
     "100 leaves the level as it is, 50 halves it, 200 doubles it"},
    {"hold", "Hold at full scale", "", 0, 0, 1, 1, kSwitch,
     "values beyond full scale are held there instead of wrapping around"},
};

// --- Panpot and crossfade

constexpr const char* kPanModes[] = {"pan", "crossfade"};
constexpr int kInPan = static_cast<int>(PanMode::kPan);
constexpr int kInCrossfade = static_cast<int>(PanMode::kCrossfade);

constexpr EffectParameter kPanpotParameters[] = {
    {"mode", "Mode", "", 0, 0, std::size(kPanModes) - 1, 1, 0,
     "one place for the whole range, or a walk from one place to another", nullptr, kIsTheMode},
    {"value", "Pan", "", -1000, 0, 1000, 1, 0,
     "-1000 is the left speaker alone, 1000 the right one, 0 the middle", nullptr, kInPan},
    {"from", "From :", "", -1000, 0, 1000, 1, 0, "where the sound is at the start of the range",
     nullptr, kInCrossfade},
    {"to", "To :", "", -1000, 0, 1000, 1, 0, "where the sound is at the end of the range", nullptr,
     kInCrossfade},
    {"nonlinear", "Nonlinear", "", 0, 0, 1, 1, kSwitch,
     "the walk follows a curve instead of a straight line", nullptr, kInCrossfade},
};

// --- Reverberation

constexpr EffectParameter kReverbParameters[] = {
    {"early", "Early Reflection", "ms", 0, 50, 200, 1, 0,
     "how long the first single echoes keep coming: longer is a larger room"},
    {"time", "Late Reverberation", "ms", 0, 1500, 6000, 10, 0,
     "how long the dense echo behind them takes to die away"},
    {"reflections", "E. Reflections", "", 0, 6, 6, 1, 0, "how many single echoes there are"},
    {"dry", "Dry", "%", 0, 70, 100, 1, 0, "how much of the sound itself is kept"},
    {"wet", "Wet", "%", 0, 30, 100, 1, 0, "how much of the room is added"},
};

// --- Flanger

constexpr EffectParameter kFlangerParameters[] = {
    {"delay", "Delay", "ms", 0, 0.1, 15, 0.1, 1, "how far the copy lags behind at most"},
    {"modulation", "Modulation", "Hz", 0, 0.1, 10, 0.1, 1, "how often a second the lag sweeps"},
};

// --- Modulator

constexpr EffectParameter kModulatorParameters[] = {
    {"frequency1", "Frequency", "1/20 Hz", 0, 0, 2000, 1, 0,
     "of the first sine, in twentieths of a hertz: 20 is one swing a second"},
    {"delay1", "Delay", "ms", 0, 0, 10000, 1, 0, "after how long the first sine begins"},
    {"amplitude1", "Amp.", "%", 0, 0, 100, 1, 0, "how deep the first sine goes; 0 switches it off"},
    {"frequency2", "Frequency", "1/20 Hz", 0, 0, 2000, 1, 0,
     "of the second sine, in twentieths of a hertz: 20 is one swing a second"},
    {"delay2", "Delay", "ms", 0, 0, 10000, 1, 0, "after how long the second sine begins"},
    {"amplitude2", "Amp.", "%", 0, 0, 100, 1, 0,
     "how deep the second sine goes; 0 switches it off"},
};

// --- Dynamics

constexpr EffectParameter kDynamicsParameters[] = {
    {"threshold", "Thres :", "%", 0, 100, 100, 1, 2,
     "the level at which the curve bends, in percent of full scale"},
    {"below", "Below 1:", "", 0.1, 1, 20, 0.1, 2,
     "the ratio under the threshold: 1 leaves quiet sound as it is"},
    {"above", "Above 1:", "", 0.1, 1, 20, 0.1, 2,
     "the ratio over the threshold: 1 leaves loud sound as it is"},
    {"threshold-right", "Thres :", "%", 0, 100, 100, 1, 2, "the threshold of the right channel",
     "threshold"},
    {"below-right", "Below 1:", "", 0.1, 1, 20, 0.1, 2, "likewise of the right channel", "below"},
    {"above-right", "Above 1:", "", 0.1, 1, 20, 0.1, 2, "likewise of the right channel", "above"},
};

// --- Graphic equalizer

constexpr EffectParameter kEqualizerParameters[] = {
    {"gains", "60Hz", "dB", -40, 0, 40, 0.1, 1},   {"gains", "150Hz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "400Hz", "dB", -40, 0, 40, 0.1, 1},  {"gains", "1kHz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "2.4kHz", "dB", -40, 0, 40, 0.1, 1}, {"gains", "6kHz", "dB", -40, 0, 40, 0.1, 1},
    {"gains", "15kHz", "dB", -40, 0, 40, 0.1, 1},
};

// --- Fades

constexpr const char* kFadeCurves[] = {"linear", "smooth", "log"};

constexpr EffectParameter kFadeParameters[] = {
    {"curve", "Curve", "", 0, 0, std::size(kFadeCurves) - 1, 1, 0,
     "the way between silence and the full level: log goes evenly in decibels, over 60", nullptr,
     kEveryMode, kFadeCurves},
};

// --- Normalise

constexpr const char* kNormaliseTo[] = {"peak", "loudness"};
constexpr const char* kNormaliseChannels[] = {"together", "each"};

constexpr EffectParameter kNormaliseParameters[] = {
    {"to", "Normalise to", "", 0, 0, 1, 1, 0,
     "what is brought to the wanted level: the loudest sample, or the loudness as it is heard",
     nullptr, kEveryMode, kNormaliseTo},
    {"peak", "Peak", "dB", -60, -1, 0, 0.1, 1,
     "of full scale; beside a loudness, the ceiling of the true peak"},
    {"loudness", "Loudness", "LUFS", -70, -16, 0, 0.1, 1,
     "how loud the whole is to be heard; -16 suits speech, -23 broadcasts"},
    {"channels", "Channels", "", 0, 0, 1, 1, 0,
     "whether both channels keep their balance, or each comes to the peak by itself", nullptr,
     kEveryMode, kNormaliseChannels},
};

// --- Echo

constexpr EffectParameter kEchoParameters[] = {
    {"delay", "Delay", "ms", 1, 300, 5000, 10, 0,
     "how long after the sound its first echo comes, and each one after the one before"},
    {"feedback", "Feedback", "%", 0, 40, 95, 1, 0,
     "how loud each echo is beside the one before; 0 gives a single one"},
    {"level", "Level", "%", 0, 50, 100, 1, 0, "how loud the first echo is beside the sound"},
    {"ping-pong", "Ping-pong", "", 0, 0, 1, 1, kSwitch,
     "echoes of a stereo sound come by turns from the left and from the right"},
};

// --- Time and pitch

constexpr EffectParameter kTempoParameters[] = {
    {"tempo",
     "Tempo",
     "%",
     25,
     100,
     400,
     1,
     2,
     "how fast it goes: 100 leaves it as it is, 50 takes twice as long",
     nullptr,
     kEveryMode,
     {},
     "PERCENT"},
};
constexpr EffectParameter kPitchParameters[] = {
    {"pitch",
     "Pitch",
     "semitones",
     -24,
     0,
     24,
     1,
     2,
     "how far up or down; a semitone is the step to the next key of a piano",
     nullptr,
     kEveryMode,
     {},
     "SEMITONES"},
};

// --- Noise reduction

constexpr EffectParameter kNoiseParameters[] = {
    {"reduction", "Reduction", "dB", 0, 12, 60, 1, 1,
     "how much the noise is lowered; more takes more of the sound along"},
    {"smoothing", "Smoothing", "bands", 0, 3, kMostNoiseSmoothing, 1, 0,
     "over how many neighbours on either side each frequency is evened; more leaves less tinkling"},
    {"residue", "Listen to what goes", "", 0, 0, 1, 1, kSwitch,
     "what goes is kept instead of what stays"},
};

using namespace effect_command;

constexpr Effect kEffects[] = {
    // Volume's suffix has no blank before it.
    {kVolume,
     "volume",
     "&Volume...",
     "Change the volume",
     "Volume_",
     kVolumeParameters,
     MakeVolume,
     {.progressSuffix = "Volume",
      .storing = Storing::kTruncated,
      .previewOrder = UnitOrder::kChannelByChannel,
      .monoPreview = MonoPreview::kBothSides}},
    {kPanpot,
     "panpot",
     "&Panpot/Crossfade...",
     "Move the sound between left and right",
     "",
     kPanpotParameters,
     MakePanpot,
     {.progressSuffix = " Panpot/Crossfade",
      .storing = Storing::kQuantized,
      .monoRefusal = "Can not use Panpot/Crossfade in Mono File."},
     kPanModes},
    {kReverb,
     "reverb",
     "&Reverberation...",
     "Add the sound of a room",
     "Reverb_",
     kReverbParameters,
     MakeReverb,
     {.progressSuffix = " Reverberation",
      .storing = Storing::kWholeResult,
      .spread = Spread::kChannels,
      .cancelling = Cancelling::kHandsNothingOver,
      .peak = PeakRule::kWithin16Bits,
      .monoPreview = MonoPreview::kBothSides,
      .percentages = Percentages::kExactToTheEnd,
      .previewScalesEightBits = true}},
    {kFlanger,
     "flanger",
     "&Flanger...",
     "Mix with a copy of sweeping delay",
     "Flanging_",
     kFlangerParameters,
     MakeFlanger,
     {.progressSuffix = " Flanger",
      .storing = Storing::kWholeResult,
      .cancelling = Cancelling::kHandsNothingOver,
      .percentages = Percentages::kSinglePrecisionToTheEnd,
      .appliesToMono = false}},
    {kModulator,
     "modulator",
     "&Modulator...",
     "Multiply by two sine oscillators",
     "",
     kModulatorParameters,
     MakeModulator,
     {.progressSuffix = " Modulator", .storing = Storing::kQuantized}},
    {kDynamics,
     "dynamics",
     "&Dynamics...",
     "Reshape the level by a curve",
     "",
     kDynamicsParameters,
     MakeDynamics,
     {.progressSuffix = " Dynamics",
      .storing = Storing::kQuantized,
      .percentages = Percentages::kExactToTheEnd,
      .canRaisePeaks = true,
      .eightBitNote = "8-bit samples lie below 0.4 % of the curve: they get the gain below any "
                      "higher threshold."}},
    {kEqualizer,
     "equalizer",
     "&Graphic EQ...",
     "Shape the spectrum with seven bands",
     "Equalizer_",
     kEqualizerParameters,
     MakeEqualizer,
     {.progressSuffix = " Equalizer",
      .storing = Storing::kNothing,
      .spread = Spread::kNothing,
      .previewOrder = UnitOrder::kChannelByChannel,
      .cancelling = Cancelling::kLeavesTheRestAsItIs,
      .peak = PeakRule::kAsBefore,
      .percentages = Percentages::kSinglePrecisionToTheEnd}},
    {kFadeIn,
     "fade-in",
     "Fade &In...",
     "Raise the sound from silence",
     "Fade_",
     kFadeParameters,
     nullptr,
     {.progressSuffix = " Fade In", .storing = Storing::kWholeResult},
     {},
     {FadeIn, ResultStorage::kInPlace}},
    {kFadeOut,
     "fade-out",
     "Fade &Out...",
     "Lower the sound to silence",
     "Fade_",
     kFadeParameters,
     nullptr,
     {.progressSuffix = " Fade Out", .storing = Storing::kWholeResult},
     {},
     {FadeOut, ResultStorage::kInPlace}},
    {kNormalise,
     "normalise",
     "&Normalise...",
     "Bring the sound to a peak or to a loudness",
     "Normalise_",
     kNormaliseParameters,
     nullptr,
     {.progressSuffix = " Normalise", .storing = Storing::kWholeResult},
     {},
     {Normalise, ResultStorage::kInPlace},
     Scripted::kElsewhere},
    {kMute,
     "mute",
     "M&ute",
     "Silence the sound",
     "",
     {},
     nullptr,
     {.progressSuffix = " Mute", .storing = Storing::kWholeResult},
     {},
     {Mute, ResultStorage::kInPlace}},
    {kReverse,
     "reverse",
     "Re&verse",
     "Turn the sound round in time",
     "",
     {},
     nullptr,
     {.progressSuffix = " Reverse", .storing = Storing::kWholeResult},
     {},
     {Reverse, ResultStorage::kWhole}},
    {kInvert,
     "invert",
     "In&vert",
     "Turn every sample's sign",
     "",
     {},
     nullptr,
     {.progressSuffix = " Invert", .storing = Storing::kWholeResult},
     {},
     {Invert, ResultStorage::kInPlace}},
    {kRemoveOffset,
     "remove-offset",
     "Remove &DC Offset",
     "Take the constant part out of each channel",
     "",
     {},
     nullptr,
     {.progressSuffix = " Remove DC Offset", .storing = Storing::kWholeResult},
     {},
     {RemoveOffset, ResultStorage::kInPlace}},
    {kEcho,
     "echo",
     "&Echo...",
     "Repeat the sound later and quieter",
     "Echo_",
     kEchoParameters,
     nullptr,
     {.progressSuffix = " Echo", .storing = Storing::kWholeResult},
     {},
     {Echo, ResultStorage::kWhole}},
    {kTempo,
     "tempo",
     "&Tempo...",
     "Change the duration and keep the pitch; 200 halves the duration",
     "Tempo_",
     kTempoParameters,
     nullptr,
     {.progressSuffix = " Tempo", .storing = Storing::kWholeResult},
     {},
     {ChangeTempo, ResultStorage::kWhole, FramesAtTempo}},
    {kPitch,
     "pitch",
     "P&itch...",
     "Change the pitch and keep the duration; 12 is an octave up",
     "Pitch_",
     kPitchParameters,
     nullptr,
     {.progressSuffix = " Pitch", .storing = Storing::kWholeResult},
     {},
     {ChangePitch, ResultStorage::kWhole}},
    {kReduceNoise,
     "noise-reduce",
     "Noise &Reduction...",
     "Lower what is not louder than the learned noise",
     "Denoised_",
     kNoiseParameters,
     nullptr,
     {.progressSuffix = " Noise Reduction", .storing = Storing::kWholeResult},
     {},
     {ReduceNoise, ResultStorage::kWhole}},
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

std::vector<EffectForm> EffectForms() {
    std::vector<EffectForm> forms;
    for (const Effect& effect : kEffects) {
        if (effect.scripted == Scripted::kElsewhere) continue;
        if (effect.modeNames.empty()) forms.push_back({effect, effect.name});
        int mode = 0;
        for (const char* name : effect.modeNames) forms.push_back({effect, name, mode++});
    }
    return forms;
}

}  // namespace sonavel
