// Decoders that crash, hang, flood or lie: each costs a message, and neither time nor memory beyond
// what it was given, nor a process, nor a descriptor.
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "codec_fixture.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class HostileChildTest : public CodecTest {
  protected:
    // A child that is not hung may need long to say something, on a busy machine.
    static CodecSetup Fake(std::chrono::milliseconds silence = 60s) {
        CodecSetup setup;
        setup.programs.helper = FAKE_CODEC_PROGRAM;
        setup.limits.silence = silence;
        setup.limits.baseSeconds = 30;
        return setup;
    }
    std::filesystem::path Wrong(const std::string& how) {
        WriteFileBytes(folder / "file", BytesOf(how + "\n"));
        return folder / "file";
    }
    Result<DecodedSound> Decode(const std::string& how, const CodecSetup& setup = Fake()) {
        sink = CollectingSink();
        sink.mostBytes = std::size_t{4} << 20;
        return ChildCodecs(setup).Decode(Wrong(how), sink);
    }
};

constexpr const char* kCrashed = "The decoder crashed on this file.";
constexpr const char* kTooLong = "Decoding the file took too long.";
constexpr const char* kMemory = "The decoder asked for too much memory.";
constexpr const char* kNonsense = "The decoder's answer makes no sense.";

TEST_F(HostileChildTest, EachFaultCostsAMessageOnly) {
    const struct {
        const char* how;
        std::string_view text;
    } cases[] = {{"silent exit", kNonsense},
                 {"crash", kCrashed},
                 {"killed", kMemory},
                 {"hang", kTooLong},
                 {"hang after head", kTooLong},
                 {"exit after head", kNonsense},
                 {"exit in a record", kNonsense},
                 {"compute forever", kTooLong},
                 {"no greeting", kNonsense},
                 {"another version", kNonsense},
                 {"no description", kNonsense},
                 {"frames first", kNonsense},
                 {"two descriptions", kNonsense},
                 {"unknown record", kNonsense},
                 {"long record", kNonsense},
                 {"torn frame", kNonsense},
                 {"empty frames forever", kNonsense},
                 {"more frames than stated", kNonsense},
                 {"another count at the end", kNonsense},
                 {"flood of frames", "That is enough."},
                 {"flood of tags", kNonsense},
                 {"flood of small tags", kNonsense},
                 {"flood of chapters", kNonsense},
                 {"tag behind frames", kNonsense},
                 {"flood of errors", kTooLong},
                 {"no memory", kMemory},
                 {"unknown format", "The format of the file is not known."}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.how);
        const auto began = Clock::now();
        const auto decoded = Decode(row.how, row.text == kTooLong ? Fake(300ms) : Fake());
        EXPECT_FALSE(decoded);
        EXPECT_EQ(decoded.Reason(), row.text);
        EXPECT_LT(Clock::now() - began, 20s);
        EXPECT_LE(sink.begins, 1);
    }
#if !defined(__SANITIZE_ADDRESS__)  // which keeps what was freed
    rusage used;
    getrusage(RUSAGE_SELF, &used);
    EXPECT_LT(used.ru_maxrss, 400'000) << "KiB";
#endif
}

// What was said is valid however the program then ends.
TEST_F(HostileChildTest, AnEndIsAnEnd) {
    for (const char* how : {"good", "hang after end"}) {
        const auto decoded = Decode(how, Fake(2s));
        ASSERT_TRUE(decoded) << decoded.Reason();
        EXPECT_EQ(decoded->frames, 2u);
        EXPECT_EQ(sink.bytes, FileBytes(8));
    }
}

TEST_F(HostileChildTest, TheLimitOfComputingTimeEndsIt) {
    CodecSetup setup = Fake();
    setup.limits.silence = 60s;
    setup.limits.baseSeconds = 1;
    const auto decoded = Decode("compute forever", setup);
    EXPECT_EQ(decoded.Reason(), kTooLong);
}

// Also while the child says nothing, long before it would be taken for hung.
TEST_F(HostileChildTest, CancelEndsItAtOnce) {
    CodecSetup setup = Fake();
    setup.limits.silence = 60s;
    for (const char* how : {"hang", "hang after head", "flood of frames", "flood of errors"}) {
        SCOPED_TRACE(how);
        CollectingSink cancelling;
        cancelling.mostWatches = 3;
        const auto began = Clock::now();
        const auto decoded = ChildCodecs(setup).Decode(Wrong(how), cancelling);
        EXPECT_TRUE(decoded.Ended().IsCancelled());
        EXPECT_LT(Clock::now() - began, 5s);
    }
}

TEST_F(HostileChildTest, ASinkMayRefuse) {
    sink.begin = Failed("Too many channels.");
    const auto decoded = ChildCodecs(Fake()).Decode(Wrong("flood of frames"), sink);
    EXPECT_EQ(decoded.Reason(), "Too many channels.");
    EXPECT_TRUE(sink.bytes.empty());
}

TEST_F(HostileChildTest, AnEncoderThatCrashesLeavesTheOldFile) {
    WriteFileBytes(folder / "old", BytesOf("old"));
    EncodeRequest request;
    request.rate = 8000;
    request.channels = 1;
    request.frames = 1 << 20;
    BytesSource source(FileBytes(2 << 20));
    const Outcome outcome = ChildCodecs(Fake()).Encode(folder / "old", request, source);
    EXPECT_TRUE(outcome.IsFailed());
    EXPECT_EQ(ReadFileBytes(folder / "old"), BytesOf("old"));
    EXPECT_EQ(folder.FileCount(), 1u);
}

TEST_F(HostileChildTest, SaysWhatIsMissing) {
    const CodecSetup none;
    const auto textFor = [&](const CodecSetup& setup, const char* name, const FileBytes& bytes) {
        WriteFileBytes(folder / name, bytes);
        return ChildCodecs(setup).Decode(folder / name, sink).Reason();
    };
    CodecSetup helperAlone = BuiltPrograms();
    helperAlone.programs.ffmpeg.clear();
    helperAlone.programs.ffprobe.clear();
    const FileBytes m4a = FileBytes{0, 0, 0, 32} + BytesOf("ftypM4A ") + FileBytes(64);
    EXPECT_EQ(textFor(helperAlone, "a", m4a),
              "Reading M4A files needs the program ffmpeg, which is not installed.");
    EXPECT_EQ(textFor(helperAlone, "call.g722", FileBytes(100)),
              "Reading G.722 files needs the program ffmpeg, which is not installed.");
    EXPECT_EQ(textFor(helperAlone, "a.txt", BytesOf("Hello, this is a letter.")),
              "The format of the file is not known.");
    EXPECT_EQ(textFor(none, "a.flac", BytesOf("fLaC")),
              "Reading this file needs the program sonavel-codec, which is not installed.");
    EXPECT_FALSE(ChildCodecs(none).CanDecodeWithFfmpeg());
}

TEST_F(HostileChildTest, SaysWhyAPathCannotBeRead) {
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(codecs.Decode(folder / "none", sink).Reason(), "There is no such file.");
    EXPECT_EQ(codecs.Decode(folder / "folder", sink).Reason(),
              "This is not a file that holds sound.");
    EXPECT_EQ(codecs.Decode(folder / "pipe", sink).Reason(),
              "This is not a file that holds sound.");
    if (geteuid() == 0) return;  // who may read everything
    WriteFileBytes(folder / "closed", BytesOf("x"));
    std::filesystem::permissions(folder / "closed", std::filesystem::perms::none);
    EXPECT_EQ(codecs.Decode(folder / "closed", sink).Reason(), "The file may not be read.");
}

// The decoder of an editor that is gone does not go on.
TEST_F(HostileChildTest, DiesWithTheEditor) {
    WriteFileBytes(folder / "long.wav", [] {
        WavParts parts;
        parts.data = FileBytes(std::size_t{8} << 20);
        return WavBytes(parts);
    }());
    const pid_t editor = fork();
    if (editor == 0) {
        class Stuck : public CollectingSink {
            Outcome Take(std::span<const std::uint8_t>) override {
                for (;;) pause();
            }
        } stuck;
        (void)ChildCodecs(BuiltPrograms()).Decode(folder / "long.wav", stuck);
        _exit(0);
    }
    const std::string children =
        "/proc/" + std::to_string(editor) + "/task/" + std::to_string(editor) + "/children";
    std::string decoder;
    for (int i = 0; i < 500 && decoder.empty(); ++i) {
        std::this_thread::sleep_for(10ms);
        std::ifstream(children) >> decoder;
    }
    ASSERT_FALSE(decoder.empty());
    std::this_thread::sleep_for(50ms);  // until it has asked to die with its parent
    kill(editor, SIGKILL);
    waitpid(editor, nullptr, 0);
    const auto isThere = [&] {
        std::string line;
        std::getline(std::ifstream("/proc/" + decoder + "/stat"), line);
        return !line.empty() && line.find(") Z") == std::string::npos;
    };
    for (int i = 0; i < 500 && isThere(); ++i) std::this_thread::sleep_for(10ms);
    EXPECT_FALSE(isThere());
}

}  // namespace
}  // namespace sonavel
