// Scripts that find pauses, read and write markers as texts, and write regions to files.
#include <gtest/gtest.h>

#include "batch/batch_tool_fixture.h"

namespace sonavel::batch {
namespace {

class LabelCommandsTest : public BatchToolTest {
  protected:
    // One second of loud sound, one of silence, one of loud sound; 8000 Hz.
    void WriteSpeech() const {
        WavParts parts;
        ByteBuilder data;
        for (int i = 0; i < 24000; ++i) data.Little16(i < 8000 || i >= 16000 ? 8000u : 0u);
        parts.data = data.Bytes();
        WriteFileBytes(folder_ / "speech.wav", WavBytes(parts));
    }
    std::string Text(const char* name) const {
        const FileBytes bytes = ReadFileBytes(folder_ / name);
        return {bytes.begin(), bytes.end()};
    }
};

TEST_F(LabelCommandsTest, MarksPausesOrTheSoundBetween) {
    WriteSpeech();
    ExpectOutput("open @/speech.wav; mark-pauses; markers; history; undo; markers",
                 "marker 1 position=12000 length=0 name=\"Pause 1\"\n"
                 "step 0 kind=2 name=\"Marker\" *\n");
    ExpectOutput("open @/speech.wav; mark-pauses as=regions pause=8000 sound=0.5s; markers",
                 "marker 1 position=0 length=8000 name=\"Sound 1\"\n"
                 "marker 2 position=16000 length=8000 name=\"Sound 2\"\n");
    ExpectOutput(
        "open @/speech.wav; mark-pauses pause=8001; markers; "
        "select 10000 24000; mark-pauses pause=0:00.5; markers",
        "marker 1 position=13000 length=0 name=\"Pause 1\"\n");
    EXPECT_EQ(Run("mark-pauses pause=1x").status, 2);
}

TEST_F(LabelCommandsTest, LabelsGoOutAndComeBack) {
    WriteSpeech();
    for (const std::string name : {"a.txt", "a.csv", "a.vtt"}) {
        ExpectOutput(
            "open @/speech.wav; marker-add 8000 name=One; "
            "marker-add 800 name=\"T,wo\" length=4000; markers-export @/" +
                name,
            "");
        // What is there already is not added again.
        ExpectOutput("open @/speech.wav; markers-import @/" + name + "; markers-import @/" + name +
                         "; markers",
                     "marker 1 position=800 length=4000 name=\"T,wo\"\n"
                     "marker 2 position=8000 length=0 name=\"One\"\n");
    }
    EXPECT_EQ(Text("a.csv"), "name,start,end\n\"T,wo\",0.100000,0.600000\nOne,1.000000,1.000000\n");
}

TEST_F(LabelCommandsTest, AnImportTakesAllOrNothingButWhatLiesBehindTheEnd) {
    WriteSpeech();
    Write("bad.txt", "1\t2\tgood\nbad\n");
    Write("long.txt", "2.5\t9\tlong\n3.5\t4\tbehind\n");
    const ToolResult bad = Run("open @/speech.wav; try markers-import @/bad.txt; markers");
    EXPECT_TRUE(bad.out.starts_with("failed: Line 2: expected START<tab>END<tab>NAME")) << bad.out;
    EXPECT_EQ(bad.out.find("marker 1"), std::string::npos);
    ExpectOutput("open @/speech.wav; markers-import @/long.txt; markers",
                 "message: A label behind the end of the sound was left out.\n"
                 "marker 1 position=20000 length=4000 name=\"long\"\n");
}

TEST_F(LabelCommandsTest, RegionsBecomeFilesThatAreNotWrittenOver) {
    WriteSpeech();
    const std::string open =
        "open @/speech.wav; marker-add 8000 name=b length=100; marker-add 100 name=a length=50; ";
    ExpectOutput(open + "export-regions @",
                 "wrote \"@/01_a.wav\" from=100 to=150\nwrote \"@/02_b.wav\" from=8000 to=8100\n");
    ExpectOutput("open @/02_b.wav; info",
                 "document 1 title=\"02_b.wav\" rate=8000 channels=1 bits=16 frames=100 bytes=200 "
                 "duration=0.012500 modified=0 selection=0..0 cursor=0 markers=1\n");
    ExpectOutput(open + "try export-regions @; export-regions @ overwrite=on from=8000",
                 "failed: There is a file \"@/01_a.wav\" already; nothing was written.\n"
                 "wrote \"@/01_b.wav\" from=8000 to=8100\n");
    ExpectOutput(
        open + "export-regions @/made/here between-markers=on pattern={title}-{name} format=aiff",
        "wrote \"@/made/here/speech-speech.aiff\" from=0 to=100\n"
        "wrote \"@/made/here/speech-a.aiff\" from=100 to=8000\n"
        "wrote \"@/made/here/speech-b.aiff\" from=8000 to=24000\n");
    ExpectOutput("open @/speech.wav; try export-regions @; try export-regions @/none",
                 "failed: There are no regions to export.\n"
                 "failed: There are no regions to export.\n");
}

}  // namespace
}  // namespace sonavel::batch
