#include "app/system_texts.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <cinttypes>
#include <cstdio>

namespace sonavel {

namespace {

constexpr std::uint64_t kMegabyte = 1048576;
constexpr std::uint32_t kSectorBytes = 512;
// There are no drive letters here; the one tree stands in their place.
constexpr char kDrive = '/';

template <class... Values>
std::string Format(const char* format, Values... values) {
    char text[96];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

}  // namespace

std::string PhysicalMemoryText(std::uint64_t totalBytes) {
    // Behind the dot stands the rest in bytes, not a decimal fraction: intended.
    return Format("%" PRIu64 ".%3" PRIu64 " MBytes", totalBytes / kMegabyte,
                  totalBytes % kMegabyte);
}

std::string DiskSpaceText(char drive, const DiskSpace& space) {
    // 32-bit on purpose: a disk with more than 4 GiB free shows the product's low bits.
    const std::uint32_t bytes =
        space.availableClusters * space.sectorsPerCluster * space.bytesPerSector;
    return Format(" %c: Available Disk Space %" PRIu32 " KBytes", drive, bytes >> 10);
}

std::string PhysicalMemoryText() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageBytes = sysconf(_SC_PAGESIZE);
    return PhysicalMemoryText(static_cast<std::uint64_t>(pages) *
                              static_cast<std::uint64_t>(pageBytes));
}

std::string DiskSpaceText() {
    struct statvfs disk {};
    if (statvfs(".", &disk) != 0) return "Not Available Disk";
    return DiskSpaceText(kDrive,
                         {static_cast<std::uint32_t>(disk.f_bavail),
                          static_cast<std::uint32_t>(disk.f_frsize / kSectorBytes), kSectorBytes});
}

}  // namespace sonavel
