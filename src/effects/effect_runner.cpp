#include "effects/effect_runner.h"

#include <algorithm>
#include <new>
#include <string>

#include "effects/effect_pass.h"
#include "effects/effect_words.h"
#include "effects/range_runner.h"
#include "platform/failure_texts.h"
#include "sound/sample_io.h"
#include "view/commands/view_words.h"

namespace sonavel {
namespace {

constexpr const char* kEmptySound = "The sound is empty.";
constexpr const char* kCancelled = "The effect was cancelled.";

EffectTraits TraitsOf(const Effect& effect, Applying applying) {
    EffectTraits traits = effect.traits;
    if (applying == Applying::kAsOk) return traits;
    traits.appliesToMono = true;
    if (traits.storing != Storing::kNothing) return traits;
    traits.storing = Storing::kWholeResult;
    traits.cancelling = Cancelling::kHandsNothingOver;
    return traits;
}

class EffectRunner {
  public:
    EffectRunner(const Effect& effect, const EffectTarget& target, std::span<const double> values,
                 Applying applying = Applying::kAsOk)
        : effect_(effect),
          traits_(TraitsOf(effect, applying)),
          target_(target),
          document_(target.document),
          values_(values),
          range_(RangeOf(target)) {}

    Outcome Apply();
    Outcome Preview(PreviewPlay play);

  private:
    Result<SoundEdit> Begin();
    Outcome ChangeInPlace();
    Outcome ApplyWhole();
    template <class Pass>
    Outcome Run(const Pass& pass);
    Outcome RunIntoPairs(PairBuffer& pairs);
    void BringToPeak(const EffectPass& pass, PairBuffer& pairs);
    void Write(PairBuffer& pairs);
    void End(SoundEdit& edit);

    const Effect& effect_;
    EffectTraits traits_;
    const EffectTarget& target_;
    CSoundDoc& document_;
    std::span<const double> values_;
    FrameRange range_;
};

Outcome EffectRunner::Apply() {
    if (traits_.storing == Storing::kNothing) return Done();
    if (traits_.monoRefusal && document_.Sound().GetChannels() == 1) {
        document_.Services().prompts.ShowMessage(traits_.monoRefusal);
        return Failed(traits_.monoRefusal);
    }
    return traits_.storing == Storing::kWholeResult ? ApplyWhole() : ChangeInPlace();
}

Result<SoundEdit> EffectRunner::Begin() {
    if (!document_.Sound().HasData()) return Failed(kEmptySound);
    return document_.BeginEdit("Copy Sample", ReplacesFrames(range_.start, range_.end));
}

void EffectRunner::End(SoundEdit& edit) {
    document_.ClearPreview();
    edit.Commit(range_.start);
}

// The pass gets its progress window, which closes behind it.
template <class Pass>
Outcome EffectRunner::Run(const Pass& pass) try {
    const CWave& sound = document_.Sound();
    const auto processor =
        effect_.make(values_, {sound.GetSamplesPerSecond(), sound.GetBits(), sound.GetChannels(),
                               range_.Frames(), target_.state});
    const auto progress = document_.Services().progress.CreateProgress(std::string("Progress") +
                                                                       traits_.progressSuffix);
    EffectPass run(traits_, sound, range_, *processor, *progress);
    switch (pass(run)) {
        case WorkEnd::kFinished:
            return Done();
        case WorkEnd::kStopped:
            return Cancelled();
        default:
            return Failed(failure::kMemory);
    }
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome EffectRunner::ChangeInPlace() {
    Result<SoundEdit> edit = Begin();
    if (!edit) return edit.Ended();
    Outcome outcome = Run([&](EffectPass& pass) { return pass.RunInPlace(document_.Sound()); });
    if (outcome)
        End(*edit);
    else
        edit->TakeBack();
    return outcome;
}

Outcome EffectRunner::RunIntoPairs(PairBuffer& pairs) {
    Outcome outcome = Run([&](EffectPass& pass) {
        const WorkEnd end = pass.RunIntoPairs(pairs);
        if (end == WorkEnd::kFinished) BringToPeak(pass, pairs);
        return end;
    });
    return outcome.IsCancelled() ? Failed(kCancelled) : outcome;
}

// Silence stays silence, instead of 0 / 0.
void EffectRunner::BringToPeak(const EffectPass& pass, PairBuffer& pairs) {
    constexpr float kFullScale = 32767;
    if (traits_.peak == PeakRule::kWithin16Bits) {
        const float peak = std::max(pass.PeaksOf(0).after, pass.PeaksOf(1).after);
        if (peak > kFullScale) pairs.Scale(kFullScale / peak);
    }
    if (traits_.peak != PeakRule::kAsBefore) return;
    for (unsigned channel = 0; channel < document_.Sound().GetChannels(); ++channel)
        if (const auto [before, after] = pass.PeaksOf(channel); after > 0)
            pairs.Rescale(channel, after, before);
}

Outcome EffectRunner::ApplyWhole() {
    if (range_.Frames() == 0) return Failed(kEmptySound);
    PairBuffer pairs(range_.Frames());
    if (!pairs.HasMemory()) return Failed(failure::kMemory);
    Result<SoundEdit> edit = Begin();
    if (!edit) return edit.Ended();
    if (Outcome run = RunIntoPairs(pairs); !run) return run;
    Write(pairs);
    End(*edit);
    return Done();
}

void EffectRunner::Write(PairBuffer& pairs) {
    CWave& sound = document_.Sound();
    const bool mono = sound.GetChannels() == 1;
    if (mono && !traits_.appliesToMono) return;
    pairs.ForEachPart([&](std::uint32_t first, std::span<float> part) {
        if (!mono) return WriteInterleaved(sound, range_.start + first, part);
        for (std::size_t i = 0; i < part.size() / 2; ++i) part[i] = part[2 * i];
        WriteTruncated(sound, 0, range_.start + first, part.first(part.size() / 2));
    });
}

// The sample count of the range is taken as that of a stereo result, so a mono range is previewed
// for half its length.
Outcome EffectRunner::Preview(PreviewPlay play) {
    if (range_.Frames() == 0) return Failed(kEmptySound);
    PairBuffer pairs(range_.Frames());
    if (!pairs.HasMemory()) return Failed(failure::kMemory);
    if (Outcome run = RunIntoPairs(pairs); !run) return run;
    const CWave& sound = document_.Sound();
    if (traits_.previewScalesEightBits && sound.GetBits() == 8) pairs.Scale(kEightBitScale);
    return document_.MakePreview(pairs.Pairs(), play, range_.Frames() * sound.GetChannels(),
                                 CSoundDoc::PreviewFormat::kComputedStereo);
}

}  // namespace

FrameRange RangeOf(const EffectTarget& target) {
    return RangeToWorkOn(target.selectionStart, target.selectionEnd,
                         target.document.Sound().GetFrameCount());
}

Outcome ApplyEffect(const Effect& effect, const EffectTarget& target,
                    std::span<const double> values, Applying applying) {
    if (effect.range.compute) return ApplyRangeEffect(effect, target, values);
    return EffectRunner(effect, target, values, applying).Apply();
}

namespace {

StepWords WordsFor(const CSoundView& view, const Effect& effect, std::span<const double> values,
                   Applying applying) {
    const auto command = CommandOf(effect, values, applying);
    if (!command) return {};
    StepWords words = WordsAt(view, *command);
    if (effect.commandId == effect_command::kReduceNoise) words.takes = Supply::kNoise;
    return words;
}

}  // namespace

Outcome ApplyEffectTo(CSoundView& view, EffectState& state, const Effect& effect,
                      std::span<const double> values, Applying applying) {
    const Selection at = view.State().GetSelection();
    const std::uint32_t before = view.FrameCount();
    StepScript& steps = view.Document().Steps();
    steps.NoteFound(Supply::kNoise, MarkOf(state.noise));
    const DescribedStep step(steps, WordsFor(view, effect, values, applying));
    Outcome applied =
        ApplyEffect(effect, {view.Document(), at.start, at.end, state}, values, applying);
    if (!applied || at.start == at.end || view.FrameCount() == before) return applied;
    const std::uint32_t end = std::max(at.start, at.end);
    view.State().SetSelection(std::min(at.start, at.end), end - before + view.FrameCount());
    view.Repaint().TimeAreas();
    return applied;
}

Outcome PreviewEffect(const Effect& effect, const EffectTarget& target,
                      std::span<const double> values, PreviewPlay play) {
    if (effect.range.compute) return PreviewRangeEffect(effect, target, values, play);
    return EffectRunner(effect, target, values).Preview(play);
}

Outcome LearnNoiseFrom(const EffectTarget& target) try {
    const FrameRange range = RangeOf(target);
    if (range.Frames() == 0) return Failed(kEmptySound);
    const auto progress =
        target.document.Services().progress.CreateProgress("Progress Noise Profile");
    Result<NoiseProfile> learned =
        LearnNoise({target.document.Sound(), range, {}, target.state, *progress});
    if (!learned) return learned.Ended();
    target.state.noise = std::move(*learned);
    std::vector<std::string> lines = PlaceLines(target.selectionStart, target.selectionEnd);
    lines.emplace_back("noise-profile");
    target.document.Steps().NoteLeft(Supply::kNoise, std::move(lines), MarkOf(target.state.noise));
    return Done();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
