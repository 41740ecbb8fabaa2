#include "recovery/file_claims.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

#include "platform/file_identity.h"
#include "recovery/journal_file.h"

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr int kMostTries = 10;

// FNV-1a: two files that share a lock only make an editor say a word too much.
std::uint64_t HashOf(const std::string& text) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return hash;
}

fs::path Resolved(const fs::path& file) {
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(file, error);
    return error ? file : resolved;
}

enum class Taking { kTaken, kHeldByOther, kCannot };

// A lock file is removed by who let go of it, so the one that was locked may be there no more.
Taking TakeLock(const fs::path& path, FileDescriptor& lock) {
    for (int i = 0; i < kMostTries; ++i) {
        lock = FileDescriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!lock.IsOpen()) return Taking::kCannot;
        if (flock(lock.Get(), LOCK_EX | LOCK_NB) != 0)
            return errno == EWOULDBLOCK ? Taking::kHeldByOther : Taking::kCannot;
        if (IdentityOfFile(lock.Get()) == IdentityOfFile(path)) return Taking::kTaken;
    }
    return Taking::kCannot;
}

}  // namespace

FileClaims::~FileClaims() {
    for (const auto& [path, held] : held_) unlink(path.c_str());
}

fs::path FileClaims::LockPath(const fs::path& file) const {
    char name[24];
    std::snprintf(name, sizeof name, "%016llx",
                  static_cast<unsigned long long>(HashOf(Resolved(file).native())));
    return folder_ / name;
}

bool FileClaims::Claim(const fs::path& file) {
    const fs::path path = LockPath(file);
    if (const auto held = held_.find(path); held != held_.end()) {
        ++held->second.count;
        return true;
    }
    if (!MakePrivateFolder(folder_)) return true;
    FileDescriptor lock;
    const Taking taking = TakeLock(path, lock);
    if (taking == Taking::kTaken) held_[path] = Held{std::move(lock), 1};
    return taking != Taking::kHeldByOther;
}

void FileClaims::Release(const fs::path& file) {
    const auto held = held_.find(LockPath(file));
    if (held == held_.end() || --held->second.count > 0) return;
    unlink(held->first.c_str());
    held_.erase(held);
}

}  // namespace sonavel::recovery
