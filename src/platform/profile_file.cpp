#include "platform/profile_file.h"

#include <new>
#include <optional>
#include <string>
#include <utility>

#include "platform/folder_lock.h"
#include "platform/replacing_file.h"
#include "platform/small_file.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostBytes = std::size_t{16} << 20;

// Empty for a file that is not there; nothing for one that cannot be read.
std::optional<std::string> BytesOf(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(path, error)) return std::string();
    return ReadSmallFile(path, kMostBytes);
}

}  // namespace

ProfileFile::ProfileFile(fs::path path) : path_(std::move(path)) {}

ProfileText ProfileFile::Read() const try {
    const std::optional<std::string> bytes = BytesOf(path_);
    if (!bytes) return {};
    auto text = ProfileText::FromBytes(*bytes, ProfileText::Purpose::kRead);
    return text ? *std::move(text) : ProfileText();
} catch (const std::bad_alloc&) {
    return {};
}

bool ProfileFile::Change(const std::function<bool(ProfileText&)>& change) try {
    const fs::path file = FollowLinks(path_);
    const FolderLock lock(file.parent_path());
    const std::optional<std::string> bytes = lock.IsHeld() ? BytesOf(file) : std::nullopt;
    if (!bytes) return false;
    auto text = ProfileText::FromBytes(*bytes, ProfileText::Purpose::kRewrite);
    if (!text) return false;
    const std::string before = text->Bytes();
    if (!change(*text)) return false;
    const std::string after = text->Bytes();
    return after == before || ReplaceFile(file, after);
} catch (const std::bad_alloc&) {
    return false;
}

bool ProfileFile::SetString(std::string_view section, std::string_view key,
                            std::string_view value) {
    return Change([&](ProfileText& text) { return text.SetString(section, key, value); });
}

bool ProfileFile::SetInteger(std::string_view section, std::string_view key, int value) {
    return Change([&](ProfileText& text) { return text.SetInteger(section, key, value); });
}

}  // namespace sonavel
