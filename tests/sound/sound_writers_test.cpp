// What the writers of all kinds of files have in common.
#include <sys/resource.h>

#include <csignal>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "support/open_files.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr FileAction kWriters[] = {SaveWav, SaveAiff, SaveAu};

class SoundWritersTest : public WaveTest {
  protected:
    void SetUp() override {
        WriteFileBytes(target, old);
        Fill(1, 16, 8000, Pattern(1 << 20));
        wave.SetModified(true);
    }
    void ExpectOldFileWhole() {
        EXPECT_EQ(ReadFileBytes(target), old);
        EXPECT_EQ(folder.FileCount(), 1u);
        EXPECT_TRUE(wave.GetModified());
    }

    const FileBytes old = BytesOf("the old file");
    const fs::path target = folder / "sound.wav";
};

TEST_F(SoundWritersTest, TargetsThatCannotBeFilesFailToOpen) {
    for (const FileAction write : kWriters) {
        for (const fs::path& path :
             {folder.Path(), folder / "no folder" / "a.wav", fs::path("/dev/full"), fs::path()}) {
            prompts.messages.clear();
            EXPECT_FALSE(write(path, wave)) << path;
            EXPECT_EQ(prompts.messages, std::vector<std::string>{"File Open Failure."});
        }
    }
    ExpectOldFileWhole();
}

TEST_F(SoundWritersTest, ACancelLeavesTheOldFileWhole) {
    Fill(1, 8, 8000, Pattern(1 << 20));
    wave.SetModified(true);
    for (const FileAction write : kWriters) {
        progress.cancelAtPoll = progress.polls;
        EXPECT_FALSE(write(target, wave));
        ExpectOldFileWhole();
    }
    EXPECT_EQ(progress.openWindows, 0);
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(SoundWritersTest, AFullDiskLeavesTheOldFileWhole) {
    // A limit on the size of files fails writes half-way, as a full disk does.
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit small = limit;
    for (const rlim_t size : {rlim_t{0}, rlim_t{20}, rlim_t{10000}}) {
        small.rlim_cur = size;
        for (const FileAction write : kWriters) {
            prompts.messages.clear();
            progress.positions.clear();
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
            const bool written = write(target, wave);
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
            EXPECT_FALSE(written);
            EXPECT_EQ(prompts.messages, std::vector<std::string>{"Write Data Failure."});
            if (write == SaveWav && size > 0) {
                EXPECT_EQ(progress.positions, std::vector<int>(size > 44, 100));
            }
            ExpectOldFileWhole();
        }
    }
    std::signal(SIGXFSZ, ignored);
}

TEST_F(SoundWritersTest, NoFileStaysOpen) {
    const FileAction readers[] = {OpenWav, OpenAiff, OpenAu};
    const std::size_t before = OpenFileCount();
    for (const FileAction write : kWriters) write(folder / "no folder" / "a", wave);
    for (std::size_t kind = 0; kind < std::size(kWriters); ++kind) {
        EXPECT_TRUE(kWriters[kind](target, wave));
        for (const FileAction read : readers) read(target, wave);  // one of which succeeds
        wave.IsPCM(target);
    }
    EXPECT_EQ(OpenFileCount(), before);
}

}  // namespace
}  // namespace sonavel
