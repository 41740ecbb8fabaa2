// The commands of selection, clipboard, mixing and markers that take words of their own.
#include <algorithm>

#include "platform/small_file.h"
#include "script/command_rows.h"
#include "script/script_session.h"
#include "view/commands/edit_commands.h"
#include "view/commands/marker_commands.h"
#include "view/commands/view_commands.h"

namespace sonavel::script {
namespace {

// The edit operations clamp to this themselves.
constexpr std::int64_t kGreatestPercent = 100000;

// Enough for every sound that the editor holds, with other chunks beside it.
constexpr std::size_t kMostImageBytes = std::size_t{0xFFFFFFFF};

std::uint32_t Frame(const CSoundView& view, std::int64_t position) {
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(position, 0, std::int64_t{view.FrameCount()}));
}

// --- Selection

Outcome Select(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    view.State().SetSelection(Frame(view, words.Whole("START")), Frame(view, words.Whole("END")));
    return Done();
}

Outcome SetCursor(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    view.State().SetCursor(Frame(view, words.Whole("FRAME")));
    return Done();
}

// --- Pasting and mixing

int Percent(const Arguments& words, std::string_view key) {
    return static_cast<int>(words.Whole(key));
}

// The steps before the dialog that the words stand for.
Outcome PrepareFor(ScriptSession& session, int menuCommand) {
    if (Outcome offered = session.Commands().Offered(menuCommand); !offered) return offered;
    return PrepareClip(session.View());
}

Outcome ReplicateClip(ScriptSession& session, const Arguments& words) {
    if (Outcome ready = PrepareFor(session, view_command::kPasteReplicate); !ready) return ready;
    return PasteReplicate(session.View(), static_cast<int>(words.Whole("COUNT")));
}

Outcome Mix(ScriptSession& session, const Arguments& words) {
    if (Outcome ready = PrepareFor(session, view_command::kMix); !ready) return ready;
    return MixClipboard(session.View(),
                        {Percent(words, "clipboard"), Percent(words, "destination")});
}

Outcome CrossfadeMix(ScriptSession& session, const Arguments& words) {
    if (Outcome ready = PrepareFor(session, view_command::kCrossfadeMix); !ready) return ready;
    return CrossfadeMixClipboard(
        session.View(), {Percent(words, "clipboard-start"), Percent(words, "clipboard-end"),
                         Percent(words, "destination-start"), Percent(words, "destination-end")});
}

Outcome InsertSilenceHere(ScriptSession& session, const Arguments& words) {
    if (Outcome offered = session.Commands().Offered(view_command::kInsertSilence); !offered)
        return offered;
    CSoundView& view = session.View();
    const std::uint32_t rate = view.Sound().GetSamplesPerSecond();
    return InsertSilence(view, FramesOfTime(words.Text("LENGTH"), rate));
}

// --- The clipboard's bytes

Outcome LoadClipboard(ScriptSession& session, const Arguments& words) {
    const auto bytes = ReadSmallFile(session.PathOf(words.Text("PATH")), kMostImageBytes);
    if (!bytes) return Failed("The file could not be read.");
    session.Clipboard().SetImage({bytes->begin(), bytes->end()});
    return Done();
}

Outcome SaveClipboard(ScriptSession& session, const Arguments& words) {
    const auto image = session.Clipboard().GetImage();
    if (!image) return Failed("The clipboard is empty.");
    const std::string_view bytes(reinterpret_cast<const char*>(image->data()), image->size());
    if (!ReplaceFile(session.PathOf(words.Text("PATH")), bytes))
        return Failed("The file could not be written.");
    return Done();
}

// --- Markers

struct MarkerWords {
    std::uint32_t position;
    std::string name;
    std::uint32_t length;
};

MarkerWords ReadMarkerWords(const CSoundView& view, const Arguments& words) {
    return {Frame(view, words.Whole("POSITION")), words.Has("name") ? words.Text("name") : "",
            Frame(view, words.Whole("length"))};
}

Outcome AddMarker(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    if (view.FrameCount() == 0) return Failed("The document has no sound.");
    const MarkerWords marker = ReadMarkerWords(view, words);
    sonavel::AddMarker(view, marker.position, marker.name, marker.length);
    return Done();
}

Outcome SetMarker(ScriptSession& session, const Arguments& words) {
    CSoundView& view = session.View();
    const MarkerWords marker = ReadMarkerWords(view, words);
    const auto id = static_cast<std::uint32_t>(words.Whole("ID"));
    return sonavel::SetMarker(view, id, marker.position, marker.name, marker.length);
}

Outcome RemoveMarker(ScriptSession& session, const Arguments& words) {
    const auto id = static_cast<std::uint32_t>(words.Whole("ID"));
    return sonavel::RemoveMarker(session.View(), id);
}

// --- Rows

const PositionalRule kPath = {"PATH", ValueRule::Path()};
const PositionalRule kPosition = {"POSITION", ValueRule::Position()};
const PositionalRule kMarkerId = {"ID", ValueRule::Whole(0, 0xFFFFFFFF)};
const std::vector<KeyRule> kMarkerKeys = {{"name", ValueRule::Text()},
                                          {"length", ValueRule::Position(), "0"}};

KeyRule PercentKey(std::string name, std::string defaultText) {
    return {std::move(name), ValueRule::Whole(-kGreatestPercent, kGreatestPercent),
            std::move(defaultText)};
}

std::vector<CommandRow> MarkerRows() {
    return {
        {.name = "marker-add",
         .does = "Add a marker",
         .positional = {kPosition},
         .keys = kMarkerKeys,
         .run = AddMarker},
        {.name = "marker-set",
         .does = "Change the marker of that number; without a name the old one stays",
         .positional = {kMarkerId, kPosition},
         .keys = kMarkerKeys,
         .run = SetMarker},
        {.name = "marker-delete",
         .does = "Delete the marker of that number",
         .positional = {kMarkerId},
         .run = RemoveMarker},
    };
}

}  // namespace

std::vector<CommandRow> EditCommandRows() {
    std::vector<CommandRow> rows = {
        {.name = "select",
         .does = "Select the frames from START up to END",
         .positional = {{"START", ValueRule::Position()}, {"END", ValueRule::Position()}},
         .run = Select},
        {.name = "cursor",
         .does = "Set the cursor",
         .positional = {{"FRAME", ValueRule::Position()}},
         .run = SetCursor},
        {.name = "paste-replicate",
         .does = "Insert the clipboard several times",
         .positional = {{"COUNT", ValueRule::Whole(1, kHighestReplicateCount)}},
         .run = ReplicateClip},
        {.name = "insert-silence",
         .does = "Insert silence at the cursor, or in place of the selection",
         .positional = {{"LENGTH", ValueRule::Time()}},
         .run = InsertSilenceHere},
        {.name = "mix",
         .does = "Mix the clipboard in, levels in percent",
         .keys = {PercentKey("clipboard", "100"), PercentKey("destination", "100")},
         .run = Mix},
        {.name = "crossfade-mix",
         .does = "Mix the clipboard in with fading levels, in percent",
         .keys = {PercentKey("clipboard-start", "0"), PercentKey("clipboard-end", "100"),
                  PercentKey("destination-start", "100"), PercentKey("destination-end", "0")},
         .run = CrossfadeMix},
        {.name = "clipboard-load",
         .does = "Put a file's bytes on the clipboard as they are",
         .positional = {kPath},
         .needs = Needs::kNothing,
         .run = LoadClipboard},
        {.name = "clipboard-save",
         .does = "Write the clipboard's bytes to a file",
         .positional = {kPath},
         .needs = Needs::kNothing,
         .run = SaveClipboard},
    };
    for (CommandRow& row : MarkerRows()) rows.push_back(std::move(row));
    return rows;
}

}  // namespace sonavel::script
