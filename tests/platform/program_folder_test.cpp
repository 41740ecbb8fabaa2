#include "platform/program_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

#include "support/ordinary_user.h"
#include "support/test_files.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFiles[] = {"Options.ini", "Display.ini", "Systemsound.ini", "Usersound.ini",
                                  "SampleDB.ini"};

// The person's own configuration, for the time of a test.
class ProgramFolderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"XDG_CONFIG_HOME", "HOME"}) {
            const char* value = std::getenv(name);
            before_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
        }
        fs::create_directory(program_);
        for (const char* name : kFiles) {
            WriteFileBytes(program_ / name, BytesOf(std::string("of the program: ") + name));
            chmod((program_ / name).c_str(), 0444);
        }
        WriteFileBytes(program_ / "other", BytesOf("no settings"));
        OrdinaryUser::Give(folder_.Path());
        setenv("XDG_CONFIG_HOME", (folder_ / "config").c_str(), 1);
    }
    void TearDown() override {
        for (const auto& [name, value] : before_)
            value ? setenv(name, value->c_str(), 1) : unsetenv(name);
        chmod(program_.c_str(), 0755);
    }
    static std::string TextOf(const fs::path& path) {
        const FileBytes bytes = ReadFileBytes(path);
        return {bytes.begin(), bytes.end()};
    }

    TemporaryFolder folder_;
    const fs::path program_ = folder_ / "program";
    const fs::path personal_ = folder_ / "config" / "sonavel";

  private:
    std::vector<std::pair<const char*, std::optional<std::string>>> before_;
};

TEST_F(ProgramFolderTest, IsTheFolderOfTheProgramWhereItCanBeWritten) {
    EXPECT_EQ(ProgramFolder::OfProgramIn(program_).Path(), program_);
    EXPECT_FALSE(fs::exists(personal_));
    const fs::path own = ProgramFolder::ExecutableFolder();
    EXPECT_TRUE(fs::exists(own / "platform_tests"));
    EXPECT_EQ(ProgramFolder::OfThisProgram().Path(), own);
}

TEST_F(ProgramFolderTest, IsElseThePersonsOwnWithTheSettingsOfTheProgram) {
    ASSERT_EQ(chmod(program_.c_str(), 0555), 0);
    const OrdinaryUser user;
    const ProgramFolder folder = ProgramFolder::OfProgramIn(program_);
    EXPECT_EQ(folder.Path(), personal_);
    for (const char* name : kFiles) {
        EXPECT_EQ(TextOf(personal_ / name), std::string("of the program: ") + name);
        EXPECT_TRUE(folder.Profile(name).SetString("S", "k", "v")) << name;
    }
    EXPECT_FALSE(fs::exists(personal_ / "other"));
    // What the person has changed stays, and what is lost comes again.
    const std::string changed = TextOf(personal_ / "Options.ini");
    fs::remove(personal_ / "Display.ini");
    ProgramFolder::OfProgramIn(program_);
    EXPECT_EQ(TextOf(personal_ / "Options.ini"), changed);
    EXPECT_EQ(TextOf(personal_ / "Display.ini"), "of the program: Display.ini");
}

TEST_F(ProgramFolderTest, IsThePersonsOwnFromTheFirstStartOfAnInstalledProgram) {
    const fs::path bin = folder_ / "bin";
    const fs::path shared = folder_ / "share" / "sonavel";
    fs::create_directory(bin);
    EXPECT_EQ(ProgramFolder::ShippedFolderOf(bin), bin);
    fs::create_directories(shared);
    fs::rename(program_ / "Options.ini", shared / "Options.ini");
    EXPECT_EQ(ProgramFolder::ShippedFolderOf(bin), shared);
    EXPECT_EQ(ProgramFolder::OfProgramIn(bin).Path(), personal_) << "bin can be written";
    EXPECT_EQ(TextOf(personal_ / "Options.ini"), "of the program: Options.ini");
    EXPECT_TRUE(fs::is_empty(bin));
    // A program that has its own settings beside it is not the installed one.
    WriteFileBytes(bin / "Options.ini", BytesOf("own"));
    EXPECT_EQ(ProgramFolder::OfProgramIn(bin).Path(), bin);
}

TEST_F(ProgramFolderTest, FindsThePersonsFolderAsDesktopsDo) {
    ASSERT_EQ(chmod(program_.c_str(), 0555), 0);
    const OrdinaryUser user;
    setenv("HOME", (folder_ / "home").c_str(), 1);
    for (const char* config : {"", "not/absolute"}) {
        setenv("XDG_CONFIG_HOME", config, 1);
        EXPECT_EQ(ProgramFolder::OfProgramIn(program_).Path(), folder_ / "home/.config/sonavel");
    }
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(ProgramFolder::OfProgramIn(program_).Path(), folder_ / "home/.config/sonavel");
}

}  // namespace
}  // namespace sonavel
