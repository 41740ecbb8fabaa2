// Makes memory scarce. Not under AddressSanitizer, which takes more address space than any limit
// would leave.
#pragma once

#ifndef __SANITIZE_ADDRESS__

#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>

namespace sonavel {

// Leaves the process room for about so many bytes more.
class AddressSpaceLimit {
  public:
    explicit AddressSpaceLimit(std::uint64_t moreBytes) {
        std::uint64_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &before_);
        const rlimit limit{pages * static_cast<rlim_t>(getpagesize()) + moreBytes,
                           before_.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~AddressSpaceLimit() { setrlimit(RLIMIT_AS, &before_); }
    AddressSpaceLimit(const AddressSpaceLimit&) = delete;
    AddressSpaceLimit& operator=(const AddressSpaceLimit&) = delete;

  private:
    rlimit before_{};
};

}  // namespace sonavel

#endif
