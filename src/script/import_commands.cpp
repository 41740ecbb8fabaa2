// The commands that import foreign files, and those of the tags that they bring.
#include <ostream>

#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

ImportChannels ChannelsOf(const std::string& word) {
    if (word == "mono") return ImportChannels::kMono;
    if (word == "left") return ImportChannels::kLeft;
    if (word == "right") return ImportChannels::kRight;
    return ImportChannels::kKeep;
}

Outcome Import(ScriptSession& session, const Arguments& words) {
    ImportChoice choice;
    if (words.Text("depth") == "16") choice.depth = ImportDepth::kRoundTo16;
    choice.channels = ChannelsOf(words.Text("channels"));
    return session.Sounds().ImportDocument(session.PathOf(words.Text("PATH")), choice);
}

Outcome Tags(ScriptSession& session, const Arguments&) {
    for (const SoundTag& tag : session.Document().Tags())
        session.Out() << "tag " << tag.key << '=' << QuotedText(tag.value) << '\n';
    return Done();
}

Outcome TagSet(ScriptSession& session, const Arguments& words) {
    session.Document().SetTag(words.Text("KEY"), words.Text("VALUE"));
    return Done();
}

}  // namespace

std::vector<CommandRow> ImportCommandRows() {
    return {
        {.name = "import",
         .does = "Open any sound file as a new document; depths beyond 16 bits become floats",
         .positional = {{"PATH", ValueRule::Path()}},
         .keys = {{"depth", ValueRule::OneOf({"keep", "16"}), "keep"},
                  {"channels", ValueRule::OneOf({"keep", "mono", "left", "right"}), "keep"}},
         .needs = Needs::kNothing,
         .run = Import},
        {.name = "tags", .does = "Print a line for each tag", .run = Tags},
        {.name = "tag-set",
         .does = "Set a tag; an empty value removes it",
         .positional = {{"KEY", ValueRule::Text()}, {"VALUE", ValueRule::Text()}},
         .run = TagSet},
    };
}

}  // namespace sonavel::script
