#include "catalogue/sample_files.h"

#include <gmock/gmock.h>

#include "catalogue/sample_preview.h"
#include "catalogue_fixture.h"
#include "support/fake_wave_devices.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

using SampleFilesTest = CatalogueFixture;

TEST_F(SampleFilesTest, ProbingReadsFormatAndLengthOfEveryKind) {
    WavParts plain;
    plain.data = FileBytes(200);
    WavParts compressed;
    compressed.tag = 17;
    compressed.blockAlign = 512;
    compressed.rate = 8;
    compressed.data = FileBytes(8192);
    AiffParts aiff;
    aiff.channels = 2;
    aiff.frames = 5;
    aiff.bits = 24;
    aiff.data = FileBytes(30);
    AuParts muLaw;
    muLaw.encoding = 1;
    muLaw.behindHeader = FileBytes(4 + 100);
    WavParts deep;
    deep.bits = 24;
    deep.channels = 3;
    deep.blockAlign = 9;
    deep.data = FileBytes(900);
    CodecWatcher watcher;
    const struct {
        const char* name;
        FileBytes bytes;
        SampleFacts facts;
    } cases[] = {
        {"a.WAV", WavBytes(plain), {8000, 100, 1, 16, 0, "WAV"}},
        // 4096 bytes a second: 2 seconds.
        {"b.wav", WavBytes(compressed), {8, 16, 1, 0, 0, "WAV"}},
        {"c.aif", AiffBytes(aiff), {8000, 5, 2, 24, 0, "AIFF"}},
        {"d.x.snd", AuBytes(muLaw), {8000, 100, 1, 16, 0, "AU"}},
        {"e.wav", WavBytes(deep), {8000, 100, 3, 24, 0, "WAV"}},
        {"f.v2.flac", BytesOf("fLaC"), {96000, 8, 2, 24, 0, "FLAC"}},
        {"by content.wav", BytesOf("fLaC"), {96000, 8, 2, 24, 0, "FLAC"}},
    };
    for (const auto& c : cases) {
        WriteFileBytes(folder / c.name, c.bytes);
        const auto facts = ProbeSample(folder / c.name, &codecs, watcher);
        ASSERT_TRUE(facts) << c.name << ": " << facts.Reason();
        EXPECT_EQ(facts->samplesPerSecond, c.facts.samplesPerSecond) << c.name;
        EXPECT_EQ(facts->channels, c.facts.channels) << c.name;
        EXPECT_EQ(facts->bits, c.facts.bits) << c.name;
        EXPECT_EQ(facts->frames, c.facts.frames) << c.name;
        EXPECT_EQ(facts->fileBytes, c.bytes.size()) << c.name;
        EXPECT_EQ(facts->format, c.facts.format) << c.name;
    }
    for (const char* name : {"empty.wav", "empty.au", "empty.aiff", "text.txt"}) {
        WriteFileBytes(folder / name, {});
        EXPECT_FALSE(ProbeSample(folder / name, &codecs, watcher)) << name;
    }
}

TEST_F(SampleFilesTest, FoldersAreAddedWithWhatLiesBelowThem) {
    WriteWav("in/한글 폴더/소리.wav", 10);
    WriteWav("in/v1.2/b.WAV", 10);
    WriteWav("in/a.wav", 10);
    WriteFileBytes(folder / "in/broken.aiff", BytesOf("FORM"));
    WriteFileBytes(folder / "in/d.FLAC", BytesOf("fLaC"));
    WriteFileBytes(folder / "in/read me.txt", BytesOf("text"));
    fs::create_directory_symlink(folder / "in", folder / "in/loop");
    const AddedSamples first = Add({folder / "in", folder / "in/../in/a.wav"});
    EXPECT_EQ(first.added, 4u);
    EXPECT_EQ(first.known, 1u);
    EXPECT_EQ(first.unreadable, 1u);
    EXPECT_THAT(first.firstFailure, ::testing::StartsWith("broken.aiff: "));
    std::vector<std::string> names;
    for (std::size_t i = 0; i < catalogue.Count(); ++i) {
        names.emplace_back(catalogue.At(i).FileName());
        EXPECT_EQ(catalogue.At(i).presence, FilePresence::kThere);
    }
    EXPECT_THAT(names, ElementsAre("a.wav", "d.FLAC", "b.WAV", "소리.wav"));
    EXPECT_EQ(Add({folder / "in"}).known, 4u);
    EXPECT_EQ(Add({folder / "none.wav", folder / "in/read me.txt"}).unreadable, 2u);
    EXPECT_EQ(catalogue.Count(), 4u);
}

TEST_F(SampleFilesTest, RemovingKeepsTheOthersInOrder) {
    AddNames({"a", "b", "c", "d"});
    catalogue.Remove(std::vector<std::size_t>{3, 1});
    ASSERT_EQ(catalogue.Count(), 2u);
    EXPECT_EQ(catalogue.At(1).path, "/s/c");
    EXPECT_FALSE(catalogue.Contains("/s/b"));
    EXPECT_TRUE(catalogue.Add({"/s/b", {}}));
}

TEST_F(SampleFilesTest, CheckingMarksMissingFilesAndReadsChangedOnes) {
    const fs::path path = WriteWav("a.wav", 10);
    Add({path});
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kWhenSizeChanged, &codecs), CheckResult::kSame);
    WriteWav("a.wav", 20);
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kWhenSizeChanged, &codecs),
              CheckResult::kFactsChanged);
    EXPECT_EQ(catalogue.At(0).facts.frames, 20u);
    fs::remove(path);
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kAlways, &codecs), CheckResult::kPresenceChanged);
    EXPECT_EQ(catalogue.MissingCount(), 1u);
    EXPECT_EQ(catalogue.At(0).facts.frames, 20u);
    fs::create_directory(path);
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kAlways, &codecs), CheckResult::kSame);
}

TEST_F(SampleFilesTest, ADecoderThatHangsIsGivenUpAndTheEntryKeepsItsFacts) {
    const fs::path path = folder / "a.flac";
    WriteFileBytes(path, BytesOf("fLaC"));
    Add({path});
    WriteFileBytes(path, BytesOf("hang"));
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kAlways, &codecs), CheckResult::kSame);
    EXPECT_EQ(catalogue.At(0).facts.format, "FLAC");
}

TEST_F(SampleFilesTest, FormatsThatAnOlderCatalogueDidNotStoreAreLookedUp) {
    const fs::path path = WriteWav("a.wav", 10);
    const std::uint64_t bytes = fs::file_size(path);
    ASSERT_TRUE(catalogue.Add({path.string(), {8000, 10, 1, 16, bytes}}));
    EXPECT_EQ(CheckSample(catalogue, 0, Probing::kWhenSizeChanged, &codecs),
              CheckResult::kFactsChanged);
    EXPECT_EQ(catalogue.At(0).facts.format, "WAV");
}

class LocateTest : public SampleFilesTest {
  protected:
    LocateTest() {
        Add({WriteWav("old/kits/a/1.wav", 1), WriteWav("old/kits/a/2.wav", 2),
             WriteWav("old/kits/b/3.wav", 3), WriteWav("other/4.wav", 4)});
    }
    void CheckAll() {
        for (std::size_t i = 0; i < catalogue.Count(); ++i)
            CheckSample(catalogue, i, Probing::kWhenSizeChanged, &codecs);
    }
};

TEST_F(LocateTest, OneFoundFileBringsBackWhatMovedWithIt) {
    fs::create_directories(folder / "disk");
    fs::rename(folder / "old", folder / "disk/new");
    fs::rename(folder / "other/4.wav", folder / "disk/4.wav");
    CheckAll();
    EXPECT_EQ(catalogue.MissingCount(), 4u);
    EXPECT_EQ(*LocateSample(catalogue, 1, folder / "disk/new/kits/a/2.wav", &codecs), 3u);
    EXPECT_EQ(catalogue.At(2).path, (folder / "disk/new/kits/b/3.wav").string());
    EXPECT_EQ(catalogue.MissingCount(), 1u);
    CheckAll();
    EXPECT_EQ(catalogue.MissingCount(), 1u);
}

TEST_F(LocateTest, ARenamedFileIsTakenAndOthersAreNotGuessed) {
    fs::rename(folder / "old/kits/a/1.wav", folder / "old/kits/a/one.wav");
    fs::remove(folder / "old/kits/a/2.wav");
    CheckAll();
    EXPECT_EQ(*LocateSample(catalogue, 0, folder / "old/kits/a/one.wav", &codecs), 1u);
    EXPECT_EQ(catalogue.At(0).FileName(), "one.wav");
    EXPECT_EQ(LocateSample(catalogue, 1, folder / "old/kits/b/3.wav", &codecs).Reason(),
              "The file is in the catalogue already.");
    EXPECT_FALSE(LocateSample(catalogue, 1, folder / "nowhere.wav", &codecs));
    EXPECT_EQ(catalogue.At(1).FileName(), "2.wav");
    EXPECT_EQ(catalogue.MissingCount(), 1u);
}

TEST_F(SampleFilesTest, ThePreviewPlaysAFileToItsEnd) {
    FakeWaveDevices devices;
    SamplePreview preview(prompts, progress, devices, &codecs);
    int stops = 0;
    preview.SetOnStopped([&] { ++stops; });
    const ProgramFolder options(folder.Path());
    EXPECT_NE(preview.Play(folder / "none.wav", options).Reason(), "");
    EXPECT_EQ(preview.Play(WriteWav("empty.wav", 0), options).Reason(), "The sound is empty.");
    ASSERT_TRUE(preview.Play(WriteWav("v1.2/a.wav", 500), options));
    EXPECT_TRUE(preview.IsPlaying());
    for (int i = 0; i < 30 && preview.IsPlaying(); ++i) devices.Out().Hear();
    EXPECT_FALSE(preview.IsPlaying());
    EXPECT_EQ(stops, 1);
    ASSERT_TRUE(preview.Play(folder / "v1.2/a.wav", options));
    preview.Stop();
    EXPECT_EQ(stops, 2);
    WriteFileBytes(folder / "a.flac", BytesOf("fLaC"));
    ASSERT_TRUE(preview.Play(folder / "a.flac", options));
    EXPECT_TRUE(preview.IsPlaying());
    EXPECT_EQ(devices.Out().format.bitsPerSample, 32);
}

}  // namespace
}  // namespace sonavel
