// Exports, read back by import.
#include "exchange/sound_export.h"
#include "sound/sample_types.h"

#include <gmock/gmock.h>

#include "exchange/sound_import.h"
#include "exchange_files.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using testing::IsEmpty;
using enum SoundFileKind;

class SoundExportTest : public ::testing::Test {
  protected:
    // Float frames -1, -0.9, ... of one channel, with a marker at 2 and a region from 5 to 9.
    static Sound Ramp(unsigned bits) {
        Sound sound;
        EXPECT_TRUE(sound.Create(1, 32, 8000, 20));
        auto floats = SamplesOf<FloatSample>(sound.MutableBytes());
        for (std::size_t i = 0; i < floats.size(); ++i)
            floats[i] = (static_cast<float>(i) - 10) / 16;
        EXPECT_TRUE(bits == 32 || sound.ConvertBits(bits));
        sound.Markers().Add(2, "point", 0);
        sound.Markers().Add(5, "region", 4);
        return sound;
    }
    ImportedSound ExportAndRead(const Sound& sound, ExportChoice choice) {
        SoundExtras extras;
        extras.tags = {{"title", "T"}};
        if (choice.frames.IsEmpty()) choice.frames = {0, sound.GetFrameCount()};
        const Outcome done = ExportSound(folder_ / "x", sound, extras, choice, nullptr, {});
        EXPECT_TRUE(done) << done.Reason();
        Result<ImportedSound> read = ImportSound(folder_ / "x", nullptr, {}, {});
        EXPECT_TRUE(read) << read.Reason();
        return read ? std::move(*read) : ImportedSound{};
    }

    TemporaryFolder folder_;
};

TEST_F(SoundExportTest, EveryDepthComesBackInEveryKindWrittenHere) {
    for (const SoundFileKind kind : {kWav, kRf64, kAiff})
        for (const auto& [depth, bits] : {std::pair(EncodedDepth::k8, 8u),
                                          {EncodedDepth::k16, 16u},
                                          {EncodedDepth::k24, 32u},
                                          {EncodedDepth::kFloat32, 32u}}) {
            ExportChoice choice;
            choice.kind = kind;
            choice.depth = depth;
            for (const unsigned from : {16u, 32u}) {
                const Sound sound = Ramp(from);
                const ImportedSound read = ExportAndRead(sound, choice);
                ASSERT_EQ(read.sound.GetFrameCount(), 20u);
                EXPECT_EQ(read.sound.GetBits(), bits);
                // Sixteenths fit every depth, so that nothing is dithered; bytes count down.
                for (std::uint32_t frame = 0; frame < 20; ++frame)
                    EXPECT_EQ(std::abs(read.sound.GetShare(0, frame)),
                              std::abs(sound.GetShare(0, frame)));
                EXPECT_THAT(read.extras.remarks.all, IsEmpty());
            }
        }
}

TEST_F(SoundExportTest, APartHasItsOwnMarkers) {
    ExportChoice choice;
    choice.frames = {4, 7};
    const ImportedSound part = ExportAndRead(Ramp(16), choice);
    EXPECT_EQ(part.sound.GetFrameCount(), 3u);
    EXPECT_EQ(part.sound.GetShare(0, 0), -6.0 / 16);
    ASSERT_EQ(part.sound.Markers().Count(), 1u);
    EXPECT_EQ(part.sound.Markers().All()[0].position, 1u);
    EXPECT_EQ(part.sound.Markers().All()[0].length, 2u);
    EXPECT_THAT(TagTexts(part.extras), ElementsAre("title=T"));

    choice.markers = choice.tags = ExportPart::kLeaveOut;
    const ImportedSound bare = ExportAndRead(Ramp(16), choice);
    EXPECT_TRUE(bare.sound.Markers().Empty());
    EXPECT_THAT(bare.extras.tags, IsEmpty());

    choice.frames = {30, 40};
    EXPECT_FALSE(ExportSound(folder_ / "none", Ramp(16), {}, choice, nullptr, {}));
    EXPECT_FALSE(std::filesystem::exists(folder_ / "none"));
}

TEST_F(SoundExportTest, KindsAndDepthsHaveDefaults) {
    EXPECT_EQ(ExportKindOf(std::filesystem::path("a.b/c.d.FLAC")), kFlac);
    EXPECT_EQ(ExportKindOf(std::filesystem::path("a.ogg")), kOggVorbis);
    EXPECT_FALSE(ExportKindOf(std::filesystem::path("a.b/c")));
    SoundFileDescription deep;
    deep.depth = FileDepth::kInteger;
    deep.bits = 24;
    const Sound floats = Ramp(32), words = Ramp(16);
    EXPECT_EQ(ExportDepth(kWav, floats, &deep), EncodedDepth::k24);
    EXPECT_EQ(ExportDepth(kWav, floats, nullptr), EncodedDepth::kFloat32);
    EXPECT_EQ(ExportDepth(kFlac, floats, nullptr), EncodedDepth::k24);
    EXPECT_EQ(ExportDepth(kFlac, words, nullptr), EncodedDepth::k16);
}

}  // namespace
}  // namespace sonavel
