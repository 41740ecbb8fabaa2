#include "spatial/place_many.h"

#include "exchange/sound_export.h"
#include "platform/code_page_949.h"
#include "platform/target_folder.h"
#include "spatial/spatializer.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

Outcome CheckFolder(const ManyPlacesChoice& choice, const std::vector<fs::path>& paths) {
    if (Outcome made = MakeTargetFolder(choice.folder); !made) return made;
    if (choice.filesThere == FilesThere::kReplace) return Done();
    std::error_code error;
    for (const fs::path& path : paths)
        if (fs::exists(path, error))
            return Failed("There is a file " + path.filename().string() + " already.");
    return Done();
}

Outcome WritePlace(CSoundDoc& document, const Placing& placing, const fs::path& path,
                   Listener& listener) {
    CWavePlayer& sound = document.Sound();
    const auto progress =
        document.Services().progress.CreateProgress("Progress " + path.filename().string());
    const Result<Sound> placed = PlacedCopy(sound, placing, listener, *progress);
    if (!placed) return placed.Ended();
    ExportChoice choice;
    choice.depth = placed->GetBits() == 32 ? EncodedDepth::kFloat32 : EncodedDepth::k16;
    choice.frames = {0, placed->GetFrameCount()};
    document.NoteWriting(path);
    return ExportSound(path, *placed, document.Extras(), choice, document.Services().codecs,
                       sound.FileHost());
}

}  // namespace

Result<ManyPlaces> PreparePlaces(const CSoundDoc& document, const ManyPlacesChoice& choice) {
    ManyPlaces places;
    Result<std::vector<NamedPoint>> points = ParsePoints(choice.points);
    if (!points) return points.Ended();
    places.points = *std::move(points);
    const std::string title = fs::path(DisplayText(document.Title())).stem().string();
    const auto names = NamesOfPlaces(choice.pattern, places.points, title);
    if (!names) return names.Ended();
    for (const std::string& name : *names) places.paths.push_back(choice.folder / (name + ".wav"));
    places.smoothness = choice.smoothness;
    if (Outcome checked = CheckFolder(choice, places.paths); !checked) return checked;
    return places;
}

Outcome WritePlaces(CSoundDoc& document, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten) {
    for (std::size_t i = 0; i < places.points.size(); ++i) {
        const Placing placing = {.points = {places.points[i].position},
                                 .smoothness = places.smoothness};
        if (Outcome written = WritePlace(document, placing, places.paths[i], listener); !written)
            return written;
        tellWritten(i);
    }
    return Done();
}

}  // namespace sonavel
