// Whole runs of the tool against files of a temporary folder: script in, exact output out.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <set>
#include <sstream>

#include "batch/batch_tool_fixture.h"

namespace sonavel::batch {
namespace {

namespace fs = std::filesystem;

// --- Import

TEST_F(BatchToolTest, ImportsWhatOpenRefusesAndSavesItTheWayItCame) {
    // 24 bits, two frames, with an odd chunk that Open and Save know nothing of.
    const FileBytes odd = RiffChunkBytes("iXML", BytesOf("<a/>"));
    const FileBytes file = WavBytes({.bits = 24,
                                     .blockAlign = 3,
                                     .beforeData = {},
                                     .data = {0, 0, 0x40, 1, 0, 0xC0},
                                     .behindData = odd});
    WriteFileBytes(folder_ / "deep.v2.wav", file);
    const ToolResult refused = Run("open @/deep.v2.wav");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find("The command import reads it."), std::string::npos)
        << refused.errors;
    ExpectOutput(
        "import @/deep.v2.wav; samples 0 9; info; save; import @/deep.v2.wav depth=16; samples 0 9",
        "0 0.5000000\n1 -0.4999999\n"
        "document 1 title=\"deep.v2.wav\" rate=8000 channels=1 bits=32 frames=2 bytes=8 "
        "duration=0.000250 modified=0 selection=0..0 cursor=0 markers=0\n"
        "0 16384\n1 -16384\n");
    EXPECT_EQ(ReadFileBytes(folder_ / "deep.v2.wav"), file);
}

TEST_F(BatchToolTest, AsksOnceBeforeASaveThatLoses) {
    WriteFileBytes(folder_ / "a.aiff",
                   AiffBytes({.frames = 2, .beforeCommon = {}, .data = {0, 1, 0, 2}}));
    const ToolResult result =
        Run("import @/a.aiff; marker-add 0 name=region length=1; answer cancel; try save; save; "
            "marker-add 1 name=point; save; import @/a.aiff; markers");
    EXPECT_EQ(result.out,
              "question: The lengths of regions cannot be written to an AIFF file.\\n"
              "Save all the same? -> cancel\n"
              "failed: Cancelled.\n"
              "question: The lengths of regions cannot be written to an AIFF file.\\n"
              "Save all the same? -> ok\n"
              "marker 1 position=0 length=0 name=\"region\"\n"
              "marker 2 position=1 length=0 name=\"point\"\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(BatchToolTest, AsksBeforeASaveOverWhatImportDidNotTake) {
    FileBytes fine = WavBytes({.bits = 24, .blockAlign = 3, .data = {1, 0, 0, 2, 0, 0}});
    WriteFileBytes(folder_ / "fine.wav", fine);
    FileBytes cut = fine;
    cut.resize(cut.size() - 1);
    WriteFileBytes(folder_ / "cut.v2.wav", cut);
    const ToolResult result =
        Run("answer cancel; import @/fine.wav depth=16; try save; answer cancel; "
            "import @/cut.v2.wav; try save");
    EXPECT_EQ(result.out,
              "question: The sound was rounded to 16 bits when it was imported.\\n"
              "Save all the same? -> cancel\nfailed: Cancelled.\n"
              "question: The file was not read whole:\\n- The sound ends early.\\n"
              "- Of 2 frames 1 are there.\\n"
              "Save all the same? -> cancel\nfailed: Cancelled.\n");
    EXPECT_EQ(ReadFileBytes(folder_ / "fine.wav"), fine);
    EXPECT_EQ(ReadFileBytes(folder_ / "cut.v2.wav"), cut);
}

TEST_F(BatchToolTest, ExportsWithoutTouchingTheDocument) {
    WriteRamp("a.wav", 9);
    ExpectOutput(
        "open @/a.wav; marker-add 4 name=here; tag-set title T; "
        "export @/b.v2.aiff from=3 to=6 bits=24; info; import @/b.v2.aiff; samples 0 9; tags; "
        "markers",
        "document 1 title=\"a.wav\" rate=8000 channels=1 bits=16 frames=9 bytes=18 "
        "duration=0.001125 modified=1 selection=0..0 cursor=0 markers=1\n"
        "0 0.0001221\n1 0.0001526\n2 0.0001831\n"
        "tag title=\"T\"\n"
        "marker 1 position=1 length=0 name=\"here\"\n");
    EXPECT_NE(Run("open @/a.wav; export @/a.xyz").errors.find("names no format"),
              std::string::npos);
}

TEST_F(BatchToolTest, KeepsTagsThroughASave) {
    WriteRamp("a.wav", 3);
    ExpectOutput(
        "import @/a.wav; tags; tag-set title \"A \\\"T\\\"\"; tag-set artist B; tag-set artist "
        "\"\"; "
        "tags; save; close; import @/a.wav; tags",
        "tag title=\"A \\\"T\\\"\"\ntag title=\"A \\\"T\\\"\"\n");
}

// --- The call

TEST_F(BatchToolTest, ReadsScriptsFromFilesInputAndWords) {
    Write("s.txt", "new\nactivate 7");
    struct Case {
        std::vector<std::string> words;
        std::string input;
        std::string errors;
        int status;
    };
    const std::string reason = "activate: failed: There is no document 7.\n";
    const Case cases[] = {
        {{"--folder", "@", "@/s.txt"}, "", "@/s.txt:2: " + reason, 1},
        {{"--folder", "@", "-"}, "\n\nactivate 7", "-:3: " + reason, 1},
        {{"-c", "activate 7", "--folder", "@"}, "", "-c:1: " + reason, 1},
        {{"--folder", "@", "-c", "new; activate x"},
         "",
         "-c:1: expected a whole number from 1 to 2147483647 for N, not \"x\"\n",
         2},
        {{"--folder", "@", "/dev/null"}, "", "", 0},  // stands for pipes: of no known size
        {{"--folder", "@/none", "-c", "new"}, "", "sonavel-batch: \"@/none\" is not a folder\n", 2},
        {{"@/none"}, "", "sonavel-batch: cannot read the script \"@/none\"\n", 2},
    };
    for (const Case& c : cases) {
        const ToolResult result = Call(c.words, c.input);
        EXPECT_EQ(result.errors, c.errors);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.status, c.status) << c.errors;
    }
}

TEST_F(BatchToolTest, RefusesOtherCalls) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{}, "expected a script"},
        {{"-c"}, "expected the text of a script behind -c"},
        {{"--folder"}, "expected a folder behind --folder"},
        {{"--fast", "x"}, "expected an option or a script, not \"--fast\""},
        {{"-", "x"}, "expected one script, not also \"x\""},
    };
    for (const auto& [words, mistake] : cases) {
        const ToolResult result = Call(words);
        EXPECT_EQ(result.errors.substr(0, result.errors.find('\n')), "sonavel-batch: " + mistake);
        EXPECT_NE(result.errors.find("\nusage: "), std::string::npos);
        EXPECT_EQ(result.status, 2);
    }
    const ToolResult help = Call({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* line :
         {"crossfade [from=0] [to=0] [nonlinear=off]",
          "flanger [delay=0.1] [modulation=0.1] [apply=off]",
          "dynamics [threshold=100] [below=1] [above=1] [threshold-right=...] [below-right=...] "
          "[above-right=...]"})
        EXPECT_NE(help.out.find(std::string("\n  ") + line + '\n'), std::string::npos) << line;
    EXPECT_EQ(Call({"--version"}).out.rfind("sonavel-batch 1.", 0), 0u);
}

TEST_F(BatchToolTest, RunsNothingWhenALineIsWrong) {
    const ToolResult result = Run("new; save @/new.wav\nnew bits=9");
    EXPECT_EQ(result.status, 2);
    EXPECT_FALSE(fs::exists(folder_ / "new.wav"));
}

TEST_F(BatchToolTest, ShowsProgressOnRequest) {
    WriteRamp("r.wav", 10);
    const std::string script = "open @/r.wav; volume percent=50";
    EXPECT_EQ(Run(script).errors, "");
    const ToolResult result = Call({"--progress", "--folder", "@", "-c", script});
    EXPECT_NE(result.errors.find("Volume: 0%\n"), std::string::npos) << result.errors;
    EXPECT_EQ(result.status, 0);
}

// --- Failures

TEST_F(BatchToolTest, StopsAtTheFirstFailureUnlessItIsTried) {
    Write("bad.wav", "RIFF");
    const ToolResult result =
        Run("try cut; try info\nnew; try cut\ntry undo; try zoom-selection; try paste\n"
            "try preview-save @/p.wav; try envelope channel=1; try marker-set 3 0\n"
            "try zoom-range 0 1; try save; info; paste; info");
    EXPECT_EQ(result.out,
              "failed: No document is open.\nfailed: No document is open.\n"
              "failed: Nothing is selected.\nfailed: There is nothing to undo.\n"
              "failed: Nothing is selected.\nfailed: The clipboard holds no wave data.\n"
              "failed: There is no preview sound.\nfailed: The sound has no channel 1.\n"
              "failed: There is no such marker.\n"
              "failed: The range does not lie within the sound.\n"
              "failed: The document has no file yet.\n"
              "document 1 title=\"Sound1\" rate=44100 channels=1 bits=8 frames=0 bytes=0 "
              "duration=0.000000 modified=0 selection=0..0 cursor=0 markers=0\n");
    EXPECT_EQ(result.errors, "-c:5: paste: failed: The clipboard holds no wave data.\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Run("open @/none.wav").status, 1);
    EXPECT_EQ(Run("open @/bad.wav; info").status, 1);
    EXPECT_EQ(Run("preview volume").errors, "-c:1: preview: failed: No document is open.\n");
}

TEST_F(BatchToolTest, SaysWhyItIsThisCommandThatFails) {
    WriteRamp("r.wav", 3);
    const std::string outside = "failed: The range does not lie within the sound.\n";
    ExpectOutput(
        "new; try cut; try positional 1 0 0; open @/r.wav; try zoom-range 1 1; try zoom-range 0 4\n"
        "try zoom-range -1 2; zoom-range 0 3",
        "failed: Nothing is selected.\nfailed: The sound is empty.\n" + outside + outside +
            outside);
}

TEST_F(BatchToolTest, FailsWhenItsOutputCannotBeWritten) {
    std::istringstream in;
    std::ostringstream out, errors;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(
        RunBatchTool({"--folder", folder_.Path().string(), "-c", "new; info"}, {in, out, errors}),
        1);
    EXPECT_EQ(errors.str(), "sonavel-batch: cannot write to the standard output\n");
}

TEST_F(BatchToolTest, RefusesFilesLargerThanTheMemory) {
    for (const char* name : {"huge.txt", "huge.wav"}) {
        Write(name, "");
        fs::resize_file(folder_ / name, std::uintmax_t{1} << 42);
    }
    EXPECT_EQ(Call({"--folder", "@", "@/huge.txt"}).errors,
              "sonavel-batch: cannot read the script \"@/huge.txt\"\n");
    ExpectOutput("try clipboard-load @/huge.wav", "failed: The file could not be read.\n");
}

// --- Documents

TEST_F(BatchToolTest, OpensSavesAndReports) {
    WriteRamp("r.wav", 4);
    ExpectOutput(
        "open @/r.wav; info; samples 2 9; samples -1 2\n"
        "samples -9223372036854775808 -9223372036854775808\n"
        "samples 9223372036854775807 9223372036854775807\n"
        "marker-add 1 name=\"say \\\"hi\\\"\"; marker-add 9; marker-set 2 2 length=9; markers; "
        "info",
        "document 1 title=\"r.wav\" rate=8000 channels=1 bits=16 frames=4 bytes=8 "
        "duration=0.000500 modified=0 selection=0..0 cursor=0 markers=0\n"
        "2 3\n3 4\n0 1\n"
        "marker 1 position=1 length=0 name=\"say \\\"hi\\\"\"\n"
        "marker 2 position=2 length=2 name=\"Marker 2\"\n"
        "document 1 title=\"r.wav\" rate=8000 channels=1 bits=16 frames=4 bytes=8 "
        "duration=0.000500 modified=1 selection=0..0 cursor=0 markers=2\n");
}

TEST_F(BatchToolTest, OpensAndSavesFilesOfAnyName) {
    WriteRamp("caf\xE9.wav", 2);
    ExpectOutput(
        "open @/caf\xE9.wav; info; save-as @/\xB8\xB6.au; clipboard-load @/caf\xE9.wav\n"
        "clipboard-save @/clip\xE9.bin; open @/\xB8\xB6.au; info; try open @/\xB8\xB6.x",
        "document 1 title=\"caf?.wav\" rate=8000 channels=1 bits=16 frames=2 bytes=4 "
        "duration=0.000250 modified=0 selection=0..0 cursor=0 markers=0\n"
        "document 2 title=\"마.au\" rate=8000 channels=1 bits=16 frames=2 bytes=4 "
        "duration=0.000250 modified=0 selection=0..0 cursor=0 markers=0\n"
        "failed: Files with the extension \".x\" cannot be opened.\n");
    EXPECT_EQ(fs::file_size(folder_ / "clip\xE9.bin"), 48u);
}

TEST_F(BatchToolTest, SavesUnderOtherFormats) {
    WriteRamp("r.wav", 4);
    const std::string format = "rate=8000 channels=2 bits=8 frames=4 bytes=8 duration=0.000500 ";
    ExpectOutput(
        "open @/r.wav; marker-add 1; try save-as @/stereo channels=2 bits=8 markers=off\n"
        "save @/x.au; info; open @/stereo.WAV; info; samples 3 1; try save @/none/x.wav",
        "failed: The sound was written without its markers.\n"
        "document 1 title=\"x.au\" " +
            format + "modified=0 selection=0..0 cursor=0 markers=1\n" +
            "document 2 title=\"stereo.WAV\" " + format +
            "modified=0 selection=0..0 cursor=0 markers=0\n3 0 0\n"
            "message: File Open Failure.\nfailed: File Open Failure.\n");
}

TEST_F(BatchToolTest, ConvertsAsOneUndoableEdit) {
    WriteRamp("r.wav", 2);
    ExpectOutput(
        "open @/r.wav; convert-channels 2 mode=1; samples 0 2; convert-channels 2; set-rate 11025\n"
        "history; undo; undo; samples 0 1; save-as @/out channels=2; samples 0 1; history\n"
        "open @/out.WAV; convert-bits 8; samples 0 1",
        "0 0 1\n1 0 2\n"
        "step 0 kind=2 name=\"Copy Sample\"\nstep 1 kind=2 name=\"Copy Sample\" *\n"
        "0 1\n0 1 1\nstep 0 kind=2 name=\"Copy Sample\" *\n"
        "0 0 0\n");
}

TEST_F(BatchToolTest, ShowsAndConvertsFloatSounds) {
    WriteRamp("r.wav", 3);
    ExpectOutput(
        "open @/r.wav; convert-bits 32; samples 1 2; convert-channels 2; samples 2 1\n"
        "convert-bits 16; samples 1 1; history\n",
        "1 0.0000610\n2 0.0000916\n2 0.0000916 0.0000916\n1 2 2\n"
        "step 0 kind=2 name=\"Copy Sample\"\nstep 1 kind=2 name=\"Copy Sample\"\n"
        "step 2 kind=2 name=\"Copy Sample\" *\n");
    const ToolResult result = Run("new bits=32 channels=2; info");
    EXPECT_EQ(PartOfEachLine(result.out, " channels", " duration"),
              " channels=2 bits=32 frames=0 bytes=0\n");
    EXPECT_NE(Run("new bits=32; try save-as @/out.wav").out.find("Export"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "out.wav"));
}

TEST_F(BatchToolTest, CountsOpenDocumentsInTheOrderOfCreation) {
    WriteRamp("r.wav", 4);
    const ToolResult result =
        Run("new; open @/r.wav; new; activate 2; info; close; info; close; info; close; try info");
    EXPECT_EQ(PartOfEachLine(result.out, "", " rate"),
              "document 2 title=\"r.wav\"\ndocument 2 title=\"Sound2\"\n"
              "document 1 title=\"Sound1\"\nfailed: No document is open.\n");
}

// --- Questions

TEST_F(BatchToolTest, AnswersQuestionsFromTheQueue) {
    WriteRamp("r.wav", 2);
    const std::string warning = "question: 원본 포맷과 같지 않습니다... -> ";
    ExpectOutput(
        "open @/r.wav; select-all; copy\n"
        "new rate=8000 channels=2 bits=16; answer cancel; try paste\n"
        "answer ok left; paste; samples 0 1; answer yes cancel; try paste; paste; samples 0 1",
        warning + "cancel\nfailed: Cancelled.\n" +                          //
            warning + "ok\nquestion: Convert to stereo -> left\n0 1 0\n" +  //
            warning + "ok\nquestion: Convert to stereo -> cancel\nfailed: Cancelled.\n" + warning +
            "ok\nquestion: Convert to stereo -> both\n0 1 0\n");
}

TEST_F(BatchToolTest, PrintsMessagesOnOneLine) {
    WriteRamp("r.wav", 4);
    const ToolResult result = Run("open @/r.wav; pan value=3");
    EXPECT_EQ(result.out, "message: Can not use Panpot/Crossfade in Mono File.\n");
    EXPECT_EQ(result.errors, "-c:1: pan: failed: Can not use Panpot/Crossfade in Mono File.\n");
}

// --- Editing

TEST_F(BatchToolTest, EditsThroughTheClipboard) {
    WriteRamp("r.wav", 6);
    ExpectOutput(
        "open @/r.wav; select 1 3; cut; samples 0 9; cursor 99; paste; samples 3 9\n"
        "select 0 1; paste-replicate 2; samples 0 4; clipboard-save @/clip.bin\n"
        "undo; undo; undo; samples 0 9; redo; samples 0 9; history",
        "0 1\n1 4\n2 5\n3 6\n"
        "3 6\n4 2\n5 3\n"
        "0 2\n1 3\n2 2\n3 3\n"
        "0 1\n1 2\n2 3\n3 4\n4 5\n5 6\n"
        "0 1\n1 4\n2 5\n3 6\n"
        "step 0 kind=2 name=\"Source Sample\" *\nstep 1 kind=2 name=\"Copy Sample\"\n"
        "step 2 kind=2 name=\"Copy Sample\"\nstep 3 kind=2 name=\"Copy Sample\"\n");
    EXPECT_EQ(fs::file_size(folder_ / "clip.bin"), 48u);
    ExpectOutput(
        "clipboard-load @/clip.bin; open @/r.wav; mix clipboard=200 destination=-100\n"
        "samples 0 3; select 0 4; crossfade-mix clipboard-end=0 destination-end=100\n"
        "paste-new; info",
        "0 3\n1 4\n2 3\n"
        "document 2 title=\"Paste_1\" rate=8000 channels=1 bits=16 frames=4 bytes=8 "
        "duration=0.000500 modified=1 selection=0..0 cursor=0 markers=0\n");
}

TEST_F(BatchToolTest, EditsMarkersAsUndoSteps) {
    WriteRamp("r.wav", 6);
    ExpectOutput(
        "open @/r.wav; marker-add 2; marker-add 3 name=b length=2; marker-set 2 4\n"
        "try marker-set 9 1; marker-delete 1; try marker-delete 1; history; markers\n"
        "undo; markers; undo; undo; markers; redo; markers; select 0 1; cut; undo; markers",
        "failed: There is no such marker.\nfailed: There is no such marker.\n"
        "step 0 kind=2 name=\"Marker\"\nstep 1 kind=2 name=\"Marker\"\n"
        "step 2 kind=2 name=\"Marker\"\nstep 3 kind=2 name=\"Marker\" *\n"
        "marker 2 position=4 length=0 name=\"b\"\n"
        "marker 1 position=2 length=0 name=\"Marker 1\"\n"
        "marker 2 position=4 length=0 name=\"b\"\n"
        "marker 1 position=2 length=0 name=\"Marker 1\"\n"
        "marker 1 position=2 length=0 name=\"Marker 1\"\n"
        "marker 2 position=3 length=2 name=\"b\"\n"
        "marker 1 position=2 length=0 name=\"Marker 1\"\n"
        "marker 2 position=3 length=2 name=\"b\"\n");
}

TEST_F(BatchToolTest, SavesTheClipboardOnlyOverFiles) {
    WriteRamp("r.wav", 6);
    const fs::path pipe = folder_ / "pipe.wav";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ExpectOutput(
        "open @/r.wav; select-all; copy; try clipboard-save @/pipe.wav; try save @/pipe.wav",
        "failed: The file could not be written.\n"
        "message: File Open Failure.\nfailed: File Open Failure.\n");
    EXPECT_TRUE(fs::is_fifo(pipe));
}

// --- Effects

TEST_F(BatchToolTest, CrossfadesLinearlyUnlessToldNot) {
    WriteRamp("r.wav", 8);
    const auto crossfaded = [this](const std::string& word) {
        return Run(
            "open @/r.wav; convert-channels 2; volume percent=300; crossfade from=0 "
            "to=1000" +
            word + "; samples 0 8");
    };
    const ToolResult linear = crossfaded("");
    EXPECT_EQ(linear.status, 0) << linear.errors;
    EXPECT_EQ(crossfaded(" nonlinear=off").out, linear.out);
    EXPECT_NE(crossfaded(" nonlinear=on").out, linear.out);
}

TEST_F(BatchToolTest, AppliesAndPreviewsEffects) {
    WriteRamp("r.wav", 4);
    ExpectOutput(
        "open @/r.wav; select 1 3; volume percent=300; samples 0 9; history\n"
        "convert-channels 2; preview volume percent=200; samples 1 1\n"
        "preview-save @/p.wav; preview-new; info; samples 0 9; open @/p.wav; samples 0 1",
        "0 1\n1 6\n2 9\n3 4\nstep 0 kind=2 name=\"Copy Sample\" *\n"
        "1 6 6\n"
        "document 2 title=\"Volume_1\" rate=8000 channels=2 bits=16 frames=2 bytes=8 "
        "duration=0.000250 modified=1 selection=0..0 cursor=0 markers=0\n"
        "0 12 12\n1 18 18\n0 12 12\n");
    WriteRamp("loud.wav", 20000);
    ExpectOutput(
        "open @/loud.wav; select 19998 20000; volume percent=300; samples 19999 1; undo\n"
        "preview volume percent=300 hold=on; preview-new; samples 0 1; activate 1\n"
        "volume percent=300 hold=on; samples 19999 1; try preview-save @/p.wav",
        "19999 -5536\n0 32767 32767\n19999 32767\nfailed: There is no preview sound.\n");
    // The right channel takes the left one's dynamics unless it has its own.
    ExpectOutput(
        "open @/r.wav; convert-channels 2; dynamics below=0.5; samples 3 1\n"
        "dynamics below=0.5 below-right=1; samples 3 1",
        "3 8 8\n3 16 8\n");
}

TEST_F(BatchToolTest, TakesAListOfGainsInItsOrder) {
    WriteRamp("r.wav", 2000);
    std::set<std::string> heard;
    for (const char* gains : {"0,0,0,0,0,0,0", "40,0,0,0,0,0,0", "0,0,0,0,0,0,40"}) {
        const ToolResult result = Run(std::string("open @/r.wav; preview equalizer gains=") +
                                      gains + "; preview-new; samples 0 500");
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_TRUE(heard.insert(result.out).second) << gains;
    }
    for (const char* gains : {"1,2,3,4,5,6", "1,2,3,4,5,6,7,", "1,2,3,,5,6,7", "41,2,3,4,5,6,7"})
        EXPECT_EQ(Run(std::string("new; equalizer gains=") + gains).status, 2) << gains;
}

TEST_F(BatchToolTest, PlacesSoundsInSpace) {
    WriteRamp("r.wav", 4);
    const ToolResult result =
        Run("open @/r.wav; preview moving 1 0 0 0 1 0 -1 0 0; preview-new; info; activate 1\n"
            "positional 1 0 0; info");
    EXPECT_EQ(result.status, 0) << result.errors;
    const std::string format = " rate=8000 channels=2 bits=16 frames=4\n";
    EXPECT_EQ(PartOfEachLine(result.out, "title", " bytes"),
              "title=\"User_Sound_1\"" + format + "title=\"r.wav\"" + format);
}

// --- The view

TEST_F(BatchToolTest, ShowsTheView) {
    WriteRamp("r.wav", 2000);
    Write("Display.ini", "[__SOUND_DISPLAY_ITEMS]\nVERTICAL RULER=1\nHORIZONTAL RULER=1\n");
    ExpectOutput(
        "open @/r.wav; view; zoom-range 500 1500; scroll-to 9999; view 340 180\n"
        "zoom-time-full; zoom-level-in; view; select 500 1500; zoom-selection; zoom-time-out; "
        "view\n"
        "zoom-range 0 500; view",
        "view width=640 height=320 waveform=0,0,620,268 h-max=620 h-page=621 h-position=0 "
        "v-max=268 v-page=269 v-position=0 ratio=3 time-percent=100.000 level-percent=100.000\n"
        "view width=340 height=180 waveform=0,0,320,128 h-max=640 h-page=320 h-position=320 "
        "v-max=128 v-page=129 v-position=0 ratio=3 time-percent=200.000 level-percent=100.000\n"
        "view width=340 height=180 waveform=0,0,320,128 h-max=2000 h-page=320 h-position=0 "
        "v-max=192 v-page=129 v-position=32 ratio=1 time-percent=625.000 level-percent=150.000\n"
        "view width=340 height=180 waveform=0,0,320,128 h-max=320 h-page=320 h-position=0 "
        "v-max=192 v-page=129 v-position=32 ratio=6 time-percent=100.000 level-percent=150.000\n"
        "view width=340 height=180 waveform=0,0,320,128 h-max=1280 h-page=320 h-position=0 "
        "v-max=192 v-page=129 v-position=32 ratio=1 time-percent=400.000 level-percent=150.000\n");
}

TEST_F(BatchToolTest, AViewDraggedBackAndForthKeepsItsZoom) {
    WriteRamp("r.wav", 2000);
    Write("Display.ini", "[__SOUND_DISPLAY_ITEMS]\nVERTICAL RULER=1\nHORIZONTAL RULER=1\n");
    std::string script = "open @/r.wav; convert-channels 2; view 640 452; zoom-level-in";
    std::string expected;
    for (int step = -200; step <= 200; ++step) {
        const int height = 252 + std::abs(step);
        script += "; view 640 " + std::to_string(height);
        expected += "v-max=" + std::to_string(300 * (height - 52) / 400) + '\n';
    }
    const ToolResult result = Run(script);
    EXPECT_EQ(PartOfEachLine(result.out, "v-max", " v-page"), "v-max=200\n" + expected);
}

TEST_F(BatchToolTest, MovesTheCursorByPixels) {
    WriteRamp("r.wav", 2000);
    Write("Display.ini", "[__SOUND_DISPLAY_ITEMS]\nVERTICAL RULER=1\n");
    const ToolResult result = Run(
        "open @/r.wav; zoom-time-full; cursor-right 10; info; cursor-left 4; info; cursor-left 9\n"
        "info; select 50 90; cursor 60; cursor-left 30 extend=on; info; cursor-end; info");
    EXPECT_EQ(PartOfEachLine(result.out, "selection=", " markers"),
              "selection=10..10 cursor=10\nselection=6..6 cursor=6\nselection=1..1 cursor=1\n"
              "selection=30..90 cursor=30\nselection=0..0 cursor=2000\n");
}

TEST_F(BatchToolTest, WorksBetweenTheEndsOfASelectionWhoseStartHasPassedItsEnd) {
    WriteRamp("r.wav", 2000);
    const std::string select =
        "open @/r.wav; zoom-time-full; select 100 100; cursor 100; cursor-right 2 extend=on\n";
    ExpectOutput(select + "volume percent=0; samples 99 4", "99 100\n100 0\n101 0\n102 103\n");
    ExpectOutput(select + "cut; samples 99 2", "99 100\n100 103\n");
    EXPECT_EQ(PartOfEachLine(Run(select + "info").out, "selection=", " markers"),
              "selection=102..100 cursor=102\n");
}

TEST_F(BatchToolTest, PrintsTheEnvelope) {
    WriteRamp("r.wav", 4);
    ExpectOutput("open @/r.wav; view 24 80; zoom-default; volume percent=0; select 1 3; envelope",
                 "view width=24 height=80 waveform=0,0,24,48 h-max=0 h-page=1 h-position=0 "
                 "v-max=48 v-page=49 v-position=0 ratio=0 time-percent=0.000 "
                 "level-percent=100.000\n"
                 "0 24 24 normal\n1 24 24 selected\n2 24 24 selected\n3 24 24 normal\n");
}

}  // namespace
}  // namespace sonavel::batch
