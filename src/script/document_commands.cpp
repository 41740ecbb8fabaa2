// The commands that make, open, save, close and activate documents.
#include <optional>

#include "exchange/open_refusal.h"
#include "exchange/sound_import.h"
#include "script/command_rows.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

constexpr std::int64_t kHighestRate = 0x7FFFFFFF;

template <class Number>
std::optional<Number> NumberIfGiven(const Arguments& words, std::string_view key) {
    if (!words.Has(key)) return std::nullopt;
    return static_cast<Number>(std::stoul(words.Text(key)));
}

Outcome New(ScriptSession& session, const Arguments& words) {
    const NewSoundChoice format = {
        .samplesPerSecond = static_cast<std::uint32_t>(words.Whole("rate")),
        .channels = NumberIfGiven<unsigned>(words, "channels").value(),
        .bits = NumberIfGiven<unsigned>(words, "bits").value()};
    return session.Sounds().NewDocument(format);
}

Outcome Open(ScriptSession& session, const Arguments& words) {
    const std::filesystem::path path = session.PathOf(words.Text("PATH"));
    Outcome opened = session.Sounds().OpenDocument(path);
    if (!opened.IsFailed() || !OpenRefuses(path)) return opened;
    CodecWatcher watcher;
    if (!ProbeImport(path, &session.Codecs(), watcher)) return opened;
    return Failed(opened.Reason() + " The command import reads it.");
}

Outcome Save(ScriptSession& session, const Arguments& words) {
    CSoundDoc& document = session.Document();
    if (words.Has("PATH")) return document.SaveDocument(session.PathOf(words.Text("PATH")));
    if (document.Path().empty()) return Failed("The document has no file yet.");
    return document.SaveDocument(document.Path());
}

Outcome SaveAs(ScriptSession& session, const Arguments& words) {
    CSoundDoc& document = session.Document();
    const SaveAsRequest shown = document.QuestionOfSaveAs();
    return document.SaveAs(
        {.path = session.PathOf(words.Text("PATH")),
         .channels = NumberIfGiven<unsigned>(words, "channels").value_or(shown.channels),
         .bits = NumberIfGiven<unsigned>(words, "bits").value_or(shown.bits),
         .saveMarkers = words.Has("markers") ? words.Switch("markers") : shown.saveMarkers});
}

Outcome Close(ScriptSession& session, const Arguments&) {
    Workspace& sounds = session.Sounds();
    sounds.Close(sounds.ActiveIndex().value());
    return Done();
}

Outcome Activate(ScriptSession& session, const Arguments& words) {
    const std::int64_t number = words.Whole("N");
    if (number > static_cast<std::int64_t>(session.Sounds().Count()))
        return Failed("There is no document " + std::to_string(number) + ".");
    session.Sounds().Activate(static_cast<std::size_t>(number - 1));
    return Done();
}

const ValueRule kRate = ValueRule::Whole(1, kHighestRate);
const ValueRule kChannels = ValueRule::OneOf({"1", "2"});
const ValueRule kBits = ValueRule::OneOf({"8", "16", "32"});
const ValueRule kSavedBits = ValueRule::OneOf({"8", "16"});

}  // namespace

std::vector<CommandRow> DocumentCommandRows() {
    return {
        {.name = "new",
         .does = "Make an empty document",
         .keys = {{"rate", kRate, "44100"}, {"channels", kChannels, "1"}, {"bits", kBits, "8"}},
         .needs = Needs::kNothing,
         .run = New},
        {.name = "open",
         .does = "Open a file",
         .positional = {{"PATH", ValueRule::Path()}},
         .needs = Needs::kNothing,
         .run = Open},
        {.name = "save",
         .does = "Save, under PATH by its extension",
         .positional = {{"PATH", ValueRule::Path()}},
         .firstOptional = 0,
         .inEditor = InEditor::kRefused,
         .run = Save},
        {.name = "save-as",
         .does = "Convert channels and bits, then save under PATH by its extension",
         .positional = {{"PATH", ValueRule::Path()}},
         .keys = {{"channels", kChannels}, {"bits", kSavedBits}, {"markers", ValueRule::Switch()}},
         .inEditor = InEditor::kRefused,
         .run = SaveAs},
        {.name = "close",
         .does = "Close the active document without saving",
         .inEditor = InEditor::kRefused,
         .run = Close},
        {.name = "activate",
         .does = "Make the N-th open document active",
         .positional = {{"N", ValueRule::Whole(1, kHighestRate)}},
         .needs = Needs::kNothing,
         .run = Activate},
    };
}

}  // namespace sonavel::script
