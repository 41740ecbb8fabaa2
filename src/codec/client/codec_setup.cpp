#include "codec/client/codec_setup.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "platform/program_folder.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kHelperName = "sonavel-codec";
constexpr const char* kInstalledFolder = "/usr/libexec/sonavel";

bool IsProgram(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

fs::path FindHelper() {
    const fs::path own = ProgramFolder::ExecutableFolder();
    const fs::path beside = own.parent_path() / "libexec" / "sonavel";
    for (const fs::path& folder : {own, beside, fs::path(kInstalledFolder)})
        if (IsProgram(folder / kHelperName)) return folder / kHelperName;
    return {};
}

fs::path FindInPath(std::string_view name) {
    const char* variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folders.size(), folder.size() + 1));
        // What a relative folder holds depends on where the editor was started.
        if (folder.starts_with('/') && IsProgram(fs::path(folder) / name))
            return fs::path(folder) / name;
    }
    return {};
}

}  // namespace

CodecPrograms FindCodecPrograms() {
    return {FindHelper(), FindInPath("ffmpeg"), FindInPath("ffprobe")};
}

std::uint64_t SecondsFor(const CodecLimits& limits, std::uint64_t fileBytes) {
    return limits.baseSeconds + limits.secondsPerMiB * (fileBytes >> 20);
}

}  // namespace sonavel
