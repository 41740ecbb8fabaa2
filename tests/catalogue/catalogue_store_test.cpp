#include "catalogue/catalogue_store.h"

#include <gmock/gmock.h>

#include "catalogue_fixture.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class CatalogueStoreTest : public CatalogueFixture {
  protected:
    std::size_t CountOf(std::string_view name) {
        const auto loaded = store.Load(name);
        return loaded ? loaded->catalogue.Count() : 999;
    }

    CatalogueStore store{ProgramFolder(folder.Path())};
};

TEST_F(CatalogueStoreTest, AnyLineOfTextNamesACatalogue) {
    const std::string names[] = {"Drums", "북소리", "a/b", "..", ".hidden", "100%25", "a\\b \"c\""};
    for (const std::string& name : names) {
        const Outcome made = store.Create(name);
        ASSERT_TRUE(made) << name << ": " << made.Reason();
        ASSERT_TRUE(catalogue.Add({"/" + name + "/x.wav", {}}));
        ASSERT_TRUE(store.Save(name, catalogue));
    }
    EXPECT_THAT(store.Names(),
                ElementsAre("..", ".hidden", "100%25", "a/b", "a\\b \"c\"", "Drums", "북소리"));
    EXPECT_EQ(folder.FileCount(), std::size(names));
    for (std::size_t i = 0; i < std::size(names); ++i) EXPECT_EQ(CountOf(names[i]), i + 1);
}

TEST_F(CatalogueStoreTest, NamesThatCannotBeAreRefused) {
    ASSERT_TRUE(store.Create(" Drums "));
    for (const std::string& name :
         {std::string(), std::string("  "), std::string("Drums"), std::string("two\nlines"),
          std::string("\xFF"), std::string(221, 'x')}) {
        EXPECT_NE(store.Create(name).Reason(), "") << name;
    }
    EXPECT_THAT(store.Names(), ElementsAre("Drums"));
    EXPECT_EQ(store.FreeName(), "Catalogue");
    ASSERT_TRUE(store.Create("Catalogue"));
    EXPECT_EQ(store.FreeName(), "Catalogue 2");
}

TEST_F(CatalogueStoreTest, RenamingKeepsTheEntriesAndNeverReplacesAnother) {
    AddNames({"a", "b"});
    ASSERT_TRUE(store.Save("One", catalogue));
    ASSERT_TRUE(store.Create("Two"));
    EXPECT_FALSE(store.Rename("One", "Two"));
    EXPECT_FALSE(store.Rename("None", "Three"));
    EXPECT_TRUE(store.Rename("One", "하나"));
    EXPECT_THAT(store.Names(), ElementsAre("Two", "하나"));
    EXPECT_EQ(CountOf("하나"), 2u);
    EXPECT_TRUE(store.Delete("Two"));
    EXPECT_THAT(store.Names(), ElementsAre("하나"));
}

TEST_F(CatalogueStoreTest, ForeignFilesAreNeitherListedNorRead) {
    fs::create_directory(folder / "Folder.catalogue");
    WriteFileBytes(folder / "50%.catalogue", BytesOf("Sonavel sample catalogue 1\n"));
    WriteFileBytes(folder / "x.catalogue.damaged", BytesOf("x"));
    WriteFileBytes(folder / "Options.ini", BytesOf("x"));
    WriteFileBytes(folder / "Binary.catalogue", FileBytes(100'000, 0xA5));
    EXPECT_THAT(store.Names(), ElementsAre("Binary"));
    EXPECT_EQ(store.Load("Binary").Reason(), "The file is not a catalogue.");
    EXPECT_FALSE(store.Load("Folder"));
    EXPECT_FALSE(store.Load("None"));
}

TEST_F(CatalogueStoreTest, ADamagedFileIsKeptBesideItsNextVersion) {
    const FileBytes damaged = BytesOf("Sonavel sample catalogue 1\nfile\t/a\t1\t1\t1\t8\t9\nxxx\n");
    WriteFileBytes(folder / "D.catalogue", damaged);
    auto loaded = store.Load("D");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->damagedLines, 1u);
    EXPECT_EQ(folder.FileCount(), 1u);
    ASSERT_TRUE(store.Rename("D", "E"));
    ASSERT_TRUE(store.Save("E", loaded->catalogue));
    ASSERT_TRUE(store.Save("E", loaded->catalogue));
    EXPECT_EQ(ReadFileBytes(folder / "E.catalogue.damaged"), damaged);
    EXPECT_EQ(folder.FileCount(), 2u);
    EXPECT_EQ(store.Load("E")->damagedLines, 0u);
    ASSERT_TRUE(store.Save("E", loaded->catalogue));
    EXPECT_EQ(folder.FileCount(), 2u) << "a whole file needs no copy";
}

TEST_F(CatalogueStoreTest, DamagedFilesAreKeptUnderNamesOfTheirOwn) {
    for (const char* kept :
         {"D.catalogue.damaged", "D.catalogue.damaged-2", "D.catalogue.damaged-3"}) {
        const FileBytes damaged =
            BytesOf(std::string("Sonavel sample catalogue 1\n") + kept + '\n');
        WriteFileBytes(folder / "D.catalogue", damaged);
        ASSERT_TRUE(store.Load("D"));
        ASSERT_TRUE(store.Save("D", catalogue));
        EXPECT_EQ(ReadFileBytes(folder / kept), damaged);
    }
    EXPECT_EQ(folder.FileCount(), 4u);
    // What cannot be kept is not replaced either.
    WriteFileBytes(folder / "D.catalogue", BytesOf("Sonavel sample catalogue 1\nx\n"));
    ASSERT_TRUE(store.Load("D"));
    fs::remove(folder / "D.catalogue");
    EXPECT_FALSE(store.Save("D", catalogue));
    EXPECT_FALSE(fs::exists(folder / "D.catalogue"));
}

TEST_F(CatalogueStoreTest, FieldsComeFromTheIniFileInEitherEncoding) {
    EXPECT_THAT(store.FieldNames(), IsEmpty());
    const std::string ini = "[FIELD SECTION]\nFIELDS= 종류 ,, Note,종류,a b,\n";
    const auto encoded = CodePage949FromUtf8(ini);
    ASSERT_TRUE(encoded);
    for (const std::string& text : {ini, *encoded}) {
        WriteFileBytes(folder / "SampleDB.ini", BytesOf(text));
        EXPECT_THAT(store.FieldNames(), ElementsAre("종류", "Note", "a b"));
    }
    ASSERT_TRUE(store.SetFieldNames({"分類", "Note"}));
    EXPECT_THAT(store.FieldNames(), ElementsAre("分類", "Note"));
}

TEST_F(CatalogueStoreTest, ValuesOutliveTheirFields) {
    ASSERT_TRUE(store.SetFieldNames({"A", "B"}));
    ASSERT_TRUE(store.Create("C"));
    catalogue = store.Load("C")->catalogue;
    AddNames({"x"});
    catalogue.SetValue(0, 0, "in A");
    catalogue.SetValue(0, 1, "in B");
    ASSERT_TRUE(store.Save("C", catalogue));

    ASSERT_TRUE(store.SetFieldNames({"New", "B"}));
    catalogue = store.Load("C")->catalogue;
    EXPECT_EQ(catalogue.ShownFields(), 2u);
    EXPECT_THAT(catalogue.Fields(), ElementsAre("New", "B", "A"));
    EXPECT_EQ(catalogue.Value(0, 0), "");
    EXPECT_EQ(catalogue.Value(0, 1), "in B");
    catalogue.SetValue(0, 0, "in New");
    ASSERT_TRUE(store.Save("C", catalogue));

    ASSERT_TRUE(store.SetFieldNames({"B", "A"}));
    catalogue = store.Load("C")->catalogue;
    EXPECT_THAT(catalogue.Fields(), ElementsAre("B", "A", "New"));
    EXPECT_THAT(catalogue.At(0).values, ElementsAre("in B", "in A", "in New"));
}

TEST_F(CatalogueStoreTest, AFailingSaveLeavesTheOldFile) {
    AddNames({"a"});
    ASSERT_TRUE(store.Save("C", catalogue));
    const fs::path file = folder / "C.catalogue";
    CatalogueStore elsewhere{ProgramFolder(folder / "no such folder")};
    EXPECT_NE(elsewhere.Save("C", catalogue).Reason(), "");
    EXPECT_FALSE(elsewhere.SetFieldNames({"A"}));
    EXPECT_THAT(elsewhere.Names(), IsEmpty());
    EXPECT_EQ(CountOf("C"), 1u);
}

}  // namespace
}  // namespace sonavel
