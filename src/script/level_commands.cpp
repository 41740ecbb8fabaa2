// Normalising, which a script tells by its keys what to normalise to, measuring, and what is
// learned of a noise.
#include <array>
#include <cstdio>
#include <ostream>

#include "effects/effect_runner.h"
#include "effects/normalise.h"
#include "script/command_rows.h"
#include "script/script_session.h"
#include "sound/sound_loudness.h"

namespace sonavel::script {
namespace {

Outcome NormaliseLevel(ScriptSession& session, const Arguments& words) {
    const Effect& effect = *FindEffect("normalise");
    const bool loudness = words.Has("loudness");
    const std::array<double, 4> values = {
        loudness ? 1.0 : 0.0, words.Decimal("peak"),
        loudness ? words.Decimal("loudness") : effect.parameters[2].start,
        words.Text("channels") == "each" ? 1.0 : 0.0};
    return ApplyEffectTo(session.View(), session.Effects(), effect, values);
}

Outcome PrintLoudness(ScriptSession& session, const Arguments&) {
    const CWave& sound = session.Document().Sound();
    if (!sound.HasData()) return Failed("The document has no sound.");
    const auto progress =
        session.Document().Services().progress.CreateProgress("Progress Loudness");
    const auto found = MeasureLoudness(sound, RangeOf(session.Target()), *progress);
    if (!found) return found.Ended();
    char line[160];
    std::snprintf(line, sizeof line,
                  "loudness integrated=%.1f range=%.1f true-peak=%.1f sample-peak=%.1f\n",
                  found->integrated.value_or(DecibelsOfShare(0)), found->range,
                  DecibelsOfShare(found->truePeak), DecibelsOfShare(found->samplePeak));
    session.Out() << line;
    return Done();
}

Outcome LearnNoiseHere(ScriptSession& session, const Arguments&) {
    return LearnNoiseFrom(session.Target());
}

}  // namespace

std::vector<CommandRow> LevelCommandRows() {
    const auto parameters = FindEffect("normalise")->parameters;
    const auto decibels = [&](std::size_t index) {
        return ValueRule::Decimal(parameters[index].least, parameters[index].greatest, 1);
    };
    return {
        {.name = "normalise",
         .does = "Bring the sound to a peak in dB, or to a loudness in LUFS with a ceiling for the "
                 "true peak",
         .keys = {{"peak", decibels(1), "-1.0"},
                  {"loudness", decibels(2)},
                  {"channels", ValueRule::OneOf({"together", "each"}), "together"}},
         .run = NormaliseLevel},
        {.name = "loudness", .does = "Print a line about loudness and peaks", .run = PrintLoudness},
        {.name = "noise-profile",
         .does = "Learn the noise that noise-reduce lowers",
         .run = LearnNoiseHere},
    };
}

}  // namespace sonavel::script
