// What the preferences read from and write to the initialisation files.
#include <gtest/gtest.h>

#include "app/preferences/colour_presets.h"
#include "app/preferences/preferences.h"
#include "document/document_options.h"
#include "platform/code_page_949.h"
#include "support/sound_files.h"
#include "view/state/display_settings.h"

namespace sonavel {
namespace {

class PreferencesTest : public ::testing::Test {
  protected:
    void WriteText(std::string_view name, std::string_view text) {
        WriteFileBytes(files_ / name, BytesOf(text));
    }
    std::string Text(std::string_view name) {
        const FileBytes bytes = ReadFileBytes(files_ / name);
        return {bytes.begin(), bytes.end()};
    }

    TemporaryFolder files_;
    ProgramFolder folder_{files_.Path()};
};

struct Change {
    const char* name;
    void (*apply)(Preferences&);
};

constexpr Change kPages[] = {
    {"display",
     [](Preferences& p) {
         for (std::size_t slot = 0; slot < ColourTable::kSlots; ++slot)
             p.colours.Set(slot, {static_cast<std::uint8_t>(slot), 7, 255});
         p.settings[SettingId::kHorizontalRuler] = 1;
         p.settings[SettingId::kVerticalRuler] = 1;
         p.settings[SettingId::kCentreLine] = 1;
     }},
    {"general",
     [](Preferences& p) {
         p.settings[SettingId::kDisplaySampleData] = 1;
         p.settings[SettingId::kDisplaySeeker] = 1;
         p.settings[SettingId::kOpenAndPlay] = 1;
         p.settings[SettingId::kOpenAndMaximize] = 1;
         p.settings[SettingId::kOpenAndFullTimeZoom] = 1;
         p.settings[SettingId::kApplyAutoSkipMode] = 1;
         p.settings[SettingId::kSaveUndo] = 1;
         p.settings[SettingId::kUndoMemory] = 512;
         p.settings[SettingId::kRecoveryRoom] = 2048;
         p.settings[SettingId::kPlayScrolling] = 1;
         p.settings[SettingId::kSaveMarkers] = 1;
         p.settings[SettingId::kStatusFormat] = 2;
         p.settings[SettingId::kAutoPlay] = 1;
         p.settings[SettingId::kMeterScale] = 2;
         p.settings[SettingId::kMeterLabels] = 1;
     }},
    {"grid",
     [](Preferences& p) {
         p.settings[SettingId::kTimeGrid] = 1;
         p.settings[SettingId::kLevelGrid] = 1;
         p.settings[SettingId::kTimeLabels] = 1;
         p.settings[SettingId::kGridType] = 1;
         p.settings[SettingId::kGridLocation] = 2;
         p.settings[SettingId::kGridWidthSpacing] = 250;
         p.settings[SettingId::kGridHeightSpacing] = 25;
     }},
    {"wave",
     [](Preferences& p) {
         p.settings[SettingId::kPlaybackDevice] = 3;
         p.settings[SettingId::kPlaybackBlockFrames] = 128;
         p.settings[SettingId::kRecordDevice] = -2;
         p.settings[SettingId::kRecordBlockFrames] = 32767;
     }},
};

TEST_F(PreferencesTest, EveryPageComesBackFromItsFilesAlone) {
    for (const Change& page : kPages) {
        const Preferences before = Preferences::Read(folder_);
        Preferences after = before;
        page.apply(after);
        ASSERT_TRUE(after != before) << page.name;
        ASSERT_TRUE(WriteChanges(folder_, before, after));
        EXPECT_TRUE(Preferences::Read(folder_) == after) << page.name;
    }
    // And as those who use them read them.
    const DocumentOptions options = DocumentOptions::Read(folder_.Options().Read());
    EXPECT_EQ(options.recordDeviceId, -2);
    EXPECT_EQ(options.saveMarkers, 1);
    EXPECT_EQ(GridSettings::Read(folder_.Options().Read()).Place(), GridPlace::kNowhere);
    EXPECT_EQ(folder_.Display().Read().GetString(kColourSection, "LANE SEPARATOR"), "15,7,255,");
}

TEST_F(PreferencesTest, OnlyWhatChangedIsWritten) {
    const std::string text =
        "[__SOUND_WAVE_OPTIONS]\nPLAYBACK BUFFER SIZE=100\n"
        "[__SOUND_GENERAL_OPTIONS]\nOPEN AND PLAY=7\n"
        "[__SOUND_GRID_OPTIONS]\nGRID LOCATION=9\nGRID WIDTH SPACING=-5\n"
        "[__SOUND_PLAY_METER]\nPLAYING METER TYPE=3\n";
    WriteText("Options.ini", text);
    const Preferences before = Preferences::Read(folder_);
    EXPECT_EQ(before.settings[SettingId::kPlaybackBlockFrames], 1024);
    EXPECT_EQ(before.settings[SettingId::kOpenAndPlay], 1);
    EXPECT_EQ(before.settings[SettingId::kMeterScale], 1);
    ASSERT_TRUE(WriteChanges(folder_, before, before));
    EXPECT_EQ(Text("Options.ini"), text);
    Preferences after = before;
    after.settings[SettingId::kRecordDevice] = 5;
    ASSERT_TRUE(WriteChanges(folder_, before, after));
    const ProfileText file = folder_.Options().Read();
    EXPECT_EQ(file.GetInteger("__SOUND_WAVE_OPTIONS", "PLAYBACK BUFFER SIZE"), 100);
    EXPECT_EQ(file.GetInteger("__SOUND_GENERAL_OPTIONS", "OPEN AND PLAY"), 7);
    EXPECT_EQ(file.Entries("__SOUND_WAVE_OPTIONS").size(), 2u);
}

TEST_F(PreferencesTest, FilesOfTheKoreanCodePageStayInIt) {
    const auto encoded = [](const char* text) { return CodePage949FromUtf8(text).value(); };
    WriteText("Options.ini",
              encoded("; 설정\n[__SOUND_GENERAL_OPTIONS]\n마커 저장=0\n[다른]\n키=값\n"));
    WriteText("Display.ini", encoded("[__SOUND_밤하늘]\nA=1,2,3,\nB=4,5,6,\n"));
    const Preferences before = Preferences::Read(folder_);
    EXPECT_EQ(before.settings[SettingId::kSaveMarkers], 0);
    for (const Change& page : kPages) {
        const Preferences stored = Preferences::Read(folder_);
        Preferences after = stored;
        page.apply(after);
        ASSERT_TRUE(WriteChanges(folder_, stored, after));
        EXPECT_TRUE(Preferences::Read(folder_) == after) << page.name;
    }
    const std::string options = Text("Options.ini");
    EXPECT_NE(options.find(encoded("마커 저장=1")), std::string::npos);
    EXPECT_EQ(options.find(encoded("마커 저장")), options.rfind(encoded("마커 저장")));
    EXPECT_NE(options.find(encoded("키=값")), std::string::npos);

    ColourPresets presets(folder_.Display());
    EXPECT_EQ(presets.Names(), std::vector<std::string>{"밤하늘"});
    EXPECT_EQ(presets.Load("밤하늘").At(1), (Rgb{4, 5, 6}));
    EXPECT_EQ(presets.Load("밤하늘").At(2), ColourTable().At(2));
    ASSERT_TRUE(presets.Save("새벽", ColourTable()));
    EXPECT_NE(Text("Display.ini").find(encoded("[__SOUND_새벽]")), std::string::npos);
}

TEST_F(PreferencesTest, FilesThatCannotBeWritten) {
    const ProgramFolder nowhere("/nowhere/at all");
    const Preferences before = Preferences::Read(nowhere);
    Preferences after = before;
    after.settings[SettingId::kAutoPlay] = 1;
    EXPECT_FALSE(WriteChanges(nowhere, before, after));
    after = before;
    after.colours.Set(3, {1, 1, 1});
    EXPECT_FALSE(WriteChanges(nowhere, before, after));
}

TEST_F(PreferencesTest, SetsOfColoursAreSavedLoadedAndDeleted) {
    ColourTable colours;
    colours.Set(15, {9, 8, 7});
    ColourPresets presets(folder_.Display());
    ASSERT_TRUE(presets.Save("Paper", colours));
    ASSERT_TRUE(presets.Save("Night 2", ColourTable()));
    colours.Set(0, {1, 2, 3});
    ASSERT_TRUE(presets.Save("PAPER", colours));  // the same section
    EXPECT_EQ(presets.Names(), (std::vector<std::string>{"Paper", "Night 2"}));
    EXPECT_EQ(presets.Load("paper"), colours);
    ASSERT_TRUE(presets.Delete("Paper"));
    EXPECT_EQ(presets.Names(), std::vector<std::string>{"Night 2"});
    EXPECT_EQ(presets.Load("Paper"), ColourTable());
}

TEST_F(PreferencesTest, TheFilesOwnDefaultsComeBeforeThoseOfTheProgram) {
    ColourPresets presets(folder_.Display());
    EXPECT_EQ(presets.Defaults(), ColourTable());
    WriteText("Display.ini", "[__SOUND_DEFAULT_SECTION]\nX=10,20,30,\n");
    EXPECT_EQ(presets.Defaults().At(0), (Rgb{10, 20, 30}));
    EXPECT_EQ(presets.Defaults().At(1), ColourTable().At(1));
    EXPECT_TRUE(presets.Names().empty());
}

TEST_F(PreferencesTest, NamesThatWouldSpoilTheFileAreRefused) {
    ColourPresets presets(folder_.Display());
    for (const char* name : {"", " a", "a ", "a]b", "[x", "a\nb", "UPDATE_SECTION",
                             "default_section", "Display_Items"}) {
        EXPECT_FALSE(ColourPresets::NameProblem(name).empty()) << name;
        EXPECT_FALSE(presets.Save(name, ColourTable())) << name;
    }
    EXPECT_TRUE(ColourPresets::NameProblem("밤 하늘 (2) = x;y").empty());
    ASSERT_TRUE(presets.Save("밤 하늘 (2) = x;y", ColourTable()));
    EXPECT_EQ(presets.Names(), std::vector<std::string>{"밤 하늘 (2) = x;y"});
}

}  // namespace
}  // namespace sonavel
