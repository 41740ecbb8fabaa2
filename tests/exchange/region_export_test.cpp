// Which parts an export of regions writes, what their files are called, and what is never written
// over.
#include "exchange/region_export.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/test_files.h"

namespace sonavel {
namespace {

Sound SoundWithMarkers() {
    Sound sound;
    EXPECT_TRUE(sound.Create(1, 16, 8000, 1000));
    for (std::uint32_t frame = 0; frame < 1000; ++frame)
        sound.SetSample(0, frame, static_cast<std::int32_t>(frame));
    sound.Markers().Add(600, "b/c", 100);
    sound.Markers().Add(200, "a", 300);
    sound.Markers().Add(200, "same place", 0);
    sound.Markers().Add(900, "late", 4000);
    return sound;
}

TEST(RegionExportTest, PartsAreRegionsOrStretches) {
    const Sound sound = SoundWithMarkers();
    using Parts = std::vector<NamedPart>;
    EXPECT_EQ(PartsOf(sound, SplitAt::kRegions, {0, 1000}, "t"),
              (Parts{{{200, 500}, "a"}, {{600, 700}, "b/c"}, {{900, 1000}, "late"}}));
    EXPECT_EQ(
        PartsOf(sound, SplitAt::kMarkers, {0, 1000}, "t"),
        (Parts{{{0, 200}, "t"}, {{200, 600}, "a"}, {{600, 900}, "b/c"}, {{900, 1000}, "late"}}));
    EXPECT_EQ(PartsOf(sound, SplitAt::kRegions, {300, 650}, "t"),
              (Parts{{{300, 500}, "a"}, {{600, 650}, "b/c"}}));
}

TEST(RegionExportTest, NamesFollowThePattern) {
    const std::vector<NamedPart> parts = {{{0, 1}, "a/b:\n\xED\x95\x9C"}, {{1, 2}, " c "}};
    const std::vector<NamedPart> hundred(100, {{0, 1}, "x"});
    EXPECT_EQ(*PartFileNames("{number}_{name}", parts, "t"),
              (std::vector<std::string>{"01_a_b__\xED\x95\x9C", "02_ c"}));
    EXPECT_EQ(PartFileNames("{title}-{number}{", hundred, "t")->at(6), "t-007{");
    EXPECT_LE(PartFileNames("{name}", {{{0, 1}, std::string(999, 'x')}}, "")->at(0).size(), 200u);
    const struct {
        const char* pattern;
        const char* word;
    } refused[] = {
        {"{colour}", "colour"}, {"all", "{number}"}, {"", "name"}, {"../{number}", "name"}};
    for (const auto& one : refused) {
        const auto names = PartFileNames(one.pattern, parts, "t");
        EXPECT_FALSE(names) << one.pattern;
        EXPECT_NE(names.Reason().find(one.word), std::string::npos) << names.Reason();
    }
}

class RegionFilesTest : public ::testing::Test {
  protected:
    RegionExport Regions() const {
        RegionExport regions;
        regions.folder = folder_.Path();
        regions.parts = PartsOf(sound_, SplitAt::kRegions, {0, 1000}, "t");
        regions.names = *PartFileNames("{number}", regions.parts, "t");
        return regions;
    }
    Outcome Export(const RegionExport& regions) {
        return ExportRegions(regions, sound_, {}, nullptr, {},
                             [this](const auto&, FrameRange frames) { told_.push_back(frames); });
    }

    TemporaryFolder folder_;
    Sound sound_ = SoundWithMarkers();
    std::vector<FrameRange> told_;
};

TEST_F(RegionFilesTest, EachFileHoldsItsOwnFrames) {
    ASSERT_TRUE(Export(Regions()));
    EXPECT_EQ(told_, (std::vector<FrameRange>{{200, 500}, {600, 700}, {900, 1000}}));
    const FileBytes second = ReadFileBytes(folder_ / "02.wav");
    const FileBytes samples = {0x58, 0x02, 0x59, 0x02};  // 600, 601
    EXPECT_NE(std::search(second.begin(), second.end(), samples.begin(), samples.end()),
              second.end());
    EXPECT_EQ(folder_.FileCount(), 3u);
}

TEST_F(RegionFilesTest, NothingIsWrittenOverUnasked) {
    WriteFileBytes(folder_ / "03.wav", BytesOf("mine"));
    RegionExport regions = Regions();
    EXPECT_EQ(ExistingParts(regions).size(), 1u);
    EXPECT_TRUE(Export(regions).IsFailed());
    EXPECT_EQ(ReadFileBytes(folder_ / "03.wav"), BytesOf("mine"));
    EXPECT_EQ(folder_.FileCount(), 1u);
    regions.existing = ExistingFiles::kReplace;
    EXPECT_TRUE(Export(regions));
    EXPECT_NE(ReadFileBytes(folder_ / "03.wav"), BytesOf("mine"));
}

}  // namespace
}  // namespace sonavel
