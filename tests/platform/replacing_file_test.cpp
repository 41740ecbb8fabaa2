#include "platform/replacing_file.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>

#include <cerrno>
#include <csignal>
#include <cstddef>

#include "platform/profile_file.h"
#include "platform/small_file.h"
#include "support/open_files.h"
#include "support/ordinary_user.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr char kAccessList[] = "system.posix_acl_access";
constexpr char kDefaultList[] = "system.posix_acl_default";

// What getfacl shows as user::rw-, user:1234:<named>, group::---, mask::<mask>, other::---.
std::string AccessListBytes(unsigned named, unsigned mask) {
    std::string bytes{2, 0, 0, 0};
    const auto add = [&bytes](unsigned tag, unsigned permissions, std::uint32_t id) {
        for (const unsigned value :
             {tag, tag >> 8, permissions, 0u, id, id >> 8, id >> 16, id >> 24})
            bytes += static_cast<char>(value);
    };
    constexpr std::uint32_t kNobodys = 0xFFFFFFFF;
    add(1, 6, kNobodys);
    add(2, named, 1234);
    add(4, 0, kNobodys);
    add(16, mask, kNobodys);
    add(32, 0, kNobodys);
    return bytes;
}

bool SetAttribute(const fs::path& path, const char* name, const std::string& value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

std::string Attribute(const fs::path& path, const char* name) {
    std::string value(1000, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    return size < 0 ? "(none)" : value.substr(0, static_cast<std::size_t>(size));
}

struct stat StatusOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

unsigned ModeOf(const fs::path& path) {
    return StatusOf(path).st_mode & 07777;
}

// While it lives no file can become longer, as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit small = before_;
        small.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

  private:
    rlimit before_;
    void (*signal_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class ReplacingFileTest : public ::testing::Test {
  protected:
    void SetUp() override { WriteFileBytes(target, old); }
    void ExpectOldFileWhole() {
        EXPECT_EQ(ReadFileBytes(target), old);
        EXPECT_EQ(folder.FileCount(), 1u);
    }
    // The only file in the folder beside the target and `others` more.
    fs::path Temporary(std::size_t others = 0) const {
        EXPECT_EQ(folder.FileCount(), 2 + others);
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            if (entry.path().filename().string().starts_with(".sonavel-")) return entry.path();
        return {};
    }

    const FileBytes old = BytesOf("the old file");
    TemporaryFolder folder;
    const fs::path target = folder / "target";
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

TEST_F(ReplacingFileTest, NobodyElseReadsTheTemporaryFile) {
    ASSERT_EQ(chmod(target.c_str(), 0666), 0);
    for (const fs::path& path : {target, folder / "new"}) {
        ReplacingFile file;
        ASSERT_TRUE(file.Open(path));
        EXPECT_EQ(ModeOf(Temporary()), 0600u);
        ASSERT_TRUE(file.Write(BytesOf("secret")));
        EXPECT_EQ(ModeOf(Temporary()), 0600u);
    }
}

TEST_F(ReplacingFileTest, KeepsPermissionsAndGivesNewFilesTheUsualOnes) {
    for (const mode_t mode : {0600u, 0664u, 0755u}) {
        ASSERT_EQ(chmod(target.c_str(), mode), 0);
        ASSERT_TRUE(ReplaceFile(target, "new"));
        EXPECT_EQ(ModeOf(target), mode);
    }
    const mode_t mask = umask(027);
    const bool saved = ReplaceFile(folder / "new", "new");
    umask(mask);
    ASSERT_TRUE(saved);
    EXPECT_EQ(ModeOf(folder / "new"), 0640u);
    EXPECT_EQ(folder.FileCount(), 2u);
}

TEST_F(ReplacingFileTest, KeepsAccessListAndExtendedAttributes) {
    if (!SetAttribute(target, kAccessList, AccessListBytes(6, 6)) ||
        !SetAttribute(target, "user.origin", "a far place"))
        GTEST_SKIP() << "the file system has no access lists or no attributes";
    ASSERT_TRUE(SetAttribute(target, "user.empty", ""));
    ASSERT_TRUE(ReplaceFile(target, "new"));
    EXPECT_EQ(Attribute(target, kAccessList), AccessListBytes(6, 6));
    EXPECT_EQ(Attribute(target, "user.origin"), "a far place");
    EXPECT_EQ(Attribute(target, "user.empty"), "");
    EXPECT_EQ(ModeOf(target), 0660u);
}

TEST_F(ReplacingFileTest, TheListThatAFolderGivesGoesToNewFilesAlone) {
    ASSERT_EQ(chmod(target.c_str(), 0664), 0);
    if (!SetAttribute(folder.Path(), kDefaultList, AccessListBytes(7, 7)))
        GTEST_SKIP() << "the file system has no access lists";
    ASSERT_TRUE(ReplaceFile(target, "new"));
    EXPECT_EQ(Attribute(target, kAccessList), "(none)");
    EXPECT_EQ(ModeOf(target), 0664u);
    ASSERT_TRUE(ReplaceFile(folder / "new", "new"));
    EXPECT_EQ(Attribute(folder / "new", kAccessList), AccessListBytes(7, 6));
    EXPECT_EQ(ModeOf(folder / "new"), 0660u);
    // A list of the file's own takes the place of the one that its temporary got.
    ASSERT_TRUE(SetAttribute(target, kAccessList, AccessListBytes(4, 4)));
    ASSERT_TRUE(ReplaceFile(target, "newer"));
    EXPECT_EQ(Attribute(target, kAccessList), AccessListBytes(4, 4));
}

TEST_F(ReplacingFileTest, KeepsOwnerAndGroup) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may give files away";
    ASSERT_EQ(chown(target.c_str(), OrdinaryUser::kId, 1234), 0);
    ASSERT_EQ(chmod(target.c_str(), 04750), 0);
    ASSERT_TRUE(ReplaceFile(target, "new"));
    EXPECT_EQ(StatusOf(target).st_uid, OrdinaryUser::kId);
    EXPECT_EQ(StatusOf(target).st_gid, 1234u);
    EXPECT_EQ(ModeOf(target), 04750u);
}

TEST_F(ReplacingFileTest, WhereOwnerAndGroupCannotBeKeptAccessIsNotWidened) {
    if (geteuid() != 0) GTEST_SKIP() << "only root may take the part of another user";
    ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
    ASSERT_EQ(chmod(target.c_str(), 06666 & ~S_IROTH), 0);
    {
        const OrdinaryUser user;
        ASSERT_TRUE(ReplaceFile(target, "new"));
    }
    EXPECT_EQ(StatusOf(target).st_uid, OrdinaryUser::kId);
    EXPECT_EQ(ModeOf(target), 0622u);
}

TEST_F(ReplacingFileTest, FilesOfSeveralNamesAreRewrittenInPlace) {
    fs::create_hard_link(target, folder / "other name");
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    const ino_t file = StatusOf(target).st_ino;
    for (const std::size_t size : {300000u, 0u, 5u}) {
        const std::string bytes(size, 'n');
        ASSERT_TRUE(ReplaceFile(target, bytes));
        EXPECT_EQ(ReadFileBytes(target), BytesOf(bytes));
        EXPECT_EQ(ReadFileBytes(folder / "other name"), BytesOf(bytes));
        EXPECT_EQ(StatusOf(target).st_ino, file);
        EXPECT_EQ(ModeOf(target), 0640u);
        EXPECT_EQ(folder.FileCount(), 2u);
    }
}

TEST_F(ReplacingFileTest, AFullDiskCostsAFileOfSeveralNamesNothing) {
    fs::create_hard_link(target, folder / "other name");
    ReplacingFile file;
    ASSERT_TRUE(file.Open(target));
    ASSERT_TRUE(file.Write(FileBytes(50000, 'n')));
    {
        const FullDisk full(40000);
        EXPECT_FALSE(file.Commit());
    }
    EXPECT_EQ(ReadFileBytes(folder / "other name"), old);
}

TEST_F(ReplacingFileTest, ADiskThatFailsInTheMidstLeavesTheCompleteCopy) {
    // The room is there already, so that the failure comes later than the look at it.
    fs::resize_file(target, 50000);
    fs::create_hard_link(target, folder / "other name");
    {
        ReplacingFile file;
        ASSERT_TRUE(file.Open(target));
        ASSERT_TRUE(file.Write(FileBytes(50000, 'n')));
        const FullDisk full(20000);
        EXPECT_FALSE(file.Commit());
    }
    EXPECT_EQ(ReadFileBytes(Temporary(1)), FileBytes(50000, 'n'));
}

TEST_F(ReplacingFileTest, FollowsSymbolicLinksToTheirFile) {
    fs::create_directory(folder / "links");
    fs::create_symlink("../target", folder / "links" / "inner");
    fs::create_symlink(folder / "links" / "inner", folder / "outer");
    fs::create_symlink("fresh", folder / "dangling");
    ASSERT_TRUE(ReplaceFile(folder / "outer", "new"));
    EXPECT_EQ(ReadFileBytes(target), BytesOf("new"));
    EXPECT_TRUE(fs::is_symlink(folder / "outer"));
    EXPECT_TRUE(fs::is_symlink(folder / "links" / "inner"));
    ASSERT_TRUE(ReplaceFile(folder / "dangling", "new"));
    EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
    EXPECT_TRUE(fs::is_regular_file(folder / "fresh"));
    fs::create_symlink("loop", folder / "loop");
    EXPECT_FALSE(ReplaceFile(folder / "loop", "new"));
}

TEST_F(ReplacingFileTest, FollowsAtMostFortyLinks) {
    const auto link = [&](int number) { return folder / ("link" + std::to_string(number)); };
    fs::create_symlink("target", link(1));
    for (int i = 2; i <= 41; ++i) fs::create_symlink(link(i - 1), link(i));
    EXPECT_EQ(FollowLinks(link(40)), target);
    EXPECT_EQ(FollowLinks(link(41)), link(1));
    EXPECT_TRUE(ReplaceFile(link(40), "new"));
    EXPECT_FALSE(ReplaceFile(link(41), "newer"));
    EXPECT_EQ(ReadFileBytes(target), BytesOf("new"));
}

TEST_F(ReplacingFileTest, FailsWhenEveryTemporaryNameIsTaken) {
    const auto temporary = [&](int number) {
        return folder /
               (".sonavel-" + std::to_string(getpid()) + '-' + std::to_string(number) + ".tmp");
    };
    for (int i = 0; i < 1000; ++i) WriteFileBytes(temporary(i), {});
    EXPECT_FALSE(ReplaceFile(target, "new"));
    EXPECT_EQ(ReadFileBytes(target), old);
    fs::remove(temporary(999));
    fs::remove(temporary(998));
    EXPECT_TRUE(ReplaceFile(target, "new"));
    EXPECT_EQ(folder.FileCount(), 999u);
}

// From here on this process gets the error from every fallocate, as from a file system without it.
bool RefuseToAllocate(int error) {
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fallocate, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter{std::size(program), program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST_F(ReplacingFileTest, AFileSystemThatPromisesNoRoomDoesNotFailTheRewriting) {
    fs::create_hard_link(target, folder / "other name");
    constexpr int kNoFilter = 77;
    for (const auto& [error, saved] : {std::pair{EOPNOTSUPP, true}, {ENOSYS, true}, {EIO, false}}) {
        const std::string text = "new " + std::to_string(error);
        const FileBytes before = ReadFileBytes(target);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            _exit(!RefuseToAllocate(error) ? kNoFilter : ReplaceFile(target, text) ? 0 : 1);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        if (WEXITSTATUS(status) == kNoFilter) GTEST_SKIP() << "system calls cannot be filtered";
        EXPECT_EQ(status == 0, saved) << error;
        EXPECT_EQ(ReadFileBytes(folder / "other name"), saved ? BytesOf(text) : before);
        EXPECT_EQ(folder.FileCount(), 2u);
    }
}

TEST_F(ReplacingFileTest, WhatIsNoFileIsLeftAlone) {
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const fs::path& path : {pipe, fs::path("/dev/full"), folder.Path(), fs::path(),
                                 folder / "no folder" / "file", folder / std::string(256, 'n')})
        EXPECT_FALSE(ReplaceFile(path, "new")) << path;
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(folder.FileCount(), 2u);
}

TEST_F(ReplacingFileTest, SettingsThatCannotBeWrittenLeaveNothingBehind) {
    const std::string text = "[S]\nk=1\n";
    WriteFileBytes(target, BytesOf(text));
    {
        const FullDisk full(4);
        EXPECT_FALSE(ProfileFile(target).SetString("S", "k", "2"));
    }
    EXPECT_EQ(ReadFileBytes(target), BytesOf(text));
    EXPECT_EQ(folder.FileCount(), 1u);
}

TEST_F(ReplacingFileTest, NoFileStaysOpen) {
    fs::create_hard_link(target, folder / "other name");
    fs::create_symlink("loop", folder / "loop");
    const std::size_t before = OpenFileCount();
    for (const char* name : {"new", "target", "loop", "no folder/file"})
        ReplaceFile(folder / name, "new");
    ReplacingFile().Open(folder / "dropped");
    ProfileFile(folder / "Options.ini").SetString("S", "k", "v");
    ReadSmallFile(target, 100);
    EXPECT_EQ(OpenFileCount(), before);
}

TEST_F(ReplacingFileTest, AKilledProcessLeavesTheOldFileWhole) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ReplacingFile file;
        const bool written = file.Open(target) && file.Write(FileBytes(100000));
        _exit(written ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadFileBytes(target), old);
    // What the dead process left behind does not stand in the way.
    EXPECT_TRUE(ReplaceFile(target, "new"));
}

// Runs as an ordinary user, whom permissions bind.
TEST_F(ReplacingFileTest, ReadOnlyFoldersAndFilesAreLeftAlone) {
    OrdinaryUser::Give(target);
    OrdinaryUser::Give(folder.Path());
    const OrdinaryUser user;
    ASSERT_EQ(chmod(folder.Path().c_str(), 0500), 0);
    EXPECT_FALSE(ReplaceFile(target, "new"));
    ASSERT_EQ(chmod(folder.Path().c_str(), 0700), 0);
    ASSERT_EQ(chmod(target.c_str(), 0400), 0);
    EXPECT_FALSE(ReplaceFile(target, "new"));
    ExpectOldFileWhole();
}

}  // namespace
}  // namespace sonavel
