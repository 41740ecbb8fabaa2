// Spectrograms are read the way a person reads them: where a line lies, and what stands apart.
#include "view/draw/spectrogram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "sound/sample_types.h"
#include "view/draw/spectrum_palette.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kRate = 48000;
constexpr double kHighest = kRate / 2.0;

using Wave = double (*)(double seconds);

Sound SoundOf(Wave wave, std::uint32_t frames, unsigned channels = 1, unsigned bits = 16) {
    Sound sound;
    EXPECT_TRUE(sound.Create(channels, bits, kRate, frames));
    FillWithSilence(sound.MutableBytes(), bits);
    const std::int32_t full = bits == 8 ? 127 : 32767;
    for (std::uint32_t frame = 0; frame < frames; ++frame)
        sound.SetSample(channels - 1, frame,
                        static_cast<std::int32_t>(std::lround(full * wave(frame * 1.0 / kRate))));
    return sound;
}

double Tone(double frequency, double seconds) {
    return std::sin(2 * std::numbers::pi * frequency * seconds);
}

// The row of the brightest place of a column, counted from the bottom.
unsigned BrightestRow(const SpectrogramPicture& picture, unsigned column) {
    unsigned brightest = 0;
    for (unsigned row = 0; row < picture.height; ++row)
        if (picture.At(column, row) > picture.At(column, brightest)) brightest = row;
    return picture.height - 1 - brightest;
}

SpectrogramPicture PictureOf(const Sound& sound, unsigned width, unsigned height,
                             const SpectrogramLook& look) {
    auto picture = SpectrogramOf(sound, {0, sound.GetFrameCount()}, width, height, look);
    EXPECT_TRUE(picture);
    return *std::move(picture);
}

// From 2000 Hz up by 10000 Hz a second.
double Chirp(double seconds) {
    return 0.5 * std::sin(2 * std::numbers::pi * (2000 + 5000 * seconds) * seconds);
}

TEST(SpectrogramTest, AChirpIsALineOnEveryScale) {
    const Sound sound = SoundOf(Chirp, 2 * kRate);
    constexpr unsigned kWidth = 100, kHeight = 300;
    for (const FrequencyScale scale :
         {FrequencyScale::kLinear, FrequencyScale::kLogarithmic, FrequencyScale::kMel}) {
        const auto picture =
            PictureOf(sound, kWidth, kHeight, {.windowFrames = 1024, .scale = scale});
        for (unsigned column = 2; column < kWidth - 2; ++column) {
            const double frequency = 2000 + 10000.0 * (2.0 * column / kWidth);
            const double row = HeightOf(scale, frequency, kHighest) * (kHeight - 1);
            // A column's windows look ahead, as far as the next column.
            const double next = HeightOf(scale, frequency + 200, kHighest) * (kHeight - 1);
            EXPECT_GE(BrightestRow(picture, column), row - 2) << column;
            EXPECT_LE(BrightestRow(picture, column), next + 2) << column;
        }
    }
}

TEST(SpectrogramTest, CloseTonesStandApartWhereTheWindowIsLongEnough) {
    const Sound sound =
        SoundOf([](double t) { return 0.4 * Tone(6000, t) + 0.4 * Tone(6100, t); }, kRate);
    // 10 Hz a row.
    constexpr unsigned kHeight = 2401;
    const auto dip = [&](unsigned window) {
        const auto picture = PictureOf(sound, 3, kHeight, {.windowFrames = window});
        return picture.At(1, kHeight - 1 - 600) - picture.At(1, kHeight - 1 - 605);
    };
    EXPECT_GT(dip(4096), 60);
    EXPECT_LT(dip(512), 10);
}

TEST(SpectrogramTest, LevelsRunFromTheRangeToFullScale) {
    const Sound full = SoundOf([](double t) { return Tone(6000, t); }, kRate);
    const Sound quiet = SoundOf([](double t) { return 0.01 * Tone(6000, t); }, kRate);
    // A bin a row: 6000 Hz is bin 256.
    const SpectrogramLook look{.windowFrames = 2048, .rangeDecibels = 80};
    EXPECT_EQ(PictureOf(full, 3, 1025, look).At(1, 1024 - 256), 255);
    EXPECT_NEAR(PictureOf(quiet, 3, 1025, look).At(1, 1024 - 256), 128, 1);  // -40 of -80 dB
    EXPECT_EQ(PictureOf(full, 3, 1025, look).At(1, 1024 - 700), 0);
    // One of two channels: half the power.
    const Sound right = SoundOf([](double t) { return Tone(6000, t); }, kRate, 2, 32);
    EXPECT_NEAR(PictureOf(right, 3, 1025, look).At(1, 1024 - 256), 245, 1);
    const Sound bytes = SoundOf([](double t) { return Tone(6000, t); }, kRate, 1, 8);
    EXPECT_NEAR(PictureOf(bytes, 3, 1025, look).At(1, 1024 - 256), 255, 1);
}

TEST(SpectrogramTest, TheFirstColumnIsTheFirstFrameAndTheLowestRowIsZeroHertz) {
    // Silence up to the middle, then a constant.
    const Sound sound = SoundOf([](double t) { return t < 0.5 ? 0 : 0.5; }, kRate);
    const auto picture = PictureOf(sound, 1000, 100, {.windowFrames = 256});
    EXPECT_EQ(picture.At(496, 99), 0);
    EXPECT_GT(picture.At(500, 99), 200);
    EXPECT_LT(picture.At(700, 50), 20);
    const auto half = SpectrogramOf(sound, {kRate / 2, kRate}, 10, 100, {.windowFrames = 256});
    EXPECT_GT(half->At(0, 99), 200);
}

TEST(SpectrogramTest, TilesShowWhatTheWholePictureShows) {
    const Sound sound = SoundOf(Chirp, kRate);
    for (const double framesPerColumn : {3.5, 700.0, 3000.0, 20000.0}) {
        const SpectrogramLook look{.windowFrames = 512};
        const SpectrogramColumns all{100, framesPerColumn, 20};
        const SpectrogramColumns tail{100 + 13 * framesPerColumn, framesPerColumn, 7};
        SpectrogramMaker maker(look, kRate, 64);
        const auto whole = maker.Mean(ReadSpectrogramFrames(sound, all, look));
        const auto tile = maker.Mean(ReadSpectrogramFrames(sound, tail, look));
        for (unsigned row = 0; row < 64; ++row)
            for (unsigned column = 0; column < 7; ++column)
                ASSERT_EQ(tile.At(column, row), whole.At(column + 13, row)) << framesPerColumn;
    }
}

TEST(SpectrogramTest, HeightsAndFrequenciesAreInverse) {
    for (const FrequencyScale scale :
         {FrequencyScale::kLinear, FrequencyScale::kLogarithmic, FrequencyScale::kMel}) {
        for (const double height : {0.1, 0.5, 1.0})
            EXPECT_NEAR(HeightOf(scale, FrequencyAt(scale, height, kHighest), kHighest), height,
                        1e-9);
        EXPECT_EQ(FrequencyAt(scale, 0, kHighest), 0);
        EXPECT_EQ(HeightOf(scale, 0, kHighest), 0);
    }
    // The mel scale has 1000 mel at 1000 Hz.
    const double mel = 2595 * std::log10(1 + kHighest / 700);
    EXPECT_NEAR(HeightOf(FrequencyScale::kMel, 1000, kHighest) * mel, 1000, 0.1);
}

// Lightness as it is perceived, from 0 for black to 1 for white.
double Lightness(const std::array<std::uint8_t, 3>& colour) {
    double part[3];
    for (int i = 0; i < 3; ++i) {
        const double share = colour[static_cast<std::size_t>(i)] / 255.0;
        part[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }
    const double l = 0.4122214708 * part[0] + 0.5363325363 * part[1] + 0.0514459929 * part[2];
    const double m = 0.2119034982 * part[0] + 0.6806995451 * part[1] + 0.1073969566 * part[2];
    const double s = 0.0883024619 * part[0] + 0.2817188376 * part[1] + 0.6299787005 * part[2];
    return 0.2104542553 * std::cbrt(l) + 0.7936177850 * std::cbrt(m) - 0.0040720468 * std::cbrt(s);
}

TEST(SpectrumPaletteTest, LightnessGrowsEvenly) {
    for (const auto palette : {SpectrumPalette::kEmber, SpectrumPalette::kIce}) {
        const PaletteColours& colours = ColoursOf(palette);
        EXPECT_LT(Lightness(colours[0]), 0.1);
        EXPECT_GT(Lightness(colours[255]), 0.94);
        // Rounding to bytes is coarse among the darkest.
        for (std::size_t i = 32; i + 16 < colours.size(); i += 16)
            EXPECT_NEAR(Lightness(colours[i + 16]) - Lightness(colours[i]), 16 * 0.91 / 255, 0.006)
                << i;
    }
    EXPECT_NE(ColoursOf(SpectrumPalette::kEmber)[128], ColoursOf(SpectrumPalette::kIce)[128]);
}

}  // namespace
}  // namespace sonavel
