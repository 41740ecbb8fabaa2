// make_man_pages VERSION FOLDER: writes sonavel.1 and sonavel-batch.1 into the folder.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "man_pages/pages.h"

namespace {

bool Write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (file.flush()) return true;
    std::cerr << "make_man_pages: cannot write " << path << '\n';
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_man_pages VERSION FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[2];
    const bool written = Write(folder / "sonavel.1", sonavel::EditorPage(argv[1])) &&
                         Write(folder / "sonavel-batch.1", sonavel::BatchPage(argv[1]));
    return written ? 0 : 1;
}
