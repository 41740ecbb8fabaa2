// Texts, filters and lists of the application, without a window.
#include <gtest/gtest.h>

#include <QSettings>

#include "app/recent_files.h"
#include "app/recent_folders.h"
#include "app/save_as_dialog.h"
#include "app/system_texts.h"
#include "platform/qt/qt_progress.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

constexpr const char* kSaveFilter =
    "Audio Files (*.wav;*.au;*.aiff) |*.wav;*.au;*.aiff;*.mp3|Wave File (*.wav)|*.wav|Next/Sun "
    "audio file (*.au)|*.au|Apple audio files (*.aiff)|*.aiff|All Files (*.*)|*.*||";

TEST(AboutTextsTest, MemoryHasItsRestInBytesBehindTheDot) {
    const struct {
        std::uint64_t bytes;
        const char* text;
    } cases[] = {
        {64ull << 20, "64.  0 MBytes"},
        {(64ull << 20) + 7, "64.  7 MBytes"},
        {(128ull << 20) + 65536, "128.65536 MBytes"},
        {(16384ull << 20) + 1048575, "16384.1048575 MBytes"},
    };
    for (const auto& c : cases) EXPECT_EQ(PhysicalMemoryText(c.bytes), c.text);
}

TEST(AboutTextsTest, DiskSpaceIsAThirtyTwoBitProduct) {
    EXPECT_EQ(DiskSpaceText('C', {1000, 8, 512}), " C: Available Disk Space 4000 KBytes");
    EXPECT_EQ(DiskSpaceText('D', {1u << 20, 8, 512}), " D: Available Disk Space 0 KBytes");
    EXPECT_EQ(DiskSpaceText('/', {(1u << 20) + 3, 8, 512}), " /: Available Disk Space 12 KBytes");
}

TEST(FileFilterTest, PairsBecomeTheDialogsFilters) {
    const QList<FileFilter> filters = ParseFileFilters(kSaveFilter);
    ASSERT_EQ(filters.size(), 5);
    EXPECT_EQ(filters[0].description, "Audio Files (*.wav;*.au;*.aiff) ");
    const QStringList names = NameFilters(filters);
    EXPECT_EQ(names[0], "Audio Files (*.wav *.au *.aiff *.mp3)");
    EXPECT_EQ(names[2], "Next/Sun audio file (*.au)");
    EXPECT_EQ(names[4], "All Files (*)");
    const char* suffixes[] = {"WAV", "wav", "au", "aiff", "WAV"};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(SuffixOf(filters[i]), suffixes[i]) << i;
}

TEST(ProgressCaptionTest, ASuffixFollowsTheWord) {
    EXPECT_EQ(ProgressCaption(" Equalizer"), "Progress Equalizer");
    EXPECT_EQ(ProgressCaption("Write sound file"), "Write sound file");
    EXPECT_EQ(ProgressCaption(""), "Progress");
}

class RecentListsTest : public ::testing::Test {
  protected:
    RecentListsTest() {
        TestApplication();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder_.Path().string()));
    }
    TemporaryFolder folder_;
};

TEST_F(RecentListsTest, FilesAreKeptNewestFirstAndTenOfThem) {
    {
        RecentFiles recent;
        for (int i = 0; i < 12; ++i) recent.Add(QStringLiteral("/a/%1.wav").arg(i));
        recent.Add(QStringLiteral("/a/5.wav"));
        recent.Remove(QStringLiteral("/a/8.wav"));
    }
    const QStringList paths = RecentFiles().Paths();
    ASSERT_EQ(paths.size(), 9);
    EXPECT_EQ(paths.mid(0, 3), (QStringList{"/a/5.wav", "/a/11.wav", "/a/10.wav"}));
    EXPECT_EQ(paths.last(), "/a/2.wav");
    EXPECT_FALSE(paths.contains("/a/8.wav"));
}

TEST_F(RecentListsTest, TheMenuOpensTheFileBehindItsText) {
    RecentFiles recent;
    recent.Add(QStringLiteral("/a/R&B.wav"));
    QMenu menu;
    recent.ShowIn(menu);
    QString chosen;
    QObject::connect(&recent, &RecentFiles::Chosen, [&](const QString& path) { chosen = path; });
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_EQ(menu.actions()[0]->text(), "&1  /a/R&&B.wav");
    menu.actions()[0]->trigger();
    EXPECT_EQ(chosen, "/a/R&B.wav");
}

TEST_F(RecentListsTest, FoldersStandInTheOptions) {
    const ProgramFolder program(folder_.Path());
    EXPECT_TRUE(RecentFolders(program).Paths().empty());
    for (int i = 0; i < 11; ++i)
        ASSERT_TRUE(RecentFolders(program).Add("/sounds " + std::to_string(i)));
    ASSERT_TRUE(RecentFolders(program).Add("/sounds 3"));
    const std::vector<std::string> paths = RecentFolders(program).Paths();
    ASSERT_EQ(paths.size(), RecentFolders::kMostFolders);
    EXPECT_EQ(paths[0], "/sounds 3");
    EXPECT_EQ(paths[1], "/sounds 10");
    EXPECT_EQ(program.Options().Read().GetString("__SOUND_USED_FOLDER", "Used Folder"),
              "/sounds 3");
}

}  // namespace
}  // namespace sonavel
