#include "platform/program_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <system_error>

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSeedFiles[] = {"Options.ini", "Display.ini", "Systemsound.ini",
                                      "Usersound.ini", "SampleDB.ini"};

fs::path PersonalFolder() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config == '/')
        return fs::path(config) / "sonavel";
    const char* home = std::getenv("HOME");
    return fs::path(home && *home ? home : "/") / ".config" / "sonavel";
}

void Seed(const fs::path& folder, const fs::path& source) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    for (const char* name : kSeedFiles)
        fs::copy_file(source / name, folder / name, fs::copy_options::skip_existing, ignored);
}

}  // namespace

fs::path ProgramFolder::ExecutableFolder() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path(error) : executable.parent_path();
}

ProgramFolder ProgramFolder::OfThisProgram() {
    const fs::path beside = ExecutableFolder();
    if (access(beside.c_str(), W_OK) == 0) return ProgramFolder(beside);
    const fs::path personal = PersonalFolder();
    Seed(personal, beside);
    return ProgramFolder(personal);
}

}  // namespace sonavel
