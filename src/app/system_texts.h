// The texts of the About box on the machine's memory and disk.
#pragma once

#include <cstdint>
#include <string>

namespace sonavel {

std::string PhysicalMemoryText(std::uint64_t totalBytes);

struct DiskSpace {
    std::uint32_t availableClusters = 0;
    std::uint32_t sectorsPerCluster = 0;
    std::uint32_t bytesPerSector = 0;
};
std::string DiskSpaceText(char drive, const DiskSpace& space);

// Those of this machine and of the drive with the working directory.
std::string PhysicalMemoryText();
std::string DiskSpaceText();

}  // namespace sonavel
