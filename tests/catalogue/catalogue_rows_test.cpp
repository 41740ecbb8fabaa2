#include "catalogue/catalogue_rows.h"

#include <gmock/gmock.h>

#include <QLocale>

#include "catalogue/catalogue_columns.h"
#include "catalogue_fixture.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Names = std::vector<std::string>;

class CatalogueRowsTest : public CatalogueFixture {
  protected:
    Names Shown() const { return NamesOf(catalogue, rows); }

    CatalogueRows rows{catalogue};
};

TEST_F(CatalogueRowsTest, TheFilterLooksForEveryWordInAnyColumn) {
    catalogue.ShowFields({"종류", "Note"});
    AddNames({"Kick 1.wav", "kick 2.wav", "SNARE.aiff", "Über.au"});
    catalogue.SetFacts(0, {44100, 44100, 2, 16, 100});
    catalogue.SetFacts(2, {8000, 4000, 1, 8, 100});
    catalogue.SetValue(1, 0, "북소리, 저음");
    catalogue.SetValue(2, 1, "Say \"SNAP\"\nloud");
    rows.Rebuild();
    const struct {
        const char* filter;
        Names shown;
    } cases[] = {
        {"", {"Kick 1.wav", "kick 2.wav", "SNARE.aiff", "Über.au"}},
        {"  ", {"Kick 1.wav", "kick 2.wav", "SNARE.aiff", "Über.au"}},
        {"KICK", {"Kick 1.wav", "kick 2.wav"}},
        {"wav kick 2", {"kick 2.wav"}},
        {"2 wav kick", {"kick 2.wav"}},
        {"북소리", {"kick 2.wav"}},
        {"저음\t북", {"kick 2.wav"}},
        {"snap", {"SNARE.aiff"}},
        {"über", {"Über.au"}},
        {"44,100 stereo", {"Kick 1.wav"}},
        {"00:00:00.500", {"SNARE.aiff"}},
        {"/s", {"Kick 1.wav", "kick 2.wav", "SNARE.aiff", "Über.au"}},
        {"kick snare", {}},
        // Not across the end of a column.
        {"snare.aiff00", {}},
    };
    for (const auto& c : cases) {
        rows.SetFilter(c.filter);
        EXPECT_EQ(Shown(), c.shown) << c.filter;
    }
}

TEST_F(CatalogueRowsTest, TheFilterKnowsCapitalsOfEveryAlphabet) {
    const struct {
        const char* name;
        const char* filter;
    } cases[] = {
        {"Kick DRUM", "kick drum"},
        {"ÄÖÜ × Þ", "äöü × þ"},
        {"ŁÓDŹ Ž", "łódź ž"},
        {"ΣΩΑ", "σωα"},
        {"ПРИВЕТ Ё", "привет ё"},
        {"ＡＺ", "ａｚ"},
        {"한글 日本 🥁", "🥁 日本"},
        {"broken \xFF\xC3 name", "NAME"},
    };
    for (const auto& c : cases) AddNames({c.name});
    rows.Rebuild();
    for (const auto& c : cases) {
        rows.SetFilter(c.filter);
        EXPECT_THAT(Shown(), ElementsAre(c.name)) << c.filter;
    }
}

TEST_F(CatalogueRowsTest, NamesStandInOneOrderWhateverThePersonsLocale) {
    const Names sorted = {"_a", "2", "010", "a", "Ä", "ab", "B",  "kick 2", "KICK 10",
                          "o",  "ö", "z",   "Ω", "Я", "가", "나", "漢"};
    AddNames({sorted.rbegin(), sorted.rend()});
    // The first has letters behind z, the second Hangul before a.
    for (const char* locale : {"sv_SE", "ko_KR", "C"}) {
        QLocale::setDefault(QLocale(QLatin1String(locale)));
        rows.Rebuild();
        EXPECT_EQ(Shown(), sorted) << locale;
    }
}

TEST_F(CatalogueRowsTest, EveryColumnSortsBothWays) {
    catalogue.ShowFields({"Kind"});
    AddNames({"b10", "B9", "a", "c"});
    catalogue.SetFacts(0, {8000, 8000, 1, 8, 5000, "WAV"});
    catalogue.SetFacts(1, {44100, 44000, 2, 16, 900, "FLAC"});
    catalogue.SetFacts(2, {22050, 90000, 1, 16, 10000, "FLAC"});
    catalogue.SetValue(0, 0, "나");
    catalogue.SetValue(1, 0, "가");
    catalogue.SetValue(3, 0, "나");
    rows.Rebuild();
    const struct {
        std::size_t column;
        Names ascending;
        Names descending;  // equal rows stay in the order of their names
    } cases[] = {
        {0, {"a", "B9", "b10", "c"}, {"c", "b10", "B9", "a"}},
        {1, {"c", "B9", "b10", "a"}, {"a", "b10", "B9", "c"}},
        {2, {"c", "b10", "a", "B9"}, {"B9", "a", "b10", "c"}},
        {3, {"c", "b10", "a", "B9"}, {"a", "B9", "b10", "c"}},
        {4, {"c", "a", "b10", "B9"}, {"B9", "a", "b10", "c"}},
        {5, {"c", "B9", "b10", "a"}, {"a", "b10", "B9", "c"}},
        {6, {"c", "a", "B9", "b10"}, {"b10", "a", "B9", "c"}},
        {7, {"a", "B9", "b10", "c"}, {"a", "B9", "b10", "c"}},
        {8, {"a", "B9", "b10", "c"}, {"b10", "c", "B9", "a"}},
    };
    for (const auto& c : cases) {
        rows.SortBy(c.column, SortOrder::kAscending);
        EXPECT_EQ(Shown(), c.ascending) << c.column;
        rows.SortBy(c.column, SortOrder::kDescending);
        EXPECT_EQ(Shown(), c.descending) << c.column;
    }
}

TEST_F(CatalogueRowsTest, TheChosenColumnStaysAsLongAsItIsShown) {
    catalogue.ShowFields({"Kind"});
    EXPECT_EQ(ColumnTitle(catalogue, 1), "Length");
    EXPECT_EQ(ColumnTitle(catalogue, kFixedColumns), "Kind");
    AddNames({"a", "b"});
    catalogue.SetValue(0, 0, "later");
    rows.Rebuild();
    rows.SortBy(kFixedColumns, SortOrder::kAscending);
    rows.Rebuild();
    EXPECT_THAT(Shown(), ElementsAre("b", "a"));
    catalogue.ShowFields({});
    rows.Rebuild();
    EXPECT_THAT(Shown(), ElementsAre("a", "b"));
}

TEST_F(CatalogueRowsTest, AnEditedRowStaysUntilTheNextFilter) {
    catalogue.ShowFields({"Kind"});
    AddNames({"a", "b"});
    rows.Rebuild();
    rows.SetFilter("a");
    catalogue.SetValue(1, 0, "has an a");
    rows.Refresh(1);
    EXPECT_THAT(Shown(), ElementsAre("a"));
    rows.SetFilter("a");
    EXPECT_THAT(Shown(), ElementsAre("a", "b"));
}

TEST_F(CatalogueRowsTest, MissingFilesCanBeShownAlone) {
    AddNames({"a", "b", "c"});
    rows.Rebuild();
    catalogue.SetPresence(1, FilePresence::kMissing);
    rows.SetShown(RowsShown::kMissing);
    EXPECT_THAT(Shown(), ElementsAre("b"));
    rows.SetFilter("a");
    EXPECT_THAT(Shown(), IsEmpty());
    rows.SetFilter("");
    rows.SetShown(RowsShown::kAll);
    EXPECT_THAT(Shown(), ElementsAre("a", "b", "c"));
}

TEST_F(CatalogueRowsTest, WhatIsNotKnownIsShownAsNothing) {
    AddNames({"a.wav"});
    catalogue.SetFacts(0, {0, UINT64_MAX, 0, 0, 0});
    for (std::size_t column = 1; column < 6; ++column)
        EXPECT_EQ(CellText(catalogue, 0, column), "") << column;
    // A header may claim anything.
    catalogue.SetFacts(0, {1, UINT64_MAX, 65535, 65535, UINT64_MAX});
    EXPECT_EQ(CellText(catalogue, 0, 1), "");
    EXPECT_EQ(CellText(catalogue, 0, 4), "65535 channels");
}

TEST_F(CatalogueRowsTest, SizesHaveAUnitThatFits) {
    AddNames({"a.wav"});
    const std::pair<std::uint64_t, const char*> cases[] = {
        {1, "1 B"},
        {1023, "1023 B"},
        {1024, "1.0 KB"},
        {1000 * 1024 - 1, "1000.0 KB"},
        {1000 * 1024, "1.0 MB"},
        {5'400'000'000, "5.0 GB"},
        {UINT64_MAX, "16777216.0 TB"},
    };
    for (const auto& [bytes, text] : cases) {
        catalogue.SetFacts(0, {8000, 1, 1, 8, bytes});
        EXPECT_EQ(CellText(catalogue, 0, 5), text) << bytes;
    }
}

}  // namespace
}  // namespace sonavel
