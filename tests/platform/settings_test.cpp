#include "platform/settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "platform/small_file.h"

namespace sonavel {
namespace {

std::string ShippedText(SettingsFile file) {
    const char* name = file == SettingsFile::kOptions ? "Options.ini" : "Display.ini";
    return ReadSmallFile(std::filesystem::path(SONAVEL_DEFAULTS) / name, 1 << 20).value_or("");
}

TEST(SettingsTest, EverySettingIsShippedWithItsSentence) {
    for (const Setting& row : AllSettings()) {
        std::string line = "\n; ";
        line.append(row.explanation).append("\n").append(row.key).append("=").append(row.shipped);
        EXPECT_NE(ShippedText(row.file).find(line + "\n"), std::string::npos) << line;
    }
}

TEST(SettingsTest, WhatIsShippedIsASettingAndIsRewrittenAsItIs) {
    std::map<std::string, std::size_t> keysOf;
    for (const Setting& row : AllSettings()) ++keysOf[std::string(row.section)];
    for (const SettingsFile file : {SettingsFile::kOptions, SettingsFile::kDisplay}) {
        const std::string text = ShippedText(file);
        const auto parsed = ProfileText::FromBytes(text, ProfileText::Purpose::kRewrite);
        ASSERT_TRUE(parsed);
        EXPECT_EQ(parsed->Bytes(), text);
        for (const std::string& section : parsed->SectionNames()) {
            const bool ofColours = file == SettingsFile::kDisplay && !keysOf.contains(section);
            EXPECT_EQ(parsed->Entries(section).size(), ofColours ? 16 : keysOf[section]) << section;
        }
    }
}

TEST(SettingsTest, NumbersThatAreNotAcceptedGiveWayToOthers) {
    const struct {
        SettingId id;
        int stored, effective;
    } cases[] = {
        {SettingId::kOpenAndPlay, 7, 1},
        {SettingId::kOpenAndPlay, -1, 1},
        {SettingId::kPlayScrolling, 2, 0},
        {SettingId::kPlaybackDevice, 256, 256},
        {SettingId::kPlaybackDevice, 257, -1},
        {SettingId::kRecordDevice, -3, -1},
        {SettingId::kPlaybackBlockFrames, 127, 1024},
        {SettingId::kRecordBlockFrames, 32768, 1024},
        {SettingId::kStatusFormat, 3, 1},
        {SettingId::kGridType, 2, 0},
        {SettingId::kGridLocation, 9, 2},
        {SettingId::kGridWidthSpacing, -5, 0},
        {SettingId::kGridHeightSpacing, 201, 200},
    };
    for (const auto& c : cases)
        EXPECT_EQ(RowOf(c.id).Effective(c.stored), c.effective) << RowOf(c.id).key << c.stored;
    for (const Setting& row : AllSettings()) {
        if (row.kind == SettingKind::kText) continue;
        const int shipped = std::stoi(std::string(row.shipped));
        EXPECT_EQ(row.Effective(shipped), shipped) << row.key;
    }
}

}  // namespace
}  // namespace sonavel
