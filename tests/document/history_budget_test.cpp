// What becomes of undo steps that there is no memory for.
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <functional>

#include "document_fixture.h"
#include "support/address_space_limit.h"

namespace sonavel::testing {
namespace {

class HistoryBudgetTest : public DocumentTest {
  protected:
    std::filesystem::path Folder() const { return folder_ / "state" / "undo"; }
    // As many deletions of 100 bytes.
    std::unique_ptr<CSoundDoc> MakeEdited(unsigned deletions) {
        auto document = MakeDocument({1, 8}, PatternBytes(10000, 1));
        for (unsigned i = 0; i < deletions; ++i)
            EXPECT_TRUE(edit::Delete(*document, {i * 50, i * 50 + 100, 0}));
        return document;
    }
    static unsigned UndoAll(CSoundDoc& document) {
        unsigned undone = 0;
        while (document.Undo()) ++undone;
        return undone;
    }
};

TEST_F(HistoryBudgetTest, TheOldestStepsMoveToTheDiskAndComeBack) {
    auto document = MakeEdited(10);
    const Bytes after = BytesOf(document->Sound());
    UndoHistory& history = document->History();
    history.SetLimits({350, Folder()});
    EXPECT_EQ(history.MemoryBytes(), 300u);
    EXPECT_EQ(history.SpilledBytes(), 700u);
    for (const std::size_t spilled : {0u, 6u})
        EXPECT_FALSE(history.StepAt(spilled).records.front().IsInMemory());
    for (const std::size_t kept : {7u, 9u})
        EXPECT_TRUE(history.StepAt(kept).records.front().IsInMemory());
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(UndoAll(*document), 10u);
        EXPECT_EQ(BytesOf(document->Sound()), PatternBytes(10000, 1));
        EXPECT_EQ(history.SpilledBytes() + history.MemoryBytes(), 0u) << "all lies in the sound";
        while (document->Redo()) continue;
        EXPECT_EQ(BytesOf(document->Sound()), after);
    }
    EXPECT_EQ(history.SpilledBytes(), 700u);
    EXPECT_EQ(history.TakeGivenUpCount(), 0u);
}

TEST_F(HistoryBudgetTest, TheFileHasNoNameAndItsFolderIsThePersonsAlone) {
    auto document = MakeEdited(3);
    document->History().SetLimits({0, Folder()});
    EXPECT_EQ(document->History().SpilledBytes(), 300u);
    struct stat folder {};
    ASSERT_EQ(stat(Folder().c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777, 0700u);
    EXPECT_TRUE(std::filesystem::is_empty(Folder()));
}

TEST_F(HistoryBudgetTest, WithoutADiskTheOldestGoButNeverTheLastEditNorWhatCanBeRedone) {
    std::ofstream(folder_ / "file") << "no folder";
    const struct {
        const char* name;
        std::filesystem::path folder;
    } cases[] = {{"no folder", {}}, {"a file in its place", folder_ / "file"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto document = MakeEdited(5);
        ASSERT_TRUE(document->Undo());
        const Bytes fourth = BytesOf(document->Sound());
        ASSERT_TRUE(document->Redo());
        document->History().SetLimits({250, c.folder});
        EXPECT_EQ(document->History().TakeGivenUpCount(), 3u);
        document->History().SetLimits({0, c.folder});
        EXPECT_EQ(document->History().TakeGivenUpCount(), 1u);
        EXPECT_EQ(document->History().MemoryBytes(), 100u);
        EXPECT_EQ(UndoAll(*document), 1u);
        EXPECT_EQ(BytesOf(document->Sound()), fourth);
        EXPECT_TRUE(document->Redo());
        EXPECT_FALSE(document->Redo());
    }
}

// Above the size from which blocks are moved beside the calling thread.
TEST_F(HistoryBudgetTest, LargeStepsShowTheirProgressAndACancelLeavesAllAsItWas) {
    const Bytes before = PatternBytes(40u << 20, 1);
    auto document = MakeDocument({1, 8}, before);
    UndoHistory& history = document->History();
    history.SetLimits({1 << 20, Folder(), &progress_});
    const std::uint32_t frames = 20u << 20;

    progress_.cancelAtPoll = 0;
    EXPECT_TRUE(edit::Delete(*document, {0, frames, 0}).Ended().IsCancelled());
    EXPECT_EQ(BytesOf(document->Sound()), before);
    EXPECT_FALSE(document->GetModified() || document->CanUndo());

    progress_ = {};
    ASSERT_TRUE(edit::Delete(*document, {0, frames, 0}));
    EXPECT_EQ(progress_.titles, std::vector<std::string>{"Progress Undo"});
    EXPECT_GT(progress_.polls, 0);
    ASSERT_FALSE(progress_.positions.empty());
    EXPECT_GT(progress_.positions.back(), 50) << "the bar goes on with the bytes";
    EXPECT_EQ(history.SpilledBytes(), frames);
    const Bytes after = BytesOf(document->Sound());

    progress_.cancelAtPoll = progress_.polls;
    EXPECT_TRUE(document->Undo().IsCancelled());
    EXPECT_EQ(BytesOf(document->Sound()), after);
    EXPECT_TRUE(document->CanUndo() && !document->CanRedo() && !document->IsBeingChanged());
    progress_.cancelAtPoll.reset();
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), before);

    // What was read back to be undone lies in the sound's stead, beyond the budget, and moves
    // again.
    progress_.cancelAtPoll = progress_.polls;
    EXPECT_TRUE(document->Redo());
    EXPECT_EQ(history.MemoryBytes(), frames) << "its way to the disk was cancelled";
    EXPECT_EQ(history.TakeGivenUpCount(), 0u);
    EXPECT_EQ(progress_.openWindows, 0);
}

// Files may not grow beyond so many bytes; whoever tries is told instead of killed.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST_F(HistoryBudgetTest, OnAFullDiskTheOldestMakeRoomForTheOthers) {
    auto document = MakeEdited(4);
    ASSERT_TRUE(document->Undo());
    ASSERT_TRUE(document->Undo());
    const Bytes second = BytesOf(document->Sound());
    ASSERT_TRUE(document->Redo());
    ASSERT_TRUE(document->Redo());
    UndoHistory& history = document->History();
    {
        const FileSizeLimit limit(250);
        history.SetLimits({100, Folder()});
    }
    // Two fit the file, until the third needed their room.
    EXPECT_EQ(history.TakeGivenUpCount(), 2u);
    EXPECT_EQ(history.MemoryBytes(), 100u);
    EXPECT_EQ(history.SpilledBytes(), 100u);
    ASSERT_TRUE(document->Undo());
    ASSERT_TRUE(document->Undo());
    EXPECT_EQ(BytesOf(document->Sound()), second);
}

TEST_F(HistoryBudgetTest, TheStatusBarSaysWhenStepsWereGivenUp) {
    WriteOptions("SAVE UNDO REDO INFOMATION=1\nUNDO MEMORY=1\n");
    auto document = MakeDocument({1, 8}, PatternBytes(3 << 20, 1));
    const auto edit = [&] { ASSERT_TRUE(edit::Delete(*document, {0, 600'000, 0})); };
    edit();
    EXPECT_TRUE(prompts_.statusTexts.empty());
    edit();
    EXPECT_EQ(prompts_.statusTexts.size(), 1u);
    EXPECT_EQ(document->History().Count(), 1u);
    EXPECT_TRUE(document->Undo());
    EXPECT_FALSE(document->Undo());
}

TEST_F(HistoryBudgetTest, TheHostSaysWhatHoldsWithoutASetting) {
    const struct {
        const char* setting;
        std::uint64_t kept;  // in memory, of a step of 3 MB
    } cases[] = {{"", 0},
                 {"UNDO MEMORY=0\n", 0},
                 {"UNDO MEMORY=-5\n", 0},
                 {"UNDO MEMORY=2\n", 0},
                 {"UNDO MEMORY=3\n", 3 << 20}};
    for (const auto& c : cases) {
        WriteOptions(std::string("SAVE UNDO REDO INFOMATION=1\n") + c.setting);
        HostServices services = Services();
        services.undo = {1000, Folder()};
        CSoundDoc document(services);
        document.Sound().Adopt(MakeSound({1, 8}, PatternBytes(3 << 20, 1)));
        ASSERT_TRUE(edit::Delete(document, {0, 3 << 20, 0}));
        EXPECT_EQ(document.History().MemoryBytes(), c.kept) << c.setting;
        EXPECT_EQ(document.History().SpilledBytes(), (3 << 20) - c.kept) << c.setting;
    }
}

#ifndef __SANITIZE_ADDRESS__

TEST_F(HistoryBudgetTest, ASoundOfWhichThreeCopiesDoNotFitIsEditedAndTakenBack) {
    constexpr std::uint32_t kLong = 24 << 20;
    auto document = MakeDocument({1, 8}, PatternBytes(kLong, 1));
    document->History().SetLimits({64 << 20, Folder()});
    const auto clip = MakeClip({1, 8}, PatternBytes(1000, 2));
    const std::function<Outcome()> edits[] = {
        [&] {
            return edit::Mix(*document, clip, {0, kLong, 0}, {0.5, 0.5}).Ended();
        },
        [&] {
            return edit::Mix(*document, clip, {0, kLong, 0}, {0.5, 0.5}).Ended();
        },
        [&] {
            return edit::Delete(*document, {10, kLong - 10, 0}).Ended();
        }};
    std::vector<std::uint32_t> sums;
    const auto sum = [&] {
        std::uint32_t value = document->Sound().GetFrameCount();
        for (const std::uint8_t byte : document->Sound().Bytes()) value = value * 31 + byte;
        return value;
    };
    {
        // Room for the sound and one more of it.
        const AddressSpaceLimit limit(std::uint64_t{kLong} * 5 / 4);
        for (const auto& edit : edits) {
            sums.push_back(sum());
            ASSERT_TRUE(edit());
        }
        while (!sums.empty()) {
            ASSERT_TRUE(document->Undo()) << sums.size();
            EXPECT_EQ(sum(), sums.back());
            sums.pop_back();
        }
    }
    EXPECT_TRUE(prompts_.questions.empty());
    EXPECT_EQ(document->History().TakeGivenUpCount(), 0u);
}

#endif

}  // namespace
}  // namespace sonavel::testing
