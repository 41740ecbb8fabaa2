// How much memory the program may still take.
#pragma once

#include <cstdint>
#include <string_view>

namespace sonavel {

// Bytes that can be had now without taking them from other programs: what the system says, and no
// more than a limit of the process or of its control group leaves. 0 where nothing is known.
std::uint64_t AvailableMemory();
// The number of bytes of a line such as "MemAvailable:  1024 kB"; 0 without such a line.
std::uint64_t BytesOfLine(std::string_view text, std::string_view name);

}  // namespace sonavel
