// The commands that change the format of the active document's sound.
#include <string>

#include "document/edit_operations.h"
#include "effects/resample.h"
#include "script/command_rows.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

Outcome SetRate(ScriptSession& session, const Arguments& words) {
    const auto rate = static_cast<std::uint32_t>(words.Whole("RATE"));
    CSoundDoc& document = session.Document();
    // A change to the rate that the sound has is no edit.
    if (document.Sound().GetSamplesPerSecond() == rate) return Done();
    const DescribedStep step(document.Steps(), {{"set-rate " + std::to_string(rate)}});
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample", ReplacesFormat());
    if (!edit) return edit.Ended();
    document.Sound().SetRate(rate);
    edit->Commit(0);
    return Done();
}

Outcome ConvertBits(ScriptSession& session, const Arguments& words) {
    const auto bits = static_cast<unsigned>(std::stoul(words.Text("BITS")));
    CSoundDoc& document = session.Document();
    return edit::ConvertFormat(document, document.Sound().GetChannels(), ChannelChoice::kBothOrMix,
                               bits);
}

Outcome ConvertChannels(ScriptSession& session, const Arguments& words) {
    const unsigned channels = words.Text("CHANNELS") == "1" ? 1 : 2;
    const auto choice = static_cast<ChannelChoice>(words.Whole("mode"));
    CSoundDoc& document = session.Document();
    return edit::ConvertFormat(document, channels, choice, document.Sound().GetBits());
}

Outcome Resample(ScriptSession& session, const Arguments& words) {
    return ResampleView(session.View(), static_cast<std::uint32_t>(words.Whole("RATE")));
}

}  // namespace

std::vector<CommandRow> FormatCommandRows() {
    return {
        {.name = "set-rate",
         .does = "Change only the rate: the sound plays faster or slower",
         .positional = {{"RATE", ValueRule::Whole(1, 0x7FFFFFFF)}},
         .run = SetRate},
        {.name = "resample",
         .does = "Change the rate and keep the sound: markers keep their times",
         .positional = {{"RATE", ValueRule::Whole(kLeastResampledRate, kGreatestResampledRate)}},
         .run = Resample},
        {.name = "convert-bits",
         .does = "Convert to 8, 16 or 32 bits, which are floats",
         .positional = {{"BITS", ValueRule::OneOf({"8", "16", "32"})}},
         .run = ConvertBits},
        {.name = "convert-channels",
         .does = "Convert to 1 or 2 channels; mode 0 left, 1 right, 2 both or mix",
         .positional = {{"CHANNELS", ValueRule::OneOf({"1", "2"})}},
         .keys = {{"mode", ValueRule::Whole(0, 2), "2"}},
         .run = ConvertChannels},
    };
}

}  // namespace sonavel::script
