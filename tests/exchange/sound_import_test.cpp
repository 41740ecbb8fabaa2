// Import of files that need no decoder, of those that do, and of broken ones.
#include "exchange/sound_import.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>

#include "exchange/open_refusal.h"
#include "exchange_files.h"
#include "support/fake_progress.h"

namespace sonavel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Three samples that each depth holds: 0.5, -1 and 0.25.
constexpr float kValues[] = {0.5f, -1.0f, 0.25f};

FileBytes Numbers(unsigned bytes, bool isFloat, bool isBig) {
    FileBytes all;
    for (const float value : kValues) {
        std::uint64_t number =
            isFloat && bytes == 8 ? std::bit_cast<std::uint64_t>(double{value})
            : isFloat             ? std::bit_cast<std::uint32_t>(value)
                      : static_cast<std::uint64_t>(std::llround(std::ldexp(value, 8 * bytes - 1)));
        for (unsigned i = 0; i < bytes; ++i)
            all.push_back(static_cast<std::uint8_t>(number >> 8 * (isBig ? bytes - 1 - i : i)));
    }
    return all;
}

FileBytes PlainWav(unsigned tag, unsigned bytes) {
    FileBytes data = Numbers(bytes, tag == 3, false);
    if (bytes == 1) data = {0xC0, 0x00, 0xA0};
    return WavBytes({.tag = tag, .bits = 8 * bytes, .blockAlign = bytes, .data = data});
}

FileBytes Aifc(std::string_view type, unsigned bytes, bool isFloat, bool isBig) {
    AiffParts parts{.frames = 3, .bits = 8 * bytes, .data = Numbers(bytes, isFloat, isBig)};
    FileBytes common = AiffCommonBytes(parts) + BytesOf(type) + FileBytes{0, 0};
    common[7] = 24;
    const auto soundBytes = static_cast<std::uint32_t>(parts.data.size() + 8);
    return AiffFormBytes(common +
                         ByteBuilder().Text("SSND").Big32(soundBytes).Big32(0).Big32(0).Bytes() +
                         parts.data);
}

// A decoder of a file of four channels, whose samples are what the test says.
class FakeCodecs : public SoundCodecs {
  public:
    Result<SoundFileHead> Probe(const std::filesystem::path&, CodecWatcher&) const override {
        return head;
    }
    Result<DecodedSound> Decode(const std::filesystem::path&, FrameSink& sink) const override {
        if (Outcome begun = sink.Begin(head); !begun) return begun;
        if (sink.Watch() == GoOn::kNo) return Cancelled();
        if (Outcome taken = sink.Take(frames); !taken) return taken;
        return end;
    }
    Outcome Encode(const std::filesystem::path&, const EncodeRequest&,
                   FrameSource&) const override {
        return Failed("No encoder.");
    }
    bool CanDecodeWithFfmpeg() const override { return false; }

    void SetWords(std::vector<std::int16_t> words) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(words.data());
        frames.assign(bytes, bytes + 2 * words.size());
    }

    SoundFileHead head;
    FileBytes frames;
    DecodedSound end;
};

class SoundImportTest : public ::testing::Test {
  protected:
    SoundImportTest() {
        SoundFileDescription& flac = codecs_.head.description;
        flac.format = "FLAC";
        flac.depth = FileDepth::kInteger;
        flac.bits = 16;
        flac.rate = 8000;
        flac.channels = 4;
        flac.samples = FrameSamples::kSigned16;
        host_.progress = &progress_;
        codecs_.SetWords({1000, 2000, 3000, 4000, -1000, -2000, -3000, -4000});
    }

    Result<ImportedSound> Import(const FileBytes& bytes, const ImportChoice& choice = {}) {
        WriteFileBytes(folder_ / "a.b.sound", bytes);
        return ImportSound(folder_ / "a.b.sound", &codecs_, choice, host_);
    }
    static std::vector<double> Shares(const Sound& sound) {
        std::vector<double> shares;
        for (std::uint32_t frame = 0; frame < sound.GetFrameCount(); ++frame)
            for (unsigned channel = 0; channel < sound.GetChannels(); ++channel)
                shares.push_back(sound.GetShare(channel, frame));
        return shares;
    }

    TemporaryFolder folder_;
    FakeProgress progress_;
    TransferHost host_;
    FakeCodecs codecs_;
};

TEST_F(SoundImportTest, PlainSamplesComeBitForBit) {
    const struct {
        FileBytes bytes;
        unsigned bits;
        std::string line;
    } cases[] = {
        {PlainWav(1, 2), 16, "WAV, 16 bit, 8,000 Hz"},
        {PlainWav(1, 3), 32, "WAV, 24 bit, 8,000 Hz"},
        {PlainWav(1, 4), 32, "WAV, 32 bit, 8,000 Hz"},
        {PlainWav(3, 4), 32, "WAV, 32 bit float, 8,000 Hz"},
        {PlainWav(3, 8), 32, "WAV, 64 bit float, 8,000 Hz"},
        {Aifc("NONE", 3, false, true), 32, "AIFF, 24 bit, 8,000 Hz"},
        {Aifc("sowt", 2, false, false), 16, "AIFF, 16 bit, 8,000 Hz"},
        {Aifc("fl32", 4, true, true), 32, "AIFF, 32 bit float, 8,000 Hz"},
        {Aifc("FL64", 8, true, true), 32, "AIFF, 64 bit float, 8,000 Hz"},
    };
    for (const auto& c : cases) {
        const Result<ImportedSound> imported = Import(c.bytes);
        ASSERT_TRUE(imported) << c.line << ": " << imported.Reason();
        const ImportedSound& sound = *imported;
        EXPECT_EQ(ImportLine(sound.description, sound.extras), c.line);
        EXPECT_EQ(sound.sound.GetBits(), c.bits) << c.line;
        EXPECT_THAT(Shares(sound.sound), ElementsAre(0.5, -1.0, 0.25)) << c.line;
    }
}

TEST_F(SoundImportTest, BytesStayAsTheyLieInWavAndAreTurnedInAiff) {
    const Result<ImportedSound> wav = Import(PlainWav(1, 1));
    ASSERT_TRUE(wav);
    EXPECT_THAT((*wav).sound.Bytes(), ElementsAre(0xC0, 0x00, 0xA0));
    const Result<ImportedSound> aiff = Import(Aifc("NONE", 1, false, true));
    ASSERT_TRUE(aiff);
    EXPECT_THAT((*aiff).sound.Bytes(), ElementsAre(0xC0, 0x00, 0xA0));
}

TEST_F(SoundImportTest, DeepSoundsAreRoundedWhereThatWasChosen) {
    const Result<ImportedSound> imported =
        Import(PlainWav(1, 3), {.depth = ImportDepth::kRoundTo16});
    ASSERT_TRUE(imported);
    EXPECT_EQ((*imported).sound.GetBits(), 16u);
    // All three fit 16 bits, so no dither touches them.
    EXPECT_THAT(Shares((*imported).sound), ElementsAre(0.5, -1.0, 0.25));
    EXPECT_EQ((*Import(PlainWav(1, 1), {.depth = ImportDepth::kRoundTo16})).sound.GetBits(), 8u);
}

TEST_F(SoundImportTest, ChannelsAreTakenAsChosen) {
    const auto check = [&](const ImportChoice& choice,
                           const std::vector<std::int32_t>& firstFrame) {
        const Result<ImportedSound> imported = Import(BytesOf("fLaC"), choice);
        ASSERT_TRUE(imported) << imported.Reason();
        const Sound& sound = (*imported).sound;
        EXPECT_EQ(sound.GetBits(), 16u);
        ASSERT_EQ(sound.GetChannels(), firstFrame.size());
        for (unsigned channel = 0; channel < sound.GetChannels(); ++channel) {
            EXPECT_EQ(sound.GetSample(channel, 0), firstFrame[channel]);
            EXPECT_EQ(sound.GetSample(channel, 1), -firstFrame[channel]);
        }
    };
    check({.channels = ImportChannels::kLeft}, {1000});
    check({.channels = ImportChannels::kRight}, {2000});
    check({.channels = ImportChannels::kMono}, {2500});
    // Channels of no known place go left and right in turn.
    check({}, {2000, 3000});
    const unsigned last[] = {3, 2};
    ImportChoice picked;
    picked.matrix = PickChannels(last, 4);
    check(picked, {4000, 3000});
}

TEST_F(SoundImportTest, BytesOfManyChannelsKeepTheirSign) {
    WavParts parts{.channels = 2, .bits = 8, .blockAlign = 2, .data = {0xFF, 0x10, 0x00, 0x10}};
    const Result<ImportedSound> left = Import(WavBytes(parts), {.channels = ImportChannels::kLeft});
    ASSERT_TRUE(left);
    EXPECT_THAT((*left).sound.Bytes(), ElementsAre(0xFF, 0x00));
}

TEST_F(SoundImportTest, SalvagesAndSaysWhatWasMissing) {
    FileBytes cut = PlainWav(1, 2);
    cut.resize(cut.size() - 3);
    const FileBytes notANumber =
        WavBytes({.tag = 3,
                  .bits = 32,
                  .blockAlign = 4,
                  .data = ByteBuilder().Little32(0x7FC00000).Little32(0x3F000000).Bytes()});
    const struct {
        FileBytes bytes;
        std::vector<double> shares;
        std::string said;
    } cases[] = {
        {cut, {0.5}, "Of 3 frames 1 are there."},
        {notANumber, {0, 0.5}, "1 samples that were no numbers became 0."},
    };
    for (const auto& c : cases) {
        const Result<ImportedSound> imported = Import(c.bytes);
        ASSERT_TRUE(imported) << imported.Reason();
        EXPECT_EQ(Shares((*imported).sound), c.shares);
        EXPECT_THAT(ImportLine((*imported).description, (*imported).extras), HasSubstr(c.said));
    }
}

// What a save over the file would take from it.
TEST_F(SoundImportTest, SaysWhatTheFileHasAndTheSoundHasNot) {
    FileBytes cut = PlainWav(1, 2);
    cut.resize(cut.size() - 3);
    FileBytes unpadded = WavWith(RiffChunkBytes("odd ", FileBytes(3)), {});
    unpadded.erase(unpadded.begin() + 12 + 24 + 11);
    const FileBytes fine = WavBytes({.bits = 24, .blockAlign = 3, .data = {1, 0, 0}});
    const FileBytes pair = WavBytes({.channels = 2, .blockAlign = 4, .data = {1, 2, 3, 4}});
    const ImportChoice rounded{.depth = ImportDepth::kRoundTo16};
    const struct {
        FileBytes bytes;
        ImportChoice choice;
        std::vector<std::string> losses;
    } cases[] = {
        {fine, {}, {}},
        {fine, rounded, {"The sound was rounded to 16 bits when it was imported"}},
        {PlainWav(1, 3), rounded, {}},  // whose samples all fit
        {PlainWav(1, 4), {}, {"Samples of 32 bits were taken as 32-bit floats"}},
        {pair,
         {.channels = ImportChannels::kRight},
         {"Of the file's 2 channels only 1 were taken"}},
        {pair, {}, {}},
        {BytesOf("fLaC"), {}, {"Of the file's 4 channels only 2 were taken"}},
        {cut,
         {},
         {"The file was not read whole:\n- The file is shorter than it says.\n"
          "- The sound ends early.\n- Of 3 frames 1 are there"}},
        {unpadded, {}, {}},
    };
    for (const auto& c : cases) {
        const Result<ImportedSound> imported = Import(c.bytes, c.choice);
        ASSERT_TRUE(imported) << imported.Reason();
        EXPECT_EQ((*imported).losses, c.losses);
    }
    EXPECT_THAT((*Import(unpadded)).extras.remarks.all, Contains("A pad byte is missing."));
}

TEST_F(SoundImportTest, MarkersOfTheWalkOutrankThoseOfTheDecoder) {
    codecs_.head.chapters = {{1, 0, "decoder's"}};
    codecs_.head.tags = {{"title", "\xB0\xA1"}};  // code page 949
    const Result<ImportedSound> decoded = Import(BytesOf("caff"));
    ASSERT_TRUE(decoded);
    ASSERT_EQ((*decoded).sound.Markers().Count(), 1u);
    EXPECT_EQ((*decoded).sound.Markers().All()[0].name, "decoder's");
    EXPECT_THAT(TagTexts((*decoded).extras), ElementsAre("title=\xEA\xB0\x80"));

    const FileBytes cue = CueBytes(1, CuePointBytes(7, 20));
    const Result<ImportedSound> walked =
        Import(WavWith(cue, ListBytes("adtl", LabelBytes(7, "walk's") + RegionTextBytes(7, 5))));
    ASSERT_TRUE(walked);
    ASSERT_EQ((*walked).sound.Markers().Count(), 1u);
    EXPECT_EQ((*walked).sound.Markers().All()[0].name, "walk's");
    EXPECT_EQ((*walked).sound.Markers().All()[0].length, 5u);
}

TEST_F(SoundImportTest, CancelledAndFailedImportsSaySo) {
    progress_.cancelAtPoll = 0;
    EXPECT_TRUE(Import(PlainWav(1, 2)).Ended().IsCancelled());
    EXPECT_TRUE(Import(BytesOf("fLaC")).Ended().IsCancelled());
    EXPECT_EQ(progress_.openWindows, 0);
    EXPECT_THAT(ImportSound(folder_ / "none", &codecs_, {}, {}).Reason(), testing::Not(IsEmpty()));
    WriteFileBytes(folder_ / "f", BytesOf("fLaC"));
    EXPECT_THAT(ImportSound(folder_ / "f", nullptr, {}, {}).Reason(), HasSubstr("sonavel-codec"));
    codecs_.head.description.rate = 0;
    EXPECT_FALSE(Import(BytesOf("fLaC")));
}

TEST_F(SoundImportTest, WhatOpenRefusesHasAReason) {
    const WavParts plain{.data = FileBytes(100)};
    FileBytes cut = WavBytes(plain);
    cut.resize(cut.size() - 10);
    const struct {
        std::string name;
        FileBytes bytes;
        std::string reason;  // empty: Open reads it
    } cases[] = {
        {"plain.wav", WavBytes(plain), ""},
        {"steps.v2.wav", WavBytes(plain), "the first dot in its path decides the format"},
        {"take3.wav", PlainWav(1, 3), "24-bit sound"},
        {"float.wav", PlainWav(3, 4), "32-bit float sound"},
        {"cut.wav", cut, "its sound ends early"},
        {"six.wav", WavBytes({.channels = 6, .blockAlign = 12, .data = FileBytes(24)}),
         "sound of 6 channels"},
        {"song.flac", BytesOf("fLaC"), "FLAC sound"},
        {"wrong.wav", BytesOf("fLaC"), "its content is FLAC"},
    };
    codecs_.head.description.channels = 2;
    std::filesystem::current_path(folder_.Path());
    for (const auto& c : cases) {
        WriteFileBytes(c.name, c.bytes);
        EXPECT_EQ(OpenRefuses(c.name), !c.reason.empty()) << c.name;
        if (c.reason.empty()) continue;
        CodecWatcher watcher;
        const Result<SoundFileHead> head = ProbeImport(c.name, &codecs_, watcher);
        ASSERT_TRUE(head) << c.name;
        EXPECT_EQ(OpenRefusalReason(c.name, (*head).description), c.reason) << c.name;
    }
    EXPECT_FALSE(OpenRefuses("none.wav"));
    std::filesystem::current_path("/");
}

}  // namespace
}  // namespace sonavel
