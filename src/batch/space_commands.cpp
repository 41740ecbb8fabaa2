// Many places at once, scenes of many sounds and loudspeakers, as commands.
#include <ostream>

#include "batch/batch_session.h"
#include "batch/command_rows.h"
#include "batch/report_text.h"
#include "batch/scene_file.h"
#include "exchange/sound_export.h"
#include "exchange/sound_import.h"
#include "platform/code_page_949.h"
#include "platform/small_file.h"
#include "spatial/crosstalk.h"
#include "spatial/point_list.h"
#include "spatial/scene_mix.h"
#include "spatial/scene_points.h"
#include "spatial/spatializer.h"

namespace sonavel::batch {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostTextBytes = 1 << 20;

Result<std::string> TextOf(const fs::path& path) {
    std::optional<std::string> text = ReadSmallFile(path, kMostTextBytes);
    if (!text) return Failed(failure::kOpenFile);
    return *std::move(text);
}

// --- Many places

struct Places {
    std::vector<NamedPoint> points;
    std::vector<fs::path> paths;  // of each point
};

Result<Places> PlacesFrom(const CSoundDoc& document, const Arguments& words) {
    if (!words.Has("points")) return Failed("place-many needs points=FILE.csv.");
    const fs::path folder = AbsolutePath(words.Text("FOLDER"));
    std::error_code error;
    if (!fs::is_directory(folder, error)) return Failed("There is no such folder.");
    const Result<std::string> text = TextOf(AbsolutePath(words.Text("points")));
    if (!text) return text.Ended();
    Places places;
    Result<std::vector<NamedPoint>> points = ParsePoints(*text);
    if (!points) return points.Ended();
    places.points = *std::move(points);
    const std::string title = fs::path(DisplayText(document.Title())).stem().string();
    const auto names = NamesOfPlaces(words.Text("pattern"), places.points, title);
    if (!names) return names.Ended();
    for (const std::string& name : *names) places.paths.push_back(folder / (name + ".wav"));
    if (words.Switch("overwrite")) return places;
    for (const fs::path& path : places.paths)
        if (fs::exists(path, error))
            return Failed("There is a file " + QuotedText(path.string()) + " already.");
    return places;
}

void PrintWritten(std::ostream& out, const fs::path& path, const SourcePosition& position) {
    const PolarPosition polar = PolarOf(position);
    out << "wrote " << QuotedText(path.string()) << " azimuth=" << FixedText(polar.azimuth, 1)
        << " elevation=" << FixedText(polar.elevation, 1)
        << " distance=" << FixedText(polar.distance, 2) << '\n';
}

Outcome WritePlace(BatchSession& session, const Placing& placing, const fs::path& path) {
    CSoundDoc& document = session.Document();
    const auto progress = session.Sounds().Services().progress.CreateProgress(
        "Progress of " + path.filename().string());
    const Result<Sound> placed =
        PlacedCopy(document.Sound(), placing, session.Ears(), *progress);
    if (!placed) return placed.Ended();
    ExportChoice choice;
    choice.depth = placed->GetBits() == 32 ? EncodedDepth::kFloat32 : EncodedDepth::k16;
    choice.frames = {0, placed->GetFrameCount()};
    return ExportSound(path, *placed, document.Extras(), choice, &session.Codecs(),
                       document.Sound().FileHost());
}

Outcome PlaceMany(BatchSession& session, const Arguments& words) {
    const Result<Places> places = PlacesFrom(session.Document(), words);
    if (!places) return places.Ended();
    for (std::size_t i = 0; i < places->points.size(); ++i) {
        Placing placing = {.points = {places->points[i].position}};
        if (words.Switch("smooth")) placing.smoothness = Smoothness::kSmooth;
        if (Outcome written = WritePlace(session, placing, places->paths[i]); !written)
            return written;
        PrintWritten(session.Out(), places->paths[i], places->points[i].position);
    }
    return Done();
}

// --- Scenes

Outcome FailedAt(const SceneLine& line, const Outcome& why) {
    if (why.IsCancelled()) return why;
    return Failed("Line " + std::to_string(line.line) + " of the scene: " + why.Reason());
}

Result<Sound> LoadSound(BatchSession& session, const fs::path& path) {
    const TransferHost host{.progress = &session.Sounds().Services().progress,
                            .warn = {},
                            .note = {}};
    Result<ImportedSound> imported = ImportSound(path, &session.Codecs(), {}, host);
    if (!imported) return imported.Ended();
    return std::move(imported->sound);
}

Result<Sound> Mix(BatchSession& session, const std::vector<SceneLine>& lines,
                  const fs::path& folder) {
    std::optional<SceneMix> mix;
    std::uint32_t rate = 0;
    for (const SceneLine& line : lines) {
        const Result<Sound> sound = LoadSound(session, folder / line.path);
        if (!sound) return FailedAt(line, sound.Ended());
        if (!mix) {
            rate = sound->GetSamplesPerSecond();
            mix.emplace(rate, session.Ears(), session.Sounds().Services().progress);
        }
        const Outcome added =
            mix->Add({*sound, line.placing, FramesOfTime(line.start, rate), line.gain});
        if (!added) return FailedAt(line, added);
    }
    return mix->Finish();
}

Outcome MixScene(BatchSession& session, const Arguments& words) {
    const fs::path path = AbsolutePath(words.Text("FILE"));
    const Result<std::string> text = TextOf(path);
    if (!text) return text.Ended();
    const Result<std::vector<SceneLine>> lines = ParseScene(*text);
    if (!lines) return lines.Ended();
    Result<Sound> scene = Mix(session, *lines, path.parent_path());
    if (!scene) return scene.Ended();
    session.Sounds().NewDocumentFromSound(*std::move(scene), "Scene_");
    return Done();
}

// --- Loudspeakers

Outcome CrossTalk(BatchSession& session, const Arguments& words) {
    const Selection selection = session.View().State().GetSelection();
    return CancelCrosstalk(session.Document(), selection.start, selection.end,
                           words.Decimal("angle"), session.Ears());
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
                  {"pattern", ValueRule::Text(), "{name}_{azimuth}_{elevation}"},
                  {"smooth", ValueRule::Switch(), "off"},
                  {"overwrite", ValueRule::Switch(), "off"}},
         .run = PlaceMany},
        {.name = "scene",
         .does = "Mix the scene that a file describes into a new stereo document",
         .positional = {{"FILE", ValueRule::Path()}},
         .needs = Needs::kNothing,
         .run = MixScene},
    };
}

}  // namespace sonavel::batch
