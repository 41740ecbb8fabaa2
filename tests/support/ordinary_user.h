// The part of an ordinary user, whom permissions bind, also in tests that run as root.
#pragma once

#include <grp.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace sonavel {

class OrdinaryUser {
  public:
    static constexpr uid_t kId = 65534;

    // From here to the end of its scope. Who is an ordinary user already stays who they are.
    OrdinaryUser() {
        if (!root_) return;
        groups_.resize(static_cast<std::size_t>(getgroups(0, nullptr)));
        Must(getgroups(static_cast<int>(groups_.size()), groups_.data()));
        Must(setgroups(0, nullptr));
        Must(setegid(kId));
        Must(seteuid(kId));
    }
    ~OrdinaryUser() {
        if (!root_) return;
        Must(seteuid(0));
        Must(setegid(0));
        Must(setgroups(groups_.size(), groups_.data()));
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    // Lets the ordinary user own that file.
    static void Give(const std::filesystem::path& path) {
        if (geteuid() == 0) Must(chown(path.c_str(), kId, kId));
    }

  private:
    static void Must(int result) {
        if (result < 0) std::abort();
    }

    const bool root_ = geteuid() == 0;
    std::vector<gid_t> groups_;
};

}  // namespace sonavel
