// Broken files of every format through the real codec program: each is decoded or refused with a
// sentence, in time, and nothing is left behind. SONAVEL_MUTATIONS in the environment asks for more
// of them.
#include <chrono>
#include <cstdlib>
#include <random>

#include "codec_fixture.h"
#include "library_writer.h"
#include "support/patience.h"

namespace sonavel {
namespace {

constexpr int kFormats[] = {
    SF_FORMAT_WAV | SF_FORMAT_PCM_16,
    SF_FORMAT_WAV | SF_FORMAT_PCM_24,
    SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM,
    SF_FORMAT_WAV | SF_FORMAT_GSM610,
    SF_FORMAT_WAVEX | SF_FORMAT_FLOAT,
    SF_FORMAT_RF64 | SF_FORMAT_PCM_16,
    SF_FORMAT_W64 | SF_FORMAT_PCM_24,
    SF_FORMAT_AIFF | SF_FORMAT_PCM_24,
    SF_FORMAT_AU | SF_FORMAT_ULAW,
    SF_FORMAT_CAF | SF_FORMAT_ALAC_16,
    SF_FORMAT_CAF | SF_FORMAT_PCM_24,
    SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
    SF_FORMAT_OGG | SF_FORMAT_VORBIS,
    SF_FORMAT_OGG | SF_FORMAT_OPUS,
    SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III,
};
constexpr int kTruncations = 12;

class MutationTest : public CodecTest {
  protected:
    static CodecSetup HelperAlone() {
        CodecSetup setup = BuiltPrograms();
        setup.programs.ffmpeg.clear();
        return setup;
    }

    void Survives(const FileBytes& bytes) {
        using namespace std::chrono_literals;
        WriteFileBytes(folder / "broken", bytes);
        CollectingSink broken;
        broken.mostBytes = std::size_t{64} << 20;
        const auto began = std::chrono::steady_clock::now();
        const auto decoded = ChildCodecs(HelperAlone()).Decode(folder / "broken", broken);
        EXPECT_LT(std::chrono::steady_clock::now() - began, kPatience);
        ++runs;
        crashes += decoded.Reason() == "The decoder crashed on this file.";
        if (decoded) {
            ++decodes;
            EXPECT_EQ(decoded->frames, broken.Frames());
            EXPECT_EQ(broken.begins, 1);
        } else {
            EXPECT_TRUE(decoded.Ended().IsFailed());
            EXPECT_TRUE(decoded.Reason().ends_with('.')) << decoded.Reason();
            EXPECT_NE(decoded.Reason(), "The decoder's answer makes no sense.");
        }
    }

    static FileBytes Mutated(FileBytes bytes, std::mt19937& random) {
        for (unsigned n = 1 + random() % 3; n > 0; --n) {
            // Heads are where most goes wrong.
            const std::size_t reach =
                random() % 2 == 0 ? std::min<std::size_t>(bytes.size(), 128) : bytes.size();
            const std::size_t at = random() % reach;
            constexpr std::uint8_t kEdges[] = {0, 1, 0x7F, 0x80, 0xFF};
            bytes[at] = random() % 2 == 0 ? kEdges[random() % std::size(kEdges)]
                                          : static_cast<std::uint8_t>(random());
        }
        return bytes;
    }

    int runs = 0;
    int decodes = 0;
    int crashes = 0;
};

TEST_F(MutationTest, RatesThatNoSoundHasAreRefusedAsDamage) {
    WriteByLibrary(folder / "whole", SF_FORMAT_WAV | SF_FORMAT_ALAW, 1, 8000,
                   std::vector<std::int32_t>(100));
    FileBytes bytes = ReadFileBytes(folder / "whole");
    constexpr std::size_t kRatePlace = 24;
    for (const std::uint8_t top : {0x40, 0x7F, 0x80, 0xFF}) {
        bytes[kRatePlace] = 1;
        bytes[kRatePlace + 3] = top;
        Survives(bytes);
    }
}

TEST_F(MutationTest, BrokenFilesCostAMessageAtMost) {
    const char* asked = std::getenv("SONAVEL_MUTATIONS");
    const int mutations = asked != nullptr ? std::atoi(asked) : 20;
    std::mt19937 random(7);
    std::vector<std::int32_t> sound;
    for (int i = 0; i < 4800; ++i)
        sound.push_back(static_cast<std::int32_t>(0x1p29 * std::sin(0.05 * i)));
    for (const int format : kFormats) {
        SCOPED_TRACE(::testing::Message() << std::hex << format);
        const int rate = (format & SF_FORMAT_SUBMASK) == SF_FORMAT_OPUS ? 48000 : 44100;
        WriteByLibrary(folder / "whole", format, 1, rate, sound);
        const FileBytes whole = ReadFileBytes(folder / "whole");
        for (int i = 0; i < kTruncations; ++i) {
            FileBytes cut = whole;
            cut.resize(whole.size() * static_cast<std::size_t>(i) / kTruncations);
            Survives(cut);
        }
        for (int i = 0; i < mutations; ++i) Survives(Mutated(whole, random));
    }
    std::printf("%d broken files: %d decoded, %d decoders crashed\n", runs, decodes, crashes);
    // Most of the mutations are small.
    EXPECT_GT(decodes, runs / 4);
}

}  // namespace
}  // namespace sonavel
