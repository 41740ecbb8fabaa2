// The picture that a script saves, read back from the file.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <numbers>

#include "batch/batch_tool_fixture.h"

namespace sonavel::batch {
namespace {

std::uint32_t Big(const FileBytes& bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
           std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

struct ReadPicture {
    std::uint32_t width = 0, height = 0;
    FileBytes palette, rows;  // each row behind its filter's number

    int At(std::uint32_t column, std::uint32_t row) const {
        return rows.at(std::size_t{row} * (width + 1) + 1 + column);
    }
};

// Walks over the chunks and their check sums.
ReadPicture ReadPng(const FileBytes& file) {
    ReadPicture picture;
    for (std::size_t at = 8; at + 12 <= file.size();) {
        const std::uint32_t size = Big(file, at);
        const std::string name(file.begin() + static_cast<long>(at) + 4,
                               file.begin() + static_cast<long>(at) + 8);
        const FileBytes content(file.begin() + static_cast<long>(at) + 8,
                                file.begin() + static_cast<long>(at + 8 + size));
        EXPECT_EQ(Big(file, at + 8 + size), crc32(0, file.data() + at + 4, size + 4)) << name;
        if (name == "IHDR") picture.width = Big(content, 0), picture.height = Big(content, 4);
        if (name == "PLTE") picture.palette = content;
        if (name == "IDAT") {
            uLongf length = (picture.width + 1) * picture.height;
            picture.rows.resize(length);
            EXPECT_EQ(uncompress(picture.rows.data(), &length, content.data(), size), Z_OK);
            EXPECT_EQ(length, picture.rows.size());
        }
        at += 12 + size;
    }
    return picture;
}

class SpectrogramCommandTest : public BatchToolTest {
  protected:
    // A second at 8000 Hz: 1000 Hz, then 3000 Hz.
    void WriteTones() const {
        WavParts parts;
        ByteBuilder data;
        for (int i = 0; i < 8000; ++i) {
            const double turns = (i < 4000 ? 1000.0 : 3000.0) * i / 8000;
            const double value = 20000 * std::sin(2 * std::numbers::pi * turns);
            data.Little16(static_cast<unsigned>(static_cast<std::uint16_t>(std::lround(value))));
        }
        parts.data = data.Bytes();
        WriteFileBytes(folder_ / "tones.wav", WavBytes(parts));
    }
};

TEST_F(SpectrogramCommandTest, SavesThePlotOfTheRange) {
    WriteTones();
    ExpectOutput(
        "open @/tones.wav; spectrogram @/a.png width=200 height=81 window=512; "
        "select 4000 8000; spectrogram @/b.png width=50 height=401 palette=ice",
        "");
    const ReadPicture whole = ReadPng(ReadFileBytes(folder_ / "a.png"));
    EXPECT_EQ(whole.width, 200u);
    EXPECT_EQ(whole.height, 81u);
    EXPECT_EQ(whole.palette.size(), 768u);
    // 50 Hz a row, from the bottom.
    EXPECT_GT(whole.At(50, 80 - 20), 200);
    EXPECT_LT(whole.At(50, 80 - 60), 50);
    EXPECT_GT(whole.At(150, 80 - 60), 200);
    EXPECT_LT(whole.At(150, 80 - 20), 50);
    const ReadPicture part = ReadPng(ReadFileBytes(folder_ / "b.png"));
    EXPECT_GT(part.At(25, 400 - 300), 200);
    EXPECT_LT(part.At(25, 400 - 100), 50);
    EXPECT_NE(part.palette, whole.palette);
}

TEST_F(SpectrogramCommandTest, RefusesWhatItCannotDraw) {
    for (const char* words : {"window=1000", "window=128", "width=0", "scale=bark", "range=0"})
        EXPECT_EQ(Run(std::string("new; spectrogram @/a.png ") + words).status, 2) << words;
    EXPECT_EQ(Run("new; spectrogram @/a.png").status, 1);
    EXPECT_EQ(folder_.FileCount(), 1u);  // the options
}

}  // namespace
}  // namespace sonavel::batch
