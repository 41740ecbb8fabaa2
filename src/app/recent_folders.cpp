#include "app/recent_folders.h"

#include <algorithm>

#include "platform/settings.h"

namespace sonavel {

namespace {

const Setting& kNewest = RowOf(SettingId::kUsedFolder);

// "Used Folder" is the newest; "Used Folder 2" and so on stand behind it.
std::string KeyOf(std::size_t index) {
    const std::string key(kNewest.key);
    return index == 0 ? key : key + ' ' + std::to_string(index + 1);
}

std::vector<std::string> PathsIn(const ProfileText& options) {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < RecentFolders::kMostFolders; ++i) {
        std::string path = options.GetString(kNewest.section, KeyOf(i));
        if (!path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end())
            paths.push_back(std::move(path));
    }
    return paths;
}

// False when the path is no text, which an initialisation file cannot hold.
bool AddTo(ProfileText& options, const std::string& absolutePath) {
    std::vector<std::string> paths = PathsIn(options);
    if (!paths.empty() && paths.front() == absolutePath) return true;
    std::erase(paths, absolutePath);
    paths.insert(paths.begin(), absolutePath);
    if (paths.size() > RecentFolders::kMostFolders) paths.resize(RecentFolders::kMostFolders);
    std::vector<std::pair<std::string, std::string>> entries;
    for (std::size_t i = 0; i < paths.size(); ++i) entries.emplace_back(KeyOf(i), paths[i]);
    return options.SetEntries(kNewest.section, entries);
}

}  // namespace

std::vector<std::string> RecentFolders::Paths() const {
    return PathsIn(options_.Read());
}

bool RecentFolders::Add(const std::string& absolutePath) {
    return options_.Change([&](ProfileText& text) { return AddTo(text, absolutePath); });
}

}  // namespace sonavel
