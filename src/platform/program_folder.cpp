#include "platform/program_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

#include "platform/small_file.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostSeedBytes = std::size_t{16} << 20;
constexpr const char* kSeedFiles[] = {"Options.ini", "Display.ini", "Systemsound.ini",
                                      "Usersound.ini", "SampleDB.ini"};

fs::path PersonalFolder() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config == '/')
        return fs::path(config) / "sonavel";
    const char* home = std::getenv("HOME");
    return fs::path(home && *home ? home : "/") / ".config" / "sonavel";
}

void Seed(const fs::path& folder, const fs::path& source) {
    std::error_code error;
    fs::create_directories(folder, error);
    for (const char* name : kSeedFiles) {
        if (fs::exists(folder / name, error)) continue;
        // Not with the permissions of the program's own file, which may be read-only.
        if (const auto bytes = ReadSmallFile(source / name, kMostSeedBytes))
            ReplaceFile(folder / name, *bytes);
    }
}

}  // namespace

fs::path ProgramFolder::ExecutableFolder() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : executable.parent_path();
}

fs::path ProgramFolder::ShippedFolderOf(const fs::path& beside) {
    std::error_code error;
    const fs::path shared = beside.parent_path() / "share" / "sonavel";
    const char* sign = kSeedFiles[0];
    const bool isInstalled = !fs::exists(beside / sign, error) && fs::exists(shared / sign, error);
    return isInstalled ? shared : beside;
}

ProgramFolder ProgramFolder::OfProgramIn(const fs::path& beside) {
    const fs::path shipped = ShippedFolderOf(beside);
    // The settings of an installed program are each person's own, the superuser's among them.
    if (shipped == beside && faccessat(AT_FDCWD, beside.c_str(), W_OK, AT_EACCESS) == 0)
        return ProgramFolder(beside);
    const fs::path personal = PersonalFolder();
    Seed(personal, shipped);
    return ProgramFolder(personal);
}

}  // namespace sonavel
