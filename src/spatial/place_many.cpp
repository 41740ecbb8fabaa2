#include "spatial/place_many.h"

#include <algorithm>

#include "exchange/sound_export.h"
#include "exchange/sound_import.h"
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

Placing PlacingAt(const NamedPoint& point, Smoothness smoothness) {
    Placing placing = {.points = {point.position}, .smoothness = smoothness};
    if (point.onward.empty()) return placing;
    placing.kind = PlacingKind::kPath;
    placing.points.insert(placing.points.end(), point.onward.begin(), point.onward.end());
    return placing;
}

Outcome WritePlace(const SoundToPlace& source, const Placing& placing, const fs::path& path,
                   Listener& listener) {
    const auto progress =
        source.services.progress.CreateProgress("Progress " + path.filename().string());
    const Result<Sound> placed = PlacedCopy(source.sound, placing, listener, *progress);
    if (!placed) return placed.Ended();
    ExportChoice choice;
    choice.depth = placed->GetBits() == 32 ? EncodedDepth::kFloat32 : EncodedDepth::k16;
    choice.frames = {0, placed->GetFrameCount()};
    return ExportSound(path, *placed, source.extras, choice, source.services.codecs, source.host);
}

// Regular files that an import knows, by name.
std::vector<fs::path> SoundsIn(const fs::path& folder, const SoundCodecs* codecs) {
    std::vector<fs::path> sounds;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        CodecWatcher watcher;
        std::error_code ignored;
        if (entry->is_regular_file(ignored) && ProbeImport(entry->path(), codecs, watcher))
            sounds.push_back(entry->path());
    }
    std::ranges::sort(sounds);
    return sounds;
}

Outcome PlaceOpenSounds(const ManyPlacesChoice& choice, const std::vector<CSoundDoc*>& open,
                        Listener& listener) {
    std::set<fs::path> taken;
    std::vector<ManyPlaces> places;
    for (const CSoundDoc* document : open) {
        Result<ManyPlaces> prepared = PreparePlaces(NameOfPlaced(*document), choice, taken);
        if (!prepared) return prepared.Ended();
        places.push_back(*std::move(prepared));
    }
    for (std::size_t i = 0; i < open.size(); ++i)
        if (Outcome done = WritePlaces(*open[i], places[i], listener, [](std::size_t) {}); !done)
            return done;
    return Done();
}

Outcome PlaceFile(const fs::path& path, const ManyPlaces& places, const HostServices& services,
                  Listener& listener) {
    const TransferHost host{.progress = &services.progress, .warn = {}, .note = {}};
    const Result<ImportedSound> imported = ImportSound(path, services.codecs, {}, host);
    if (!imported) {
        if (imported.Ended().IsCancelled()) return imported.Ended();
        return Failed(path.filename().string() + ": " + imported.Reason());
    }
    return WritePlaces({imported->sound, imported->extras, services, host}, places, listener,
                       [](std::size_t) {});
}

Outcome PlaceFolder(const ManyPlacesChoice& choice, const HostServices& services,
                    Listener& listener) {
    const std::vector<fs::path> sounds = SoundsIn(choice.soundsFolder, services.codecs);
    if (sounds.empty()) return Failed("The folder has no sounds.");
    std::set<fs::path> taken;
    std::vector<ManyPlaces> places;
    for (const fs::path& path : sounds) {
        Result<ManyPlaces> prepared = PreparePlaces(path.stem().string(), choice, taken);
        if (!prepared) return prepared.Ended();
        places.push_back(*std::move(prepared));
    }
    for (std::size_t i = 0; i < sounds.size(); ++i)
        if (Outcome done = PlaceFile(sounds[i], places[i], services, listener); !done) return done;
    return Done();
}

}  // namespace

std::string NameOfPlaced(const CSoundDoc& document) {
    return fs::path(DisplayText(document.Title())).stem().string();
}

Result<ManyPlaces> PreparePlaces(std::string_view soundName, const ManyPlacesChoice& choice,
                                 std::set<fs::path>& taken) {
    ManyPlaces places;
    Result<std::vector<NamedPoint>> points = ParsePoints(choice.points);
    if (!points) return points.Ended();
    places.points = *std::move(points);
    const auto names = NamesOfPlaces(choice.pattern, places.points, soundName);
    if (!names) return names.Ended();
    for (const std::string& name : *names) places.paths.push_back(choice.folder / (name + ".wav"));
    places.smoothness = choice.smoothness;
    if (Outcome checked = CheckFolder(choice, places.paths); !checked) return checked;
    for (const fs::path& path : places.paths)
        if (!taken.insert(path).second)
            return Failed("Two sounds would become the file " + path.filename().string() + ".");
    return places;
}

Result<ManyPlaces> PreparePlaces(const CSoundDoc& document, const ManyPlacesChoice& choice) {
    std::set<fs::path> taken;
    return PreparePlaces(NameOfPlaced(document), choice, taken);
}

Outcome WritePlaces(const SoundToPlace& source, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten) {
    for (std::size_t i = 0; i < places.points.size(); ++i) {
        const Placing placing = PlacingAt(places.points[i], places.smoothness);
        if (Outcome written = WritePlace(source, placing, places.paths[i], listener); !written)
            return written;
        tellWritten(i);
    }
    return Done();
}

Outcome WritePlaces(CSoundDoc& document, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten) {
    if (!places.paths.empty()) document.NoteWriting(places.paths.front());
    const SoundToPlace source{document.Sound(), document.Extras(), document.Services(),
                              document.Sound().FileHost()};
    return WritePlaces(source, places, listener, tellWritten);
}

Outcome PlaceSounds(const ManyPlacesChoice& choice, const std::vector<CSoundDoc*>& open,
                    const HostServices& services, Listener& listener) {
    if (choice.sounds == PlacedSounds::kFolder) return PlaceFolder(choice, services, listener);
    return PlaceOpenSounds(choice, open, listener);
}

}  // namespace sonavel
