#include "platform/profile_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <random>

#include "platform/folder_lock.h"
#include "platform/small_file.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr char kMarkerKey[] = "마커 저장";
constexpr char kMarkerKeyIn949[] = "\xB8\xB6\xC4\xBF \xC0\xFA\xC0\xE5";

class ProfileFileTest : public ::testing::Test {
  protected:
    void Write(std::string_view bytes) const { WriteFileBytes(path_, BytesOf(bytes)); }
    std::string Bytes() const { return ReadSmallFile(path_, 1 << 20).value_or("(none)"); }

    TemporaryFolder folder_;
    const fs::path path_ = folder_ / "Options.ini";
};

TEST_F(ProfileFileTest, ReadsValuesAsThePlatformsProfilesDo) {
    Write(
        "; head\n\nloose=1\n[First]\nName\t= two words\t\n=nothing\nnoise\nquoted=\" a "
        "\"\nname=second\n"
        "n1=12abc\nn2= -7\nn3=+3\nn4=99999999999\nn5=x1\n[ second ]\nlast=end");
    const ProfileText file = ProfileFile(path_).Read();
    const struct {
        const char *section, *key, *value;
    } texts[] = {{"First", "Name", "two words"}, {"FIRST", "name", "two words"},
                 {"First", "quoted", " a "},     {"second", "last", "end"},
                 {"First", "missing", ""},       {"Missing", "Name", ""},
                 {"First", "noise", ""},         {"Second", "Name", ""}};
    for (const auto& c : texts)
        EXPECT_EQ(file.GetString(c.section, c.key), c.value) << c.section << '/' << c.key;
    const std::pair<const char*, int> numbers[] = {{"n1", 12}, {"n2", -7}, {"n3", 3},
                                                   {"n4", 0},  {"n5", 0},  {"n6", 0}};
    for (const auto& [key, value] : numbers) EXPECT_EQ(file.GetInteger("First", key), value) << key;
    EXPECT_EQ(file.SectionNames(), (std::vector<std::string>{"First", "second"}));
}

TEST_F(ProfileFileTest, KeepsOrderAndCommentsOnRewriting) {
    Write("; the head\n\n[B]\n; about z\nz=1\na=2\n\n; about A\n[A]\nk=\"v\"\n\n# the tail\n");
    ProfileFile file(path_);
    ASSERT_TRUE(file.SetString("b", "Z", "3"));
    ASSERT_TRUE(file.SetInteger("B", "new", -4));
    const std::string once = Bytes();
    std::size_t at = 0;
    for (const char* part : {"; the head\n", "[B]\n\n; about z\nz=3\na=2\nnew=-4\n",
                             "; about A\n[A]\nk=\"v\"\n", "# the tail\n"}) {
        at = once.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << once;
    }
    ASSERT_TRUE(file.SetInteger("B", "new", -4));
    EXPECT_EQ(Bytes(), once);
    EXPECT_EQ(file.Read().Entries("B"), (std::vector<std::pair<std::string, std::string>>{
                                            {"z", "3"}, {"a", "2"}, {"new", "-4"}}));
}

TEST_F(ProfileFileTest, OfTheSameNameTwiceTheFirstCounts) {
    Write("x=1\r[S]\rk=1\rother=2\rK=3\r[T]\r[s]\r; above\rlast=4\r");
    ProfileFile file(path_);
    EXPECT_EQ(file.Read().GetInteger("S", "K"), 1);
    EXPECT_EQ(file.Read().Entries("S").size(), 4u);
    ASSERT_TRUE(file.SetInteger("s", "K", 5));
    EXPECT_EQ(Bytes(), "x=1\n\n[S]\nk=5\nother=2\n\n; above\nlast=4\n\n[T]\n");
}

TEST_F(ProfileFileTest, KeepsCommentsOfAFileWithoutEntries) {
    Write("; one\n\n; two");
    ASSERT_TRUE(ProfileFile(path_).SetString("S", "k", "v"));
    EXPECT_EQ(Bytes(), "; one\n\n; two\n\n[S]\nk=v\n");
}

TEST_F(ProfileFileTest, KeepsTheEncodingOfTheFile) {
    struct Case {
        const char* name;
        std::string before, after;
    };
    const std::string key949 = kMarkerKeyIn949, keyUtf8 = kMarkerKey, mark = "\xEF\xBB\xBF";
    const Case cases[] = {
        {"code page", "[S]\n" + key949 + "=1\n", "[S]\n" + key949 + "=2\n"},
        {"UTF-8", "[S]\n" + keyUtf8 + "=1\n", "[S]\n" + keyUtf8 + "=2\n"},
        {"byte order mark", mark + "[S]\na=1\n", mark + "[S]\na=1\n" + keyUtf8 + "=2\n"},
        {"ASCII", "[S]\na=1\n", "[S]\na=1\n" + key949 + "=2\n"},
        {"line ends", "[S]\r\n" + key949 + "=1\r\n", "[S]\r\n" + key949 + "=2\r\n"},
        {"no file", "", "[S]\n" + key949 + "=2\n"},
    };
    for (const Case& c : cases) {
        fs::remove(path_);
        if (!c.before.empty()) Write(c.before);
        ProfileFile file(path_);
        ASSERT_TRUE(file.SetInteger("S", kMarkerKey, 2)) << c.name;
        EXPECT_EQ(Bytes(), c.after) << c.name;
        EXPECT_EQ(file.Read().GetInteger("S", kMarkerKey), 2) << c.name;
    }
}

TEST_F(ProfileFileTest, WritesUtf8WhereTheCodePageWouldNotBeReadBack) {
    ProfileFile file(path_);
    // U+B450 is the bytes B5 CE; U+CC3E is C3 A3, which are valid UTF-8 too. U+1F600 is not in it.
    for (const char* value : {"\xEC\xB0\xBE", "\xF0\x9F\x98\x80", "\xEB\x91\x90"}) {
        fs::remove(path_);
        ASSERT_TRUE(file.SetString("S", "k", value));
        EXPECT_EQ(file.Read().GetString("S", "k"), value);
    }
}

TEST_F(ProfileFileTest, BringsBackWhatWasWritten) {
    ProfileFile file(path_);
    for (const char* value : {"", "\"q\"", "'q'", "a=b", "; no comment", "[x]"}) {
        ASSERT_TRUE(file.SetString("S", " k ", value));
        EXPECT_EQ(file.Read().GetString("S", "k"), value);
    }
    for (const char* key : {"", " ", "a=b", "[k", ";k", "a\nb"})
        EXPECT_FALSE(file.SetString("S", key, "v")) << key;
    EXPECT_FALSE(file.SetString("S]", "k", "v"));
    EXPECT_FALSE(file.SetString("S", "k", "a\nb=c"));
    EXPECT_EQ(Bytes(), "[S]\nk=[x]\n");
}

TEST_F(ProfileFileTest, KeepsColumnsOfNumbersByteForByte) {
    ProfileFile file(path_);
    ASSERT_TRUE(file.SetString("S", "point Count", "  2"));
    ASSERT_TRUE(file.SetString("S", "Points", "10  -20 5   "));
    ASSERT_TRUE(file.SetString("S", "other", "\t1 \t"));
    ASSERT_TRUE(file.SetString("S", "last", "1"));
    EXPECT_EQ(Bytes(), "[S]\npoint Count=  2\nPoints=10  -20 5   \nother=\t1 \t\nlast=1\n");
    EXPECT_EQ(file.Read().GetString("S", "other"), "1");
    EXPECT_EQ(file.Read().GetString("S", "point Count"), "2");
    EXPECT_EQ(file.Read().GetString("S", "Points"), "10  -20 5");
}

TEST_F(ProfileFileTest, ReplacesAndDeletesSectionsWhole) {
    Write("[A]\na=1\nb=2\n\n[B]\nk=1\n");
    ProfileFile file(path_);
    ASSERT_TRUE(file.Change([](ProfileText& text) {
        return text.SetEntries("A", {{"c", "3"}, {"a", "4"}}) && text.SetEntries("Empty", {});
    }));
    EXPECT_EQ(Bytes(), "[A]\nc=3\na=4\n\n[B]\nk=1\n\n[Empty]\n");
    ASSERT_TRUE(file.Change([](ProfileText& text) {
        text.DeleteSection("a");
        text.DeleteSection("not there");
        return true;
    }));
    EXPECT_EQ(file.Read().SectionNames(), (std::vector<std::string>{"B", "Empty"}));
}

TEST_F(ProfileFileTest, LeavesWhatCannotBeRewrittenAlone) {
    const std::string binary("[S]\nk=\0\1\2", 9);
    for (const std::string& bytes : {binary, std::string("[S]\nk=\xFF\xFF\n")}) {
        Write(bytes);
        ProfileFile file(path_);
        EXPECT_FALSE(file.SetString("S", "k", "v"));
        EXPECT_EQ(Bytes(), bytes);
    }
    ProfileFile folder(folder_.Path());
    EXPECT_EQ(folder.Read().GetString("S", "k"), "");
    EXPECT_FALSE(folder.SetString("S", "k", "v"));
    EXPECT_FALSE(ProfileFile(folder_ / "none" / "x.ini").SetString("S", "k", "v"));
}

TEST_F(ProfileFileTest, RefusesWhatIsNoText) {
    ProfileFile file(path_);
    ASSERT_TRUE(file.SetString("S", "k", "v"));
    EXPECT_FALSE(file.SetString("S", "k", "caf\xE9"));
    EXPECT_FALSE(file.SetString("S", "caf\xE9", "v"));
    EXPECT_FALSE(file.SetString("caf\xE9", "k", "v"));
    EXPECT_FALSE(file.Change([](ProfileText& text) {
        return text.SetEntries("S", {{"a", "1"}, {"b", "\xFF"}});
    }));
    EXPECT_EQ(Bytes(), "[S]\nk=v\n");
}

TEST_F(ProfileFileTest, AChangeIsWrittenWholeOnceOrNotAtAll) {
    Write("[S]\n\n\nk=1\n");
    ProfileFile file(path_);
    EXPECT_FALSE(file.Change([](ProfileText& text) {
        return text.SetString("S", "a", "1") && text.SetString("S", "", "no key");
    }));
    ASSERT_TRUE(file.SetString("S", "k", "1"));
    EXPECT_EQ(Bytes(), "[S]\n\n\nk=1\n") << "nothing was changed";
    ASSERT_TRUE(file.Change([&](ProfileText& text) {
        const bool good = text.SetString("S", "a", "1") && text.SetInteger("T", "b", 2);
        EXPECT_EQ(file.Read().GetString("S", "a"), "");
        return good;
    }));
    EXPECT_EQ(file.Read().GetString("S", "a"), "1");
    EXPECT_EQ(file.Read().GetInteger("T", "b"), 2);
}

TEST_F(ProfileFileTest, EditorsThatChangeItAtOnceLoseNothing) {
    constexpr int kEditors = 4, kChanges = 8;
    fs::create_directory(folder_ / "other");
    fs::create_symlink(path_, folder_ / "other" / "link.ini");
    std::vector<pid_t> editors;
    for (int editor = 0; editor < kEditors; ++editor) {
        editors.push_back(fork());
        ASSERT_GE(editors.back(), 0);
        if (editors.back() != 0) continue;
        // One of them knows the file under another name.
        ProfileFile file(editor == 0 ? folder_ / "other" / "link.ini" : path_);
        bool good = true;
        for (int i = 0; i < kChanges; ++i)
            good = good && file.Change([](ProfileText& text) {
                return text.SetInteger("S", "all", text.GetInteger("S", "all") + 1);
            });
        _exit(good && file.SetInteger("S", "own " + std::to_string(editor), 1) ? 0 : 1);
    }
    for (const pid_t editor : editors) {
        int status = 0;
        ASSERT_EQ(waitpid(editor, &status, 0), editor);
        EXPECT_EQ(status, 0);
    }
    const ProfileText text = ProfileFile(path_).Read();
    EXPECT_EQ(text.GetInteger("S", "all"), kEditors * kChanges);
    EXPECT_EQ(text.Entries("S").size(), 1u + kEditors);
    EXPECT_EQ(folder_.FileCount(), 2u);
}

TEST_F(ProfileFileTest, AFolderIsHeldByOneLockAtATime) {
    constexpr std::chrono::milliseconds kShort{1};
    {
        const FolderLock lock(folder_.Path(), kShort);
        EXPECT_TRUE(lock.IsHeld());
        EXPECT_FALSE(FolderLock(folder_.Path(), kShort).IsHeld());
    }
    EXPECT_TRUE(FolderLock(folder_.Path(), kShort).IsHeld());
    EXPECT_TRUE(FolderLock(folder_ / "none", kShort).IsHeld()) << "nobody can hold that one";
}

TEST_F(ProfileFileTest, SurvivesHostileText) {
    std::mt19937 random(7);
    const std::string alphabet = "[]=;#<\"' \t\r\n\\ab\xB8\xB6\xEF\xBB\xBF";
    int written = 0;
    for (int round = 0; round < 150; ++round) {
        std::string text;
        for (unsigned i = random() % 60; i > 0; --i) text += alphabet[random() % alphabet.size()];
        Write(text);
        ProfileFile file(path_);
        for (const std::string& section : file.Read().SectionNames()) file.Read().Entries(section);
        if (!file.SetString("S", "k", "v")) continue;
        EXPECT_EQ(file.Read().GetString("S", "k"), "v") << text;
        ++written;
    }
    EXPECT_GT(written, 0);
    Write("[S]\nk=" + std::string(1 << 19, 'x'));
    EXPECT_EQ(ProfileFile(path_).Read().GetString("S", "k").size(), std::size_t{1} << 19);
}

TEST_F(ProfileFileTest, RewritingFollowsLinksAndKeepsPermissions) {
    Write("[S]\nk=1\n");
    ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
    const fs::path link = folder_ / "link.ini";
    fs::create_symlink("Options.ini", link);
    ASSERT_TRUE(ProfileFile(link).SetString("S", "k", "2"));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Bytes(), "[S]\nk=2\n");
    EXPECT_EQ(fs::status(path_).permissions(), static_cast<fs::perms>(0640));
    EXPECT_EQ(folder_.FileCount(), 2u);
}

}  // namespace
}  // namespace sonavel
