// Many places at once, scenes of many sounds, loudspeakers and responses, as commands.
#include <memory>
#include <ostream>

#include "codec/client/listener_reading.h"
#include "exchange/sound_import.h"
#include "platform/small_file.h"
#include "script/command_rows.h"
#include "script/report_text.h"
#include "script/scene_file.h"
#include "script/scene_rendering.h"
#include "script/script_session.h"
#include "spatial/crosstalk.h"
#include "spatial/place_many.h"
#include "spatial/scene_points.h"

namespace sonavel::script {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostTextBytes = 1 << 20;

Result<std::string> TextOf(const fs::path& path) {
    std::optional<std::string> text = ReadSmallFile(path, kMostTextBytes);
    if (!text) return Failed(failure::kOpenFile);
    return *std::move(text);
}

// --- Many places

void PrintWritten(std::ostream& out, const ManyPlaces& places, std::size_t index) {
    const PolarPosition polar = PolarOf(places.points[index].position);
    out << "wrote " << QuotedText(places.paths[index].string())
        << " azimuth=" << FixedText(polar.azimuth, 1)
        << " elevation=" << FixedText(polar.elevation, 1)
        << " distance=" << FixedText(polar.distance, 2) << '\n';
}

Outcome PlaceMany(ScriptSession& session, const Arguments& words) {
    if (!words.Has("points")) return Failed("place-many needs points=FILE.csv.");
    Result<std::string> points = TextOf(session.PathOf(words.Text("points")));
    if (!points) return points.Ended();
    const ManyPlacesChoice choice = {
        .folder = session.PathOf(words.Text("FOLDER")),
        .points = *std::move(points),
        .pattern = words.Text("pattern"),
        .smoothness = words.Switch("smooth") ? Smoothness::kSmooth : Smoothness::kStepped,
        .filesThere = words.Switch("overwrite") ? FilesThere::kReplace : FilesThere::kKeep};
    const Result<ManyPlaces> places = PreparePlaces(session.Document(), choice);
    if (!places) return places.Ended();
    return WritePlaces(session.Document(), *places, session.Ears(),
                       [&](std::size_t index) { PrintWritten(session.Out(), *places, index); });
}

// --- Scenes

SoundOfScene LoadSound(ScriptSession& session, const fs::path& path) {
    const TransferHost host{
        .progress = &session.Sounds().Services().progress, .warn = {}, .note = {}};
    Result<ImportedSound> imported = ImportSound(path, &session.Codecs(), {}, host);
    if (!imported) return imported.Ended();
    return std::make_shared<const Sound>(std::move(imported->sound));
}

Outcome MixScene(ScriptSession& session, const Arguments& words) {
    const fs::path path = session.PathOf(words.Text("FILE"));
    const Result<std::string> text = TextOf(path);
    if (!text) return text.Ended();
    const Result<std::vector<SceneLine>> lines = ParseScene(*text);
    if (!lines) return lines.Ended();
    const auto load = [&](const SceneLine& line) {
        return LoadSound(session, path.parent_path() / line.path);
    };
    Result<Sound> scene =
        RenderScene(*lines, {load, session.Ears(), session.Sounds().Services().progress});
    if (!scene) return scene.Ended();
    session.Sounds().NewDocumentFromSound(*std::move(scene), "Scene_");
    return Done();
}

// --- Loudspeakers

Outcome CrossTalk(ScriptSession& session, const Arguments& words) {
    const Selection selection = session.View().State().GetSelection();
    return CancelCrosstalk(session.Document(), selection.start, selection.end,
                           words.Decimal("angle"), session.Ears());
}

// --- Responses

Outcome UseResponses(ScriptSession& session, const Arguments& words) {
    if (words.Text("PATH") == "default") {
        session.Ears().UseTable();
        return Done();
    }
    const auto window = session.Sounds().Services().progress.CreateProgress("Progress Responses");
    return ReadListener(session.Codecs(), session.PathOf(words.Text("PATH")), *window,
                        session.Ears());
}

}  // namespace

std::vector<CommandRow> SpaceCommandRows() {
    return {
        {.name = "crosstalk",
         .does = "Make a sound for headphones right for loudspeakers at plus and minus the angle",
         .keys = {{"angle", ValueRule::Decimal(kLeastSpeakerAngle, kGreatestSpeakerAngle, 1),
                   "30"}},
         .run = CrossTalk},
        {.name = "place-many",
         .does = "Write the sound as heard from each point of a table, a file each",
         .positional = {{"FOLDER", ValueRule::Path()}},
         .keys = {{"points", ValueRule::Path()},
                  {"pattern", ValueRule::Text(), std::string(kPlacePattern)},
                  {"smooth", ValueRule::Switch(), "off"},
                  {"overwrite", ValueRule::Switch(), "off"}},
         .run = PlaceMany},
        {.name = "scene",
         .does = "Mix the scene that a file describes into a new stereo document",
         .positional = {{"FILE", ValueRule::Path()}},
         .needs = Needs::kNothing,
         .run = MixScene},
        {.name = "responses",
         .does = "Let the smooth commands use a SOFA file's responses; default: the table's",
         .positional = {{"PATH", ValueRule::Path()}},
         .needs = Needs::kNothing,
         .run = UseResponses},
    };
}

}  // namespace sonavel::script
