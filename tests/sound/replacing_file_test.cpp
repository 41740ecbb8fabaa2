#include "sound/replacing_file.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "sound/aiff_file.h"
#include "sound/au_file.h"
#include "wave_fixture.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr FileAction kWriters[] = {SaveWav, WriteAiff, WriteAu};

class ReplacingFileTest : public WaveTest {
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

TEST_F(ReplacingFileTest, ReplacesOnlyWhenCommitted) {
    {
        ReplacingFile file;
        ASSERT_TRUE(file.Open(target));
        ASSERT_TRUE(file.Write(BytesOf("new")));
        EXPECT_EQ(ReadFileBytes(target), old);
    }
    ExpectOldFileWhole();
    ReplacingFile file;
    ASSERT_TRUE(file.Open(target));
    ASSERT_TRUE(file.Write(BytesOf("ne")));
    ASSERT_TRUE(file.Write(BytesOf("w")));
    ASSERT_TRUE(file.Commit());
    EXPECT_EQ(ReadFileBytes(target), BytesOf("new"));
    EXPECT_EQ(folder.FileCount(), 1u);
}

TEST_F(ReplacingFileTest, KeepsPermissionsAndGivesNewFilesTheUsualOnes) {
    for (const mode_t mode : {0600u, 0664u, 0755u}) {
        ASSERT_EQ(chmod(target.c_str(), mode), 0);
        ASSERT_TRUE(SaveWav(target, wave));
        EXPECT_EQ(static_cast<mode_t>(fs::status(target).permissions()), mode);
    }
    const mode_t mask = umask(027);
    const bool saved = SaveWav(folder / "new.wav", wave);
    umask(mask);
    ASSERT_TRUE(saved);
    EXPECT_EQ(static_cast<unsigned>(fs::status(folder / "new.wav").permissions()), 0640u);
}

TEST_F(ReplacingFileTest, FollowsSymbolicLinksToTheirFile) {
    fs::create_directory(folder / "links");
    fs::create_symlink("../sound.wav", folder / "links" / "inner");
    fs::create_symlink(folder / "links" / "inner", folder / "outer.wav");
    fs::create_symlink("fresh.wav", folder / "dangling.wav");
    ASSERT_TRUE(SaveWav(folder / "outer.wav", wave));
    EXPECT_EQ(fs::file_size(target), 44u + (1 << 20));
    EXPECT_TRUE(fs::is_symlink(folder / "outer.wav"));
    EXPECT_TRUE(fs::is_symlink(folder / "links" / "inner"));
    ASSERT_TRUE(SaveWav(folder / "dangling.wav", wave));
    EXPECT_TRUE(fs::is_symlink(folder / "dangling.wav"));
    EXPECT_TRUE(fs::is_regular_file(folder / "fresh.wav"));
    fs::create_symlink("loop.wav", folder / "loop.wav");
    EXPECT_FALSE(SaveWav(folder / "loop.wav", wave));
}

TEST_F(ReplacingFileTest, TargetsThatCannotBeFilesFailToOpen) {
    const fs::path longName = folder / std::string(256, 'n');
    for (const FileAction write : kWriters) {
        for (const fs::path& path :
             {folder.Path(), folder / "no folder" / "a.wav", fs::path("/dev/full"), fs::path()}) {
            prompts.messages.clear();
            EXPECT_FALSE(write(path, wave)) << path;
            EXPECT_EQ(prompts.messages, std::vector<std::string>{"File Open Failure."});
        }
    }
    EXPECT_FALSE(SaveWav(longName, wave));
    ExpectOldFileWhole();
}

TEST_F(ReplacingFileTest, AFullDiskLeavesTheOldFileWhole) {
    // A limit on the size of files fails writes half-way, as a full disk does.
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit small = limit;
    for (const rlim_t size : {rlim_t{0}, rlim_t{20}, rlim_t{10000}}) {
        small.rlim_cur = size;
        for (const FileAction write : kWriters) {
            prompts.messages.clear();
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
            const bool written = write(target, wave);
            ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
            EXPECT_FALSE(written);
            EXPECT_EQ(prompts.messages, std::vector<std::string>{"Write Data Failure."});
            ExpectOldFileWhole();
        }
    }
    std::signal(SIGXFSZ, ignored);
}

TEST_F(ReplacingFileTest, AKilledProcessLeavesTheOldFileWhole) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ReplacingFile file;
        const bool written = file.Open(target) && file.Write(Pattern(100000));
        _exit(written ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadFileBytes(target), old);
    // What the dead process left behind does not stand in the way.
    EXPECT_TRUE(SaveWav(target, wave));
}

// Runs as an ordinary user, whom permissions bind.
TEST_F(ReplacingFileTest, ReadOnlyFoldersAndFilesAreLeftAlone) {
    const bool root = geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (root) {
        ASSERT_EQ(chown(target.c_str(), kNobody, kNobody), 0);
        ASSERT_EQ(chown(folder.Path().c_str(), kNobody, kNobody), 0);
        ASSERT_EQ(seteuid(kNobody), 0);
    }
    ASSERT_EQ(chmod(folder.Path().c_str(), 0500), 0);
    EXPECT_FALSE(SaveWav(target, wave));
    ASSERT_EQ(chmod(folder.Path().c_str(), 0700), 0);
    ASSERT_EQ(chmod(target.c_str(), 0400), 0);
    EXPECT_FALSE(SaveWav(target, wave));
    EXPECT_EQ(prompts.messages, std::vector<std::string>(2, "File Open Failure."));
    ExpectOldFileWhole();
    if (root) {
        ASSERT_EQ(seteuid(0), 0);
    }
}

}  // namespace
}  // namespace sonavel
