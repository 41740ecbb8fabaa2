#include "script/open_scene.h"

#include <algorithm>

#include "exchange/sound_import.h"
#include "platform/code_page_949.h"
#include "platform/small_file.h"
#include "script/report_text.h"
#include "script/scene_rendering.h"
#include "script/value_rule.h"
#include "spatial/scene_points.h"

namespace sonavel::script {
namespace {

namespace fs = std::filesystem;

constexpr int kStartDecimals = 6;
constexpr double kLeftmost = -90;  // degrees
constexpr double kRightmost = 90;

std::string StartText(double seconds) {
    return FixedText(seconds, kStartDecimals) + "s";
}

// From the folder of the scene on, where it lies in it.
fs::path FromFolder(const fs::path& path, const fs::path& folder) {
    const fs::path relative = path.lexically_relative(folder);
    const bool outside = relative.empty() || *relative.begin() == "..";
    return outside ? path : relative;
}

std::vector<SceneLine> LinesOf(const std::vector<SceneEntry>& entries, const fs::path& folder) {
    std::vector<SceneLine> lines;
    lines.reserve(entries.size());
    for (const SceneEntry& entry : entries)
        lines.push_back({static_cast<int>(lines.size()) + 1,
                         FromFolder(entry.path, folder).string(), entry.placing,
                         StartText(entry.startSeconds), entry.gain});
    return lines;
}

Outcome FailedAtLine(int line, const Outcome& why) {
    if (why.IsCancelled()) return why;
    return Failed("Line " + std::to_string(line) + " of the scene: " + why.Reason());
}

void TakeLine(const SceneLine& line, std::uint32_t rate, SceneEntry& entry) {
    entry.placing = line.placing;
    entry.startSeconds = 1.0 * FramesOfTime(line.start, rate) / rate;
    entry.gain = line.gain;
}

}  // namespace

SceneEntry EntryOf(const CSoundDoc& document) {
    return {.path = document.Path(),
            .name = DisplayText(document.Title()),
            .sound = std::shared_ptr<const Sound>(std::shared_ptr<void>(), &document.Sound()),
            .document = &document,
            .placing = {.points = {{0, 1, 0}}, .smoothness = Smoothness::kSmooth}};
}

std::vector<SceneEntry> OpenSoundsAround(const Workspace& sounds) {
    std::vector<SceneEntry> entries;
    for (std::size_t i = 0; i < sounds.Count(); ++i)
        if (const CSoundDoc& document = *sounds.At(i).document; document.Sound().GetFrameCount())
            entries.push_back(EntryOf(document));
    if (entries.size() < 2) return entries;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(entries.size() - 1);
        const double azimuth = kLeftmost + share * (kRightmost - kLeftmost);
        entries[i].placing.points = {PositionOf(PolarPosition{azimuth, 0, 1})};
    }
    return entries;
}

void ForgetClosed(std::vector<SceneEntry>& entries, const Workspace& sounds) {
    std::erase_if(entries, [&](const SceneEntry& entry) {
        return entry.document && !sounds.IndexOf(*entry.document);
    });
}

Result<SceneEntry> EntryOfFile(const fs::path& path, const Workspace& sounds) {
    if (const auto open = sounds.IndexOfPath(path)) return EntryOf(*sounds.At(*open).document);
    const HostServices& services = sounds.Services();
    const TransferHost host{.progress = &services.progress, .warn = {}, .note = {}};
    Result<ImportedSound> imported = ImportSound(path, services.codecs, {}, host);
    if (!imported) return imported.Ended();
    return SceneEntry{.path = path,
                      .name = DisplayText(path.filename().string()),
                      .sound = std::make_shared<const Sound>(std::move(imported->sound)),
                      .placing = {.points = {{0, 1, 0}}, .smoothness = Smoothness::kSmooth}};
}

Result<std::vector<SceneEntry>> ReadScene(const fs::path& path, const Workspace& sounds) {
    const std::optional<std::string> text = ReadSmallFile(path, kMostSceneBytes);
    if (!text) return Failed(failure::kOpenFile);
    const Result<std::vector<SceneLine>> lines = ParseScene(*text);
    if (!lines) return lines.Ended();
    std::vector<SceneEntry> entries;
    for (const SceneLine& line : *lines) {
        const fs::path file = (path.parent_path() / line.path).lexically_normal();
        Result<SceneEntry> entry = EntryOfFile(file, sounds);
        if (!entry) return FailedAtLine(line.line, entry.Ended());
        const Sound& first = entries.empty() ? *entry->sound : *entries.front().sound;
        TakeLine(line, first.GetSamplesPerSecond(), *entry);
        entries.push_back(*std::move(entry));
    }
    return entries;
}

Outcome WriteScene(const fs::path& path, const std::vector<SceneEntry>& entries) {
    for (const SceneEntry& entry : entries)
        if (entry.path.empty())
            return Failed("Save " + entry.name + " first: a scene file names its sounds' files.");
    const std::string text = SceneText(LinesOf(entries, path.parent_path()));
    return DoneIf(ReplaceFile(path, text), failure::kWriteData);
}

std::unique_ptr<LiveScene> LiveOf(const std::vector<SceneEntry>& entries,
                                  std::uint32_t framesPerSecond, Listener& listener) {
    std::vector<LiveSource> sources;
    sources.reserve(entries.size());
    for (const SceneEntry& entry : entries)
        sources.push_back(
            {entry.sound, FramesOfTime(StartText(entry.startSeconds), framesPerSecond)});
    auto live = std::make_unique<LiveScene>(std::move(sources), framesPerSecond, listener);
    live->Set(LiveSettings(entries));
    return live;
}

std::vector<LiveSetting> LiveSettings(const std::vector<SceneEntry>& entries) {
    std::vector<LiveSetting> settings;
    settings.reserve(entries.size());
    for (const SceneEntry& entry : entries) settings.push_back({entry.placing, entry.gain});
    return settings;
}

Result<Sound> MixEntries(const std::vector<SceneEntry>& entries, const SceneSettings& settings) {
    const auto load = [&entries](const SceneLine& line) -> SoundOfScene {
        return entries[static_cast<std::size_t>(line.line) - 1].sound;
    };
    return RenderScene(LinesOf(entries, {}),
                       {load, settings.listener, settings.progress, settings.rate});
}

}  // namespace sonavel::script
