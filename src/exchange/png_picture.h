// Pictures of at most 256 colours as PNG files (ISO/IEC 15948).
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/outcome.h"

namespace sonavel {

struct IndexedPicture {
    std::uint32_t width = 0;  // both above 0
    std::uint32_t height = 0;
    std::span<const std::array<std::uint8_t, 3>> colours;  // red, green, blue; 1 to 256 of them
    std::span<const std::uint8_t> pixels;                  // rows from the top, width * height
};

// Writes the file whole, beside its target first.
Outcome WritePng(const std::filesystem::path& path, const IndexedPicture& picture);

}  // namespace sonavel
