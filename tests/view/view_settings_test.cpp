#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/test_files.h"
#include "view/draw/colour_table.h"
#include "view/state/display_settings.h"

namespace sonavel {
namespace {

class ViewSettings : public ::testing::Test {
  protected:
    ProfileFile FileWith(std::string_view text) const {
        WriteFileBytes(folder_ / "a.ini", BytesOf(text));
        return ProfileFile(folder_ / "a.ini");
    }

    TemporaryFolder folder_;
};

TEST_F(ViewSettings, ColoursFillTheSlotsInFileOrder) {
    const ProfileText file = FileWith(
                                 "[__SOUND_UPDATE_SECTION]\n"
                                 "Z=1,2,3,\n"
                                 "whatever=4,5,6\n"  // the blue part has no comma
                                 "A=7,\n"
                                 "B=\n"
                                 "C= 10 , 11 , 12 ,\n"
                                 "[__SOUND_OTHER]\n"
                                 "X=99,99,99,\n")
                                 .Read();
    ColourTable table;
    table.Load(file);
    const Rgb expected[] = {{1, 2, 3},       {4, 5, 0},    {7, 255, 0},
                            {192, 192, 192}, {10, 11, 12}, {255, 0, 0}};
    for (std::size_t slot = 0; slot < 6; ++slot) EXPECT_EQ(table.At(slot), expected[slot]) << slot;
    table.Load(file, "__SOUND_OTHER");
    EXPECT_EQ(table[ColourSlot::kWaveform], (Rgb{99, 99, 99}));
}

TEST_F(ViewSettings, MoreColoursThanSlotsAndNoFileAtAll) {
    std::string text = "[__SOUND_UPDATE_SECTION]\n";
    for (int i = 0; i < 40; ++i)
        text += "K" + std::to_string(i) + "=" + std::to_string(i) + ",0,0,\n";
    ColourTable table;
    table.Load(FileWith(text).Read());
    EXPECT_EQ(table.At(15), (Rgb{15, 0, 0}));
    ColourTable untouched;
    untouched.Load(ProfileFile("/nowhere/Display.ini").Read());
    EXPECT_EQ(untouched, ColourTable());
}

// The contrast of two colours by the web's accessibility guidelines, 1 to 21.
double ContrastOf(Rgb one, Rgb other) {
    const auto linear = [](std::uint8_t part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    const auto light = [&](Rgb c) {
        return 0.2126 * linear(c.red) + 0.7152 * linear(c.green) + 0.0722 * linear(c.blue);
    };
    const auto [dark, bright] = std::minmax({light(one), light(other)});
    return (bright + 0.05) / (dark + 0.05);
}

TEST_F(ViewSettings, EveryShippedSetOfColoursCanBeRead) {
    EXPECT_NEAR(ContrastOf({0, 0, 0}, {255, 255, 255}), 21, 1e-9);
    using enum ColourSlot;
    const struct {
        ColourSlot front, back;
        double least;
    } pairs[] = {
        {kRulerText, kRulerBackground, 4.5}, {kMarkerLabel, kMarkerStrip, 4.5},
        {kGrid, kBackground, 4.5},  // labels stand on it, in the meter too
        {kWaveform, kBackground, 3},         {kSelectedWaveform, kSelection, 3},
        {kCentreLine, kBackground, 3},       {kEndOfSound, kMarkerStrip, 3},
        {kCursor, kBackground, 3},
    };
    const ProfileText shipped = ProfileFile(SONAVEL_DEFAULTS "/Display.ini").Read();
    int sets = 0;
    for (const std::string& section : shipped.SectionNames()) {
        if (shipped.Entries(section).size() != ColourTable::kSlots) continue;
        ++sets;
        ColourTable table;
        table.Load(shipped, section);
        for (const auto& pair : pairs)
            EXPECT_GE(ContrastOf(table[pair.front], table[pair.back]), pair.least)
                << section << ' ' << static_cast<int>(pair.front);
    }
    EXPECT_EQ(sets, 5) << "in use, the first ones, light, dark, high contrast";
}

TEST_F(ViewSettings, TheShippedColoursAreTheDefaults) {
    const ProfileText shipped = ProfileFile(SONAVEL_DEFAULTS "/Display.ini").Read();
    for (const std::string_view section : {kColourSection, kDefaultColourSection}) {
        ColourTable table;
        for (std::size_t slot = 0; slot < ColourTable::kSlots; ++slot) table.Set(slot, {1, 2, 3});
        table.Load(shipped, section);
        EXPECT_EQ(table, ColourTable()) << section;
    }
}

TEST_F(ViewSettings, ReadTheDisplayAndGridKeys) {
    const ProfileText file =
        FileWith(
            "[__SOUND_DISPLAY_ITEMS]\nHORIZONTAL RULER=1\nCENTER LINE=1\n"
            "[__SOUND_GRID_DISPLAY_ITEMS]\nWIDTH GRID=1\nHEIGHT GRID=2\nPRESENT LOCATION=3\n"
            "[__SOUND_GRID_OPTIONS]\nGRID TYPE=1\nGRID LOCATION=2\nGRID WIDTH SPACING=250\n"
            "GRID HEIGHT SPACING=25\n"
            "[__SOUND_OPTIONS]\nStatus Format=2\n")
            .Read();
    const DisplaySettings display = DisplaySettings::Read(file);
    EXPECT_EQ(display.horizontalRuler, 1);
    EXPECT_EQ(display.verticalRuler, 0);  // missing
    EXPECT_EQ(display.centreLine, 1);
    const GridSettings grid = GridSettings::Read(file);
    EXPECT_EQ(grid.timeGrid, 1);
    EXPECT_EQ(grid.levelGrid, 2);
    EXPECT_EQ(grid.timeLabels, 3);
    EXPECT_EQ(grid.type, 1);
    EXPECT_EQ(grid.widthSpacingMs, 250);
    EXPECT_EQ(grid.heightSpacingPercent, 25);
    EXPECT_EQ(grid.Place(), GridPlace::kNowhere);
    EXPECT_EQ(ReadStatusFormat(file), StatusFormat::kSecond);
}

TEST_F(ViewSettings, StatusFormatIsStored) {
    ProfileFile file = FileWith("[__SOUND_OPTIONS]\nStatus Format=7\n");
    EXPECT_EQ(ReadStatusFormat(file.Read()), StatusFormat::kTime);
    for (const auto format : {StatusFormat::kSample, StatusFormat::kTime, StatusFormat::kSecond}) {
        ASSERT_TRUE(WriteStatusFormat(file, format));
        EXPECT_EQ(ReadStatusFormat(file.Read()), format);
    }
    EXPECT_EQ(file.Read().GetString("__SOUND_OPTIONS", "Status Format"), "2");
}

}  // namespace
}  // namespace sonavel
