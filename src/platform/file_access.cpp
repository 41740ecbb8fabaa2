#include "platform/file_access.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace sonavel {
namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

// Attributes that vouch for the content which a file had.
constexpr std::string_view kOfTheContent[] = {"security.capability", "security.evm",
                                              "security.ima"};

std::vector<std::string> AttributeNames(int file) {
    const ssize_t size = flistxattr(file, nullptr, 0);
    if (size <= 0) return {};
    std::string list(static_cast<std::size_t>(size), '\0');
    const ssize_t got = flistxattr(file, list.data(), list.size());
    std::vector<std::string> names;
    for (std::size_t start = 0; got > 0 && start < static_cast<std::size_t>(got);) {
        names.emplace_back(list.c_str() + start);
        start += names.back().size() + 1;
    }
    return names;
}

bool CopyAttribute(int from, int to, const char* name) {
    const ssize_t size = fgetxattr(from, name, nullptr, 0);
    if (size < 0) return false;
    std::vector<char> value(static_cast<std::size_t>(size));
    const ssize_t got = fgetxattr(from, name, value.data(), value.size());
    return got >= 0 && fsetxattr(to, name, value.data(), static_cast<std::size_t>(got), 0) == 0;
}

// False when an access list could not be kept.
bool CopyAttributes(int from, int to) try {
    // One that a folder gives to its new files.
    fremovexattr(to, kAccessList);
    bool kept = true;
    for (const std::string& name : AttributeNames(from)) {
        if (std::ranges::find(kOfTheContent, name) != std::end(kOfTheContent)) continue;
        const bool copied = CopyAttribute(from, to, name.c_str());
        // The lists of every kind of file system lie there.
        if (name.starts_with("system.")) kept = kept && copied;
    }
    return kept;
} catch (const std::bad_alloc&) {
    return false;
}

}  // namespace

void CopyFileAccess(int from, int to) {
    struct stat status;
    if (fstat(from, &status) != 0) return;
    const bool ownerKept = fchown(to, status.st_uid, status.st_gid) == 0;
    const bool groupKept = ownerKept || fchown(to, static_cast<uid_t>(-1), status.st_gid) == 0;
    mode_t mode = status.st_mode & 07777;
    if (!ownerKept) mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    // Another group gets what everybody gets. Where there is an access list, this bounds its
    // entries too.
    if (!groupKept) mode = (mode & ~static_cast<mode_t>(S_IRWXG)) | (mode & S_IRWXO) << 3;
    if (!CopyAttributes(from, to)) mode &= ~static_cast<mode_t>(S_IRWXG | S_IRWXO);
    // After the owner, whose change takes special bits away, and after the list, without which the
    // group's bits would mean more.
    fchmod(to, mode);
}

}  // namespace sonavel
