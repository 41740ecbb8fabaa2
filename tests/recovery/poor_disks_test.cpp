// Disks and folders on which unsaved work cannot be kept, or only late: edits go on all the same,
// and the person is told.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <future>

#include "document/document_fixture.h"
#include "recovery/replay.h"
#include "recovery/work_keeper.h"
#include "support/ordinary_user.h"

namespace sonavel::recovery {
namespace {

using testing::Bytes;
using testing::BytesOf;
using testing::MakeClip;
using testing::PatternBytes;

class PoorDisksTest : public testing::DocumentTest {
  protected:
    // Pastes that often, under a keeper of that folder, and what the keeper then says.
    std::string WordAfterEdits(const std::filesystem::path& records, int pastes) {
        WorkKeeper keeper(records, WorkKeeper::Keeping::kChanges);
        auto document = MakeDocument({1, 8}, PatternBytes(1000, 1));
        keeper.Watch(*document);
        const ClipRecord clip = MakeClip({1, 8}, PatternBytes(100'000, 2));
        for (int i = 0; i < pastes; ++i) EXPECT_TRUE(edit::Paste(*document, clip, {}));
        keeper.Finish();
        EXPECT_EQ(document->Sound().GetFrameCount(),
                  1000u + 100'000u * static_cast<unsigned>(pastes));
        keeper.TellFaults();
        std::string word = keeper.FaultText();
        keeper.Leave(*document);
        return word;
    }
};

TEST_F(PoorDisksTest, AFolderOfAnotherUserIsLeftAlone) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
    const auto records = folder_ / "records";
    std::filesystem::create_directory(records);
    OrdinaryUser::Give(records);
    EXPECT_NE(WordAfterEdits(records, 3).find("cannot be written"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(records));
}

TEST_F(PoorDisksTest, AFolderThatMayNotBeWrittenIsSaid) {
    const auto state = folder_ / "state";
    std::filesystem::create_directory(state);
    OrdinaryUser::Give(folder_.Path());
    OrdinaryUser::Give(state);
    const OrdinaryUser user;
    std::filesystem::permissions(
        state, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_NE(WordAfterEdits(state / "records", 3).find("cannot be written"), std::string::npos);
    std::filesystem::permissions(state, std::filesystem::perms::owner_all);
}

TEST_F(PoorDisksTest, AFullDiskIsSaidAndKeepsWhatItHas) {
    const auto disk = folder_ / "disk";
    std::filesystem::create_directory(disk);
    if (mount("none", disk.c_str(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "no disk of a size of its own can be had";
    const std::string word = WordAfterEdits(disk / "records", 30);
    EXPECT_NE(word.find("disk is full"), std::string::npos) << word;
    const std::vector<LeftWork> left = ListLeftWork(disk / "records");
    EXPECT_EQ(left.size(), 1u);
    if (!left.empty()) {
        EXPECT_GE(left[0].edits, 5u);
        EXPECT_LT(left[0].edits, 12u);
        auto document = MakeDocument();
        EXPECT_TRUE(ReplayInto(*document, left[0].folder));
        EXPECT_EQ(document->Sound().GetFrameCount(), left[0].frames);
    }
    EXPECT_EQ(umount2(disk.c_str(), MNT_DETACH), 0);
}

// The writing thread stands still until the edits are done: whoever waited for it would wait for
// ever.
TEST_F(PoorDisksTest, NoEditWaitsForASlowDisk) {
    JournalThread thread;
    std::promise<void> released;
    thread.Post([wait = released.get_future().share()] { wait.wait(); });
    auto budget = std::make_shared<DiskBudget>();
    budget->limitBytes = std::uint64_t{1} << 30;
    const auto records = folder_ / "records";
    std::filesystem::create_directory(records);
    const JournalHost host{thread, budget, [&] { return records / "work"; },
                           std::make_shared<FileClaims>(folder_ / "open"),
                           std::make_shared<SaveLog>(records)};
    auto document = MakeDocument({1, 8}, PatternBytes(1000, 1));
    Bytes expected;
    {
        DocumentJournal journal(*document, host);
        // Large enough to be lent, and changed again at once: moved, written over, removed.
        constexpr std::uint32_t kClip = 5'000'000;
        for (unsigned seed = 2; seed < 6; ++seed)
            ASSERT_TRUE(edit::Paste(*document, MakeClip({1, 8}, PatternBytes(kClip, seed)),
                                    {0, 0, (seed - 2) * 1000}));
        const ClipRecord small = MakeClip({1, 8}, PatternBytes(5000, 9));
        ASSERT_TRUE(edit::PasteBlockOverwrite(*document, small, {kClip, 4 * kClip, 0}));
        ASSERT_TRUE(edit::Delete(*document, {3000, 2 * kClip, 0}));
        ASSERT_TRUE(edit::Mix(*document, small, {100, kClip, 0}, {0.5, 0.5}));
        ASSERT_TRUE(document->Undo() && document->Undo() && document->Redo());
        expected = BytesOf(document->Sound());
        released.set_value();
        ASSERT_TRUE(thread.Finish(std::chrono::seconds(60)));
        EXPECT_EQ(journal.Fault(), JournalFault::kNone);
        auto back = MakeDocument();
        ASSERT_TRUE(ReplayInto(*back, records / "work"));
        EXPECT_EQ(BytesOf(back->Sound()), expected);
    }
}

}  // namespace
}  // namespace sonavel::recovery
