#include "effects/convert_format.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "effects/resample.h"
#include "sound/made_beside.h"
#include "sound/watched_conversion.h"

namespace sonavel {
namespace {

bool IsResampled(const Sound& sound, const FormatChange& change) {
    return change.rate == FormatChange::Rate::kResampled &&
           change.samplesPerSecond != sound.GetSamplesPerSecond();
}

bool ChangesSamples(const Sound& sound, const FormatChange& change) {
    return change.bits != sound.GetBits() || change.channels != sound.GetChannels() ||
           IsResampled(sound, change);
}

// A sound on its way from one format to another; the first one is not its own.
class Conversion {
  public:
    Conversion(const Sound& first, ProgressFactory& progress)
        : first_(first), progress_(progress) {}

    const Sound& Now() const { return made_ ? *made_ : first_; }
    Outcome Take(Result<Sound> next) {
        if (!next) return next.Ended();
        made_ = *std::move(next);
        return Done();
    }
    Outcome Channels(unsigned channels, ChannelChoice choice) {
        if (channels == Now().GetChannels()) return Done();
        return Make([&](const PieceWatch& watch) {
            return Converted(Now(), channels, choice, Now().GetBits(), watch);
        });
    }
    Outcome Bits(unsigned bits, Rounding rounding) {
        if (bits == Now().GetBits()) return Done();
        return Make([&](const PieceWatch& watch) { return Rounded(Now(), bits, rounding, watch); });
    }
    Result<Sound> Finish() && {
        if (made_) return *std::move(made_);
        return first_.Copy();
    }

  private:
    Outcome Make(const SoundMaker& make) {
        return Take(MadeBeside(progress_, Now().GetDataSize(), make));
    }

    const Sound& first_;
    ProgressFactory& progress_;
    std::optional<Sound> made_;
};

// Resamples in the finer of both widths, and no more channels than need be.
Result<Sound> Changed(CSoundDoc& document, const FormatChange& change) {
    const Sound& sound = document.Sound();
    Conversion way(sound, document.Services().progress);
    if (IsResampled(sound, change)) {
        const unsigned fewest = std::min(change.channels, sound.GetChannels());
        const unsigned finest = std::max(change.bits, sound.GetBits());
        if (Outcome folded = way.Channels(fewest, change.choice); !folded) return folded;
        if (Outcome wider = way.Bits(finest, change.rounding); !wider) return wider;
        const auto progress = document.Services().progress.CreateProgress("Progress Convert");
        Outcome taken = way.Take(Resampled(way.Now(), change.samplesPerSecond, *progress));
        if (!taken) return taken;
    }
    if (Outcome spread = way.Channels(change.channels, change.choice); !spread) return spread;
    if (Outcome rounded = way.Bits(change.bits, change.rounding); !rounded) return rounded;
    Result<Sound> made = std::move(way).Finish();
    if (made) made->SetRate(change.samplesPerSecond);
    return made;
}

// The same way in the commands of a script, which dithers floats and no whole numbers.
class ConversionWords {
  public:
    explicit ConversionWords(const Sound& sound)
        : channels_(sound.GetChannels()), bits_(sound.GetBits()) {}

    void Channels(unsigned channels, ChannelChoice choice) {
        if (channels != channels_)
            words_.lines.push_back("convert-channels " + std::to_string(channels) +
                                   " mode=" + std::to_string(static_cast<int>(choice)));
        channels_ = channels;
    }
    void Bits(unsigned bits, Rounding rounding) {
        if (bits != bits_) words_.lines.push_back("convert-bits " + std::to_string(bits));
        const bool rounds = bits < bits_;
        const auto scripts = bits_ == 32 ? Rounding::kDithered : Rounding::kPlain;
        isSame_ = isSame_ && (!rounds || rounding == scripts);
        bits_ = bits;
    }
    void Rate(const char* command, std::uint32_t samplesPerSecond) {
        words_.lines.push_back(command + std::to_string(samplesPerSecond));
    }
    StepWords Finish() && { return isSame_ ? std::move(words_) : StepWords{}; }

  private:
    unsigned channels_;
    unsigned bits_;
    bool isSame_ = true;
    StepWords words_{.lines = {}};
};

StepWords WordsOf(const Sound& sound, const FormatChange& change) {
    ConversionWords words(sound);
    const bool resampled = IsResampled(sound, change);
    if (resampled) {
        words.Channels(std::min(change.channels, sound.GetChannels()), change.choice);
        words.Bits(std::max(change.bits, sound.GetBits()), change.rounding);
        words.Rate("resample ", change.samplesPerSecond);
    }
    words.Channels(change.channels, change.choice);
    words.Bits(change.bits, change.rounding);
    if (!resampled && change.samplesPerSecond != sound.GetSamplesPerSecond())
        words.Rate("set-rate ", change.samplesPerSecond);
    return std::move(words).Finish();
}

Outcome ChangeSamples(CSoundDoc& document, const FormatChange& change) {
    Result<Sound> changed = Changed(document, change);
    if (!changed) return changed.Ended();
    Result<SoundEdit> edit = document.BeginReplacement("Copy Sample");
    if (!edit) return edit.Ended();
    edit->ReplaceSound(std::move(*changed));
    document.ClearPreview();
    edit->Commit(0);
    return Done();
}

Outcome ChangeSpeed(CSoundDoc& document, std::uint32_t samplesPerSecond) {
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", ReplacesFormat());
    if (!edit) return edit.Ended();
    document.Sound().SetRate(samplesPerSecond);
    document.ClearPreview();
    edit->Commit(0);
    return Done();
}

}  // namespace

FormatChange FormatOf(const Sound& sound) {
    return {.samplesPerSecond = sound.GetSamplesPerSecond(),
            .bits = sound.GetBits(),
            .channels = sound.GetChannels()};
}

FormatOutlook PresentOutlook(const Sound& sound) {
    return {sound.GetSamplesPerSecond(), sound.GetBits(), sound.GetChannels(),
            sound.GetFrameCount(), sound.GetDataSize()};
}

Result<FormatOutlook> OutlookOf(const Sound& sound, const FormatChange& change) {
    if (!sound.HasData()) return Failed("The sound is empty.");
    const bool isWidth = change.bits == 8 || change.bits == 16 || change.bits == 32;
    if (!isWidth || change.channels < 1 || change.channels > 2)
        return Failed("Sounds have 8, 16 or 32 bits and one or two channels.");
    FormatOutlook outlook{change.samplesPerSecond, change.bits, change.channels,
                          sound.GetFrameCount(), 0};
    const PcmFormat format = MakeSoundFormat(change.channels, change.bits, change.samplesPerSecond);
    const bool isNewRate = change.samplesPerSecond != sound.GetSamplesPerSecond();
    if (isNewRate &&
        (change.samplesPerSecond == 0 || change.samplesPerSecond > kGreatestResampledRate))
        return Failed("The rate is 1 to 768000 Hz.");
    if (IsResampled(sound, change)) {
        const Result<std::uint32_t> frames = FramesWhenResampled(sound, change.samplesPerSecond);
        if (!frames) return frames.Ended();
        outlook.frames = *frames;
    }
    outlook.bytes = std::uint64_t{outlook.frames} * format.blockAlign;
    if (outlook.bytes > MostSoundBytes(format)) return Failed("The sound would become too long.");
    return outlook;
}

Outcome ConvertView(CSoundView& view, const FormatChange& change) {
    CSoundDoc& document = view.Document();
    const std::uint32_t before = document.Sound().GetSamplesPerSecond();
    const Result<FormatOutlook> outlook = OutlookOf(document.Sound(), change);
    if (!outlook) return outlook.Ended();
    const bool resampled = IsResampled(document.Sound(), change);
    const Selection at = view.State().GetSelection();
    const std::uint32_t cursor = view.State().Cursor();
    const DescribedStep step(document.Steps(), WordsOf(document.Sound(), change));
    if (ChangesSamples(document.Sound(), change)) {
        if (Outcome changed = ChangeSamples(document, change); !changed) return changed;
    } else if (before != change.samplesPerSecond) {
        if (Outcome sped = ChangeSpeed(document, change.samplesPerSecond); !sped) return sped;
    }
    if (resampled) KeepPlaces(view, at, cursor, before);
    return Done();
}

}  // namespace sonavel
