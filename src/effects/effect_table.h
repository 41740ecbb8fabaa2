// The effects as rows of a table: what they are called, what a person sets, and how they run on a
// document. Dialogs, menus and the batch tool are made from it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "document/sound_doc.h"
#include "effects/effect_processor.h"
#include "effects/equalizer.h"
#include "effects/noise_profile.h"
#include "effects/range_effect.h"

namespace sonavel {

// Stands in the place of the decimals of a parameter that is a switch, 0 or 1.
inline constexpr int kSwitch = -1;

// In the place of a parameter's mode: it has a meaning in all of them, or it is the mode.
inline constexpr int kEveryMode = -1;
inline constexpr int kIsTheMode = -2;

struct EffectParameter {
    const char* key;  // of a script
    const char* label;
    const char* unit;
    double least;
    double start;
    double greatest;
    double step;
    int decimals;  // shown, or kSwitch
    // What it does, where the label leaves that open.
    const char* explanation = nullptr;
    // Whose value a script means that leaves this one out; null for the start value.
    const char* follows = nullptr;
    // The only mode of its effect in which it has a meaning, or one of the two above.
    int mode = kEveryMode;
    // What its values are called, from 0 on; empty where they are numbers.
    std::span<const char* const> words = {};
    // What a script's help calls it that gives it by its place instead of its key; null for a key.
    const char* position = nullptr;
};

// What keeps its state from one run to the next, for as long as the program runs. The application
// owns one and hands it down.
struct EffectState {
    EqualizerFilters equalizer;
    std::optional<NoiseProfile> noise;
};

// Where an effect runs.
struct EffectTarget {
    CSoundDoc& document;
    std::uint32_t selectionStart = 0;
    std::uint32_t selectionEnd = 0;
    EffectState& state;
};

namespace effect_command {
enum Id : int {
    kReverb = 32874,
    kFlanger = 32880,
    kDynamics = 32881,
    kEqualizer = 32882,
    kModulator = 32883,
    kVolume = 32884,
    kPanpot = 32885,
    // Those that came later.
    kFadeIn = 33200,
    kFadeOut = 33201,
    kNormalise = 33202,
    kMute = 33203,
    kReverse = 33204,
    kInvert = 33205,
    kRemoveOffset = 33206,
    kEcho = 33207,
    kTempo = 33208,
    kPitch = 33209,
    kReduceNoise = 33210,
};
}  // namespace effect_command

// What runs beside what: an effect's pieces, its channels, or nothing.
enum class Spread { kPieces, kChannels, kNothing };

// What OK does: the sound is changed piece by piece, its samples truncated or lifted by the
// quantizer; or once the whole result is there; or not at all.
enum class Storing { kTruncated, kQuantized, kWholeResult, kNothing };

// In which order pieces are announced: all channels of each at once, or one channel after the
// other.
enum class UnitOrder { kPieceByPiece, kChannelByChannel };

enum class Cancelling { kNotHeeded, kHandsNothingOver, kLeavesTheRestAsItIs };

// What a whole result's peak becomes: at most full scale of 16 bits, or each channel's own from
// before the run.
enum class PeakRule { kNone, kWithin16Bits, kAsBefore };

// What is heard on the right of a mono sound's preview.
enum class MonoPreview { kLeftOnly, kBothSides };

// How the percentages of a run are computed, which shows in the last digit, and where they end.
enum class Percentages { kExact, kExactToTheEnd, kSinglePrecisionToTheEnd };

struct EffectTraits {
    const char* progressSuffix;  // of the window's caption
    Storing storing;
    Spread spread = Spread::kPieces;
    UnitOrder previewOrder = UnitOrder::kPieceByPiece;
    Cancelling cancelling = Cancelling::kNotHeeded;
    PeakRule peak = PeakRule::kNone;
    MonoPreview monoPreview = MonoPreview::kLeftOnly;
    Percentages percentages = Percentages::kExact;
    const char* monoRefusal = nullptr;  // for effects that take stereo sounds alone
    // Whether a mono sound takes a whole result; else it is left as it is.
    bool appliesToMono = true;
    bool previewScalesEightBits = false;  // to the range of 16-bit samples
    bool canRaisePeaks = false;
    const char* eightBitNote = nullptr;  // what is said to a person with such a sound
};

// Where new frames go: over the old ones at once, or into a range of their own that takes the old
// one's place when all are there.
enum class ResultStorage { kInPlace, kWhole };

// Of an effect that makes its range anew, which has these instead of a processor.
struct RangeTraits {
    ComputeRange compute = nullptr;
    ResultStorage storage = ResultStorage::kInPlace;
    CountFrames count = nullptr;  // null: as many as there were
};

// Whether a script's command is made from the row, or stands elsewhere.
enum class Scripted { kByRow, kElsewhere };

struct Effect {
    int commandId;
    const char* name;  // of a script
    const char* menuText;
    const char* prompt;
    const char* titlePrefix;  // of a document made from its preview; empty where there is none
    std::span<const EffectParameter> parameters;
    MakeEffectProcessor make;
    EffectTraits traits;
    // What a script calls each of its modes, which are commands of their own there.
    std::span<const char* const> modeNames = {};
    RangeTraits range = {};
    Scripted scripted = Scripted::kByRow;

    // Whether OK can leave a sound as it is, so that applying has to be asked for.
    bool OffersApply() const {
        return make && (traits.storing == Storing::kNothing || !traits.appliesToMono ||
                        traits.peak == PeakRule::kWithin16Bits);
    }
    bool HasPreview() const { return *titlePrefix != '\0'; }
};

std::span<const Effect> Effects();
// Null when there is none of that name.
const Effect* FindEffect(std::string_view name);

// What is one command of a script: an effect, or one mode of it.
struct EffectForm {
    const Effect& effect;
    const char* name;
    int mode = 0;

    // Whether the parameter is a key of the command.
    bool Asks(const EffectParameter& parameter) const {
        return parameter.mode == kEveryMode || parameter.mode == mode;
    }
    // Its value when the script says nothing, or cannot.
    double StartOf(const EffectParameter& parameter) const {
        return parameter.mode == kIsTheMode ? mode : parameter.start;
    }
};

std::vector<EffectForm> EffectForms();

}  // namespace sonavel
