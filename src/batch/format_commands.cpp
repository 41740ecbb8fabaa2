// The commands that change the format of the active document's sound.
#include <string>

#include "batch/batch_session.h"
#include "batch/command_rows.h"
#include "platform/failure_texts.h"

namespace sonavel::batch {
namespace {

// Runs a change of format as one edit. A change to the format that the sound has is no edit.
template <class Change>
Outcome ChangeFormat(BatchSession& session, bool hasItAlready, const Change& change) {
    if (hasItAlready) return Done();
    CSoundDoc& document = session.Document();
    Result<SoundEdit> edit = document.BeginEdit("Copy Sample");
    if (!edit) return edit.Ended();
    if (!change(document.Sound())) return Failed(failure::kMemory);
    edit->Commit(0);
    return Done();
}

Outcome SetRate(BatchSession& session, const Arguments& words) {
    const auto rate = static_cast<std::uint32_t>(words.Whole("RATE"));
    const bool same = session.Document().Sound().GetSamplesPerSecond() == rate;
    return ChangeFormat(session, same, [rate](CWave& sound) {
        sound.SetRate(rate);
        return true;
    });
}

Outcome ConvertBits(BatchSession& session, const Arguments& words) {
    const auto bits = static_cast<unsigned>(std::stoul(words.Text("BITS")));
    const bool same = session.Document().Sound().GetBits() == bits;
    return ChangeFormat(session, same, [bits](CWave& sound) { return sound.ConvertBits(bits); });
}

Outcome ConvertChannels(BatchSession& session, const Arguments& words) {
    const unsigned channels = words.Text("CHANNELS") == "1" ? 1 : 2;
    const auto choice = static_cast<ChannelChoice>(words.Whole("mode"));
    const bool same = session.Document().Sound().GetChannels() == channels;
    return ChangeFormat(session, same, [channels, choice](CWave& sound) {
        return sound.ConvertChannels(channels, choice);
    });
}

}  // namespace

std::vector<CommandRow> FormatCommandRows() {
    return {
        {.name = "set-rate",
         .does = "Change only the rate: the sound plays faster or slower",
         .positional = {{"RATE", ValueRule::Whole(1, 0x7FFFFFFF)}},
         .run = SetRate},
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

}  // namespace sonavel::batch
