// A scene that a person puts together of open sounds and of files, and its way to a scene file and
// back.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "script/scene_file.h"
#include "spatial/listener.h"
#include "spatial/live_scene.h"
#include "workspace/workspace.h"

namespace sonavel::script {

inline constexpr std::size_t kMostSceneBytes = 1 << 20;

struct SceneEntry {
    std::filesystem::path path{};  // of its file; empty for a sound that was never saved
    std::string name{};            // UTF-8
    std::shared_ptr<const Sound> sound{};
    // The open sound, which `sound` then is and does not own; null for one read for the scene.
    const CSoundDoc* document = nullptr;
    Placing placing{};
    double startSeconds = 0;
    double gain = 0;  // dB
};

// A single sound stands ahead, a unit away.
SceneEntry EntryOf(const CSoundDoc& document);
// All open sounds that have frames, from the left over ahead to the right.
std::vector<SceneEntry> OpenSoundsAround(const Workspace& sounds);
// Leaves out those whose open sounds have been closed since.
void ForgetClosed(std::vector<SceneEntry>& entries, const Workspace& sounds);

// Of a file: the open sound where it is open, else read from it.
Result<SceneEntry> EntryOfFile(const std::filesystem::path& path, const Workspace& sounds);
// Fails for the first line that is no scene's or whose sound cannot be had, naming it.
Result<std::vector<SceneEntry>> ReadScene(const std::filesystem::path& path,
                                          const Workspace& sounds);
// Names the sounds' files from the scene file's folder on where they lie in it. Fails for a sound
// without a file, and where the file cannot be written, which then is as it was.
Outcome WriteScene(const std::filesystem::path& path, const std::vector<SceneEntry>& entries);

struct SceneSettings {
    Listener& listener;
    ProgressFactory& progress;
    std::optional<std::uint32_t> rate{};  // nothing: the first sound's
};

// The entries heard live; at least one. Their sounds must stay as they are meanwhile.
std::unique_ptr<LiveScene> LiveOf(const std::vector<SceneEntry>& entries,
                                  std::uint32_t framesPerSecond, Listener& listener);
// How they are placed and how loud they are.
std::vector<LiveSetting> LiveSettings(const std::vector<SceneEntry>& entries);

// At least one entry, each with a point.
Result<Sound> MixEntries(const std::vector<SceneEntry>& entries, const SceneSettings& settings);

}  // namespace sonavel::script
