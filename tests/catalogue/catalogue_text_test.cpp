#include "catalogue/catalogue_text.h"

#include <gmock/gmock.h>

#include <random>

#include "catalogue_fixture.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;

void ExpectSame(const Catalogue& a, const Catalogue& b) {
    EXPECT_EQ(a.Fields(), b.Fields());
    ASSERT_EQ(a.Count(), b.Count());
    for (std::size_t i = 0; i < a.Count(); ++i) {
        EXPECT_EQ(a.At(i).path, b.At(i).path);
        EXPECT_EQ(a.At(i).facts, b.At(i).facts);
        EXPECT_EQ(a.At(i).values, b.At(i).values);
    }
}

const std::string kHostileTexts[] = {
    "tab\there",
    "two\nlines\r\nand\rmore",
    "\"quoted\", 'twice'; a,b",
    "back\\slash \\t \\x41 \\",
    " blanks at the ends ",
    "한국어 설명, 북소리",
    "日本語 Ελληνικά עברית 🥁",
    "fields\tfile",
    std::string("nul\0inside", 10),
    "not UTF-8: \xFF\xC3(\xED\xA0\x80\x80",
    "\x01\x1B[31m\x7F",
    "\xEF\xBB\xBF",
};

std::string HugeLine() {
    std::string line(5'000'000, 'x');
    line.push_back('\n');
    return line;
}

TEST(CatalogueTextTest, EveryTextComesBackAsItWas) {
    Catalogue catalogue;
    catalogue.SetFields({"종류", "a\tb", "설명"});
    std::size_t entry = 0;
    for (const std::string& text : kHostileTexts) {
        std::string path = "/한글 폴더/" + std::to_string(entry) + text + ".wav";
        std::erase(path, '\0');
        ASSERT_TRUE(catalogue.Add({path, {44100, 1'000'000'000'000, 2, 16, 123, text}}));
        EXPECT_TRUE(catalogue.SetValue(entry, entry % 3, text));
        EXPECT_EQ(catalogue.Value(entry, entry % 3), text);
        ++entry;
    }
    const std::string text = TextOfCatalogue(catalogue);
    EXPECT_TRUE(IsValidUtf8(text));
    EXPECT_EQ(std::ranges::count(text, '\n'), static_cast<std::ptrdiff_t>(entry) + 2);
    const auto loaded = CatalogueFromText(text);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->damagedLines, 0u);
    ExpectSame(loaded->catalogue, catalogue);
}

TEST(CatalogueTextTest, DamagedLinesAreLeftOutAndCounted) {
    const std::string start = "Sonavel sample catalogue 1\nfields\tKind\tNote\n";
    const std::string good = "file\t/a.wav\t8000\t10\t1\t16\t64\tdrum\n";
    const struct {
        const char* what;
        std::string lines;
        std::size_t damaged;
        std::size_t entries;
    } cases[] = {
        {"nothing", "", 0, 0},
        {"one entry", good, 0, 1},
        {"other line ends and empty lines", "\r\nfile\t/a.wav\t8000\t10\t1\t16\t64\r\n\n", 0, 1},
        {"no numbers", "file\t/a.wav\n", 1, 0},
        {"no path", "file\t\t8000\t10\t1\t16\t64\n", 1, 0},
        {"a path that is not absolute", "file\ta.wav\t8000\t10\t1\t16\t64\n", 1, 0},
        {"a path of a folder", "file\t/a/\t8000\t10\t1\t16\t64\n", 1, 0},
        {"a path with a zero byte", "file\t/a\\x00.wav\t8000\t10\t1\t16\t64\n", 1, 0},
        {"letters for a number", "file\t/a.wav\t8000\tten\t1\t16\t64\n", 1, 0},
        {"a number too large", "file\t/a.wav\t8000\t10\t65536\t16\t64\n", 1, 0},
        {"a negative number", "file\t/a.wav\t-1\t10\t1\t16\t64\n", 1, 0},
        {"an unknown escape", "file\t/a\\q.wav\t8000\t10\t1\t16\t64\n", 1, 0},
        {"an escape cut off", "file\t/a.wav\t8000\t10\t1\t16\t64\tx\\x4\n", 1, 0},
        {"an escape with a sign", "file\t/a\\x-1\t8000\t10\t1\t16\t64\n", 1, 0},
        {"more values than fields", "file\t/a.wav\t8000\t10\t1\t16\t64\ta\tb\tc\n", 1, 0},
        {"a path twice", good + good, 1, 1},
        {"fields twice", "fields\tOther\n" + good, 1, 1},
        {"an unknown line", "folder\t/a\n" + good, 1, 1},
        {"a last line without its end", good + "file\t/b.wav\t8000\t10\t1\t16\t6", 1, 1},
        {"bytes that are no text", std::string("\0\xFF\xFE\x80\n", 5) + good, 1, 1},
        {"a huge line", HugeLine() + good, 1, 1},
        {"a million tabs", "file" + std::string(1'000'000, '\t') + "\n" + good, 1, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto loaded = CatalogueFromText(start + c.lines);
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->damagedLines, c.damaged);
        EXPECT_EQ(loaded->catalogue.Count(), c.entries);
        EXPECT_THAT(loaded->catalogue.Fields(), ElementsAre("Kind", "Note"));
    }
}

TEST(CatalogueTextTest, TheVersionBeforeHadNoFormats) {
    const std::string lines = "fields\tKind\nfile\t/a.wav\t8000\t10\t1\t16\t64\tdrum\n";
    const auto before = CatalogueFromText("Sonavel sample catalogue 1\n" + lines);
    ASSERT_TRUE(before);
    ASSERT_EQ(before->catalogue.Count(), 1u);
    EXPECT_EQ(before->catalogue.At(0).facts.format, "");
    EXPECT_EQ(before->catalogue.Value(0, 0), "drum");
    const auto now = CatalogueFromText("Sonavel sample catalogue 2\n" + lines);
    ASSERT_EQ(now->catalogue.Count(), 1u);
    EXPECT_EQ(now->catalogue.At(0).facts.format, "drum");
    EXPECT_EQ(now->catalogue.Value(0, 0), "");
}

TEST(CatalogueTextTest, OnlyACatalogueOfKnownVersionIsRead) {
    for (const char* text : {"", "\n", "Sonavel sample catalogue", "Sonavel sample catalogue 3\n",
                             "RIFF", "fields\nfile\t/a.wav\t1\t1\t1\t1\t1\n", "\xEF\xBB\xBF"})
        EXPECT_FALSE(CatalogueFromText(text)) << text;
    EXPECT_TRUE(CatalogueFromText("\xEF\xBB\xBFSonavel sample catalogue 1\r\n"));
    EXPECT_TRUE(CatalogueFromText("Sonavel sample catalogue 1"));
}

TEST(CatalogueTextTest, WhateverIsReadFromBrokenBytesCanBeWrittenAndReadAgain) {
    Catalogue catalogue;
    catalogue.SetFields({"Kind", "종류"});
    for (int i = 0; i < 20; ++i) {
        catalogue.Add({"/s/" + std::to_string(i), {8000, 10, 1, 16, 64}});
        catalogue.SetValue(static_cast<std::size_t>(i), 1, "드럼\t\\" + std::to_string(i));
    }
    const std::string whole = TextOfCatalogue(catalogue);
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string text = whole;
        for (int i = 0; i < 5; ++i)
            text[27 + random() % (text.size() - 27)] =
                static_cast<char>("\t\n\\x0\xFF\0f"[random() % 8]);
        text.resize(27 + random() % (text.size() - 27));
        const auto first = CatalogueFromText(text);
        if (!first) continue;
        const auto second = CatalogueFromText(TextOfCatalogue(first->catalogue));
        ASSERT_TRUE(second);
        EXPECT_EQ(second->damagedLines, 0u);
        ExpectSame(first->catalogue, second->catalogue);
    }
}

TEST(CatalogueTextTest, AValueThatIsTooLongIsCutBetweenCharacters) {
    Catalogue catalogue;
    catalogue.SetFields({"Note"});
    ASSERT_TRUE(catalogue.Add({"/a.wav", {8000, 10, 1, 16, 64}}));
    const std::size_t most = Catalogue::kMostValueBytes;
    const struct {
        const char* character;
        std::size_t before;  // bytes of the value that lie before the character
        std::size_t kept;
    } cases[] = {
        {"é", most - 2, most},        {"é", most - 1, most - 1},
        {"글", most - 3, most},       {"글", most - 2, most - 2},
        {"🥁", most - 3, most - 3}, {"\x80\x80\x80\x80\x80", most - 1, most},
    };
    for (const auto& c : cases) {
        std::string text(c.before, c.character[0] == '\x80' ? '\x80' : 'x');
        text.append(c.character).append("behind it");
        catalogue.SetValue(0, 0, text);
        EXPECT_EQ(catalogue.Value(0, 0), text.substr(0, c.kept)) << c.character << " " << c.before;
    }
}

}  // namespace
}  // namespace sonavel
