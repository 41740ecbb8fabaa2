// Writes small sound files of every kind that the readers take into the subfolders wav, aiff and au
// of a folder, and records of unsaved work into journal, for the fuzzers to start from.
#include <algorithm>
#include <cstdio>

#include "recovery/journal_record.h"
#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "sound/wave.h"
#include "support/fake_progress.h"
#include "support/recording_prompts.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

FileBytes Ramp() {
    FileBytes bytes(64);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 4);
    return bytes;
}

// Markers as other programs write them: labels before texts, a list of other things before the
// data.
FileBytes WavWithTexts() {
    WavParts parts;
    parts.data = Ramp();
    parts.beforeData = RiffChunkBytes("LIST", BytesOf("INFOISFT") + FileBytes{2, 0, 0, 0, 'x', 0});
    const FileBytes point = ByteBuilder()
                                .Little32(1)
                                .Little32(1)
                                .Little32(9)
                                .Text("data")
                                .Little32(0)
                                .Little32(0)
                                .Little32(9)
                                .Bytes();
    const FileBytes text =
        ByteBuilder().Little32(1).Little32(5).Text("rgn ").Little32(0).Little32(0).Bytes();
    parts.behindData =
        RiffChunkBytes("cue ", point) +
        RiffChunkBytes("LIST", BytesOf("adtl") + RiffChunkBytes("labl", {1, 0, 0, 0, 'a', 'b'}) +
                                   RiffChunkBytes("ltxt", text));
    return WavBytes(parts);
}

// As programs write it that cannot go back to the header when they know the size.
FileBytes WavFromPipe() {
    WavParts parts;
    parts.data = Ramp();
    FileBytes bytes = WavBytes(parts);
    for (const std::size_t size : {4u, 40u})
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(size), 4, std::uint8_t{0xFF});
    return bytes;
}

// Plain PCM behind a header that could say more.
FileBytes WavWithExtensibleFormat() {
    WavParts parts;
    parts.tag = 0xFFFE;
    ByteBuilder more;
    more.Little16(22).Little16(16).Little32(4);
    more.Little32(1).Little32(0x00100000).Little32(0xAA000080).Little32(0x719B3800);
    return RiffBytes(RiffChunkBytes("fmt ", WavFormatBytes(parts) + more.Bytes()) +
                     RiffChunkBytes("data", Ramp()));
}

// As fuzz_journal takes it: a sound, its name, an edit that can be undone, and its Undo.
FileBytes EditedJournal() {
    using namespace recovery;
    const PcmFormat format = MakeSoundFormat(1, 8, 8000);
    const std::pair<JournalRecord, std::size_t> records[] = {
        {BaseRecord{.format = format, .sampleBytes = 8, .frames = 8}, 8},
        {NameRecord{"", "Sound 1", {}}, 0},
        {ChangeRecord{.name = "Copy Sample",
                      .startByte = 2,
                      .bytesBefore = 3,
                      .sampleBytes = 5,
                      .format = format,
                      .framesAfter = 10},
         5},
        {StepRecord{StepRecord::Way::kUndo, format, 8}, 0}};
    FileBytes bytes;
    for (const auto& [record, samples] : records) {
        const std::vector<std::uint8_t> packed = PackRecord(record);
        bytes.push_back(static_cast<std::uint8_t>(TypeOf(record)));
        bytes.push_back(static_cast<std::uint8_t>(packed.size() & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(packed.size() >> 8));
        bytes.push_back(static_cast<std::uint8_t>(samples));
        bytes.insert(bytes.end(), packed.begin(), packed.end());
        bytes.resize(bytes.size() + samples, 77);
    }
    return bytes;
}

bool WriteSeeds(const fs::path& folder) {
    RecordingPrompts prompts;
    FakeProgress progress;
    CWave wave(prompts, progress);
    bool written = true;
    for (const unsigned bits : {8u, 16u}) {
        for (const unsigned channels : {1u, 2u}) {
            // A rate of 5, because an AIFF file gets one second of sound.
            written = written && wave.Create(channels, bits, 5, 8);
            std::ranges::copy_n(Ramp().begin(), wave.GetDataSize(), wave.MutableBytes().begin());
            wave.Markers().Add(3, "", 2);
            const std::string name = std::to_string(bits) + "-" + std::to_string(channels);
            written = written && wave.Save(folder / "wav" / name, MarkerSaving::kOn) &&
                      WriteAiff(wave, folder / "aiff" / name, MarkerSaving::kOn, {}).IsDone() &&
                      WriteAu(wave, folder / "au" / name, MarkerSaving::kOn, {}).IsDone();
        }
    }
    WriteFileBytes(folder / "journal" / "edited", EditedJournal());
    WriteFileBytes(folder / "wav" / "texts", WavWithTexts());
    WriteFileBytes(folder / "wav" / "pipe", WavFromPipe());
    WriteFileBytes(folder / "wav" / "extensible", WavWithExtensibleFormat());
    for (const std::uint32_t encoding : {1u, 27u})
        WriteFileBytes(folder / "au" / ("code-" + std::to_string(encoding)),
                       AuBytes({24, 0xFFFFFFFF, encoding, 8000, 1, Ramp()}));
    return written;
}

}  // namespace
}  // namespace sonavel

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: fuzz_seeds FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    for (const char* kind : {"wav", "aiff", "au", "journal"})
        std::filesystem::create_directories(folder / kind);
    return sonavel::WriteSeeds(folder) ? 0 : 1;
}
