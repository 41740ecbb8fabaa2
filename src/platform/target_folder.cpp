#include "platform/target_folder.h"

namespace sonavel {

Outcome MakeTargetFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (std::filesystem::is_directory(folder, error)) return Done();
    return Failed("The folder " + folder.filename().string() + " could not be made.");
}

}  // namespace sonavel
