#include "exchange/png_picture.h"

#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "libraries/deflate.h"
#include "platform/failure_texts.h"
#include "platform/small_file.h"

namespace sonavel {
namespace {

using Bytes = std::vector<std::uint8_t>;

void AddBig(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

// Size, name, content, and the check sum over the latter two.
void AddChunk(Bytes& file, std::string_view name, std::span<const std::uint8_t> content) {
    AddBig(file, static_cast<std::uint32_t>(content.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), name.begin(), name.end());
    file.insert(file.end(), content.begin(), content.end());
    AddBig(file, CheckSum(std::span(file).subspan(start)));
}

Bytes Header(const IndexedPicture& picture) {
    constexpr std::uint8_t kBits = 8, kOfPalette = 3;
    Bytes header;
    AddBig(header, picture.width);
    AddBig(header, picture.height);
    header.insert(header.end(), {kBits, kOfPalette, 0, 0, 0});
    return header;
}

Bytes Palette(const IndexedPicture& picture) {
    Bytes palette;
    for (const auto& colour : picture.colours)
        palette.insert(palette.end(), colour.begin(), colour.end());
    return palette;
}

// Each row behind the number of its filter: none.
Bytes Rows(const IndexedPicture& picture) {
    Bytes rows;
    rows.reserve((std::size_t{picture.width} + 1) * picture.height);
    for (std::size_t row = 0; row < picture.height; ++row) {
        rows.push_back(0);
        const auto pixels = picture.pixels.subspan(row * picture.width, picture.width);
        rows.insert(rows.end(), pixels.begin(), pixels.end());
    }
    return rows;
}

}  // namespace

Outcome WritePng(const std::filesystem::path& path, const IndexedPicture& picture) try {
    const auto pixels = Deflated(Rows(picture));
    if (!pixels) return Failed(failure::kMemory);
    Bytes file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    AddChunk(file, "IHDR", Header(picture));
    AddChunk(file, "PLTE", Palette(picture));
    AddChunk(file, "IDAT", *pixels);
    AddChunk(file, "IEND", {});
    const std::string_view whole(reinterpret_cast<const char*>(file.data()), file.size());
    return DoneIf(ReplaceFile(path, whole), "The file could not be written.");
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
