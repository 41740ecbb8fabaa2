#include "sound/huge_pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace sonavel {

void AdviseHugePages(void* block, std::size_t bytes) {
    constexpr std::size_t kLargeBytes = std::size_t{4} << 20;
    if (bytes < kLargeBytes) return;
    // The page that the block begins in is advised too, because realloc remaps only a mapping whose
    // pages are all alike and copies the block otherwise.
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    auto* start = static_cast<std::uint8_t*>(block);
    const std::uintptr_t inPage = reinterpret_cast<std::uintptr_t>(start) % page;
    madvise(start - inPage, bytes + inPage, MADV_HUGEPAGE);
}

}  // namespace sonavel
