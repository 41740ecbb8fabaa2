#include "platform/available_memory.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/host_services.h"
#include "platform/state_folder.h"
#include "support/address_space_limit.h"

namespace sonavel {
namespace {

TEST(AvailableMemory, ANumberIsFoundByTheNameThatItsLineBeginsWith) {
    const struct {
        std::string_view text;
        std::uint64_t bytes;
    } cases[] = {{"MemAvailable:    12 kB", 12288},
                 {"MemTotal: 9 kB\nMemAvailable:\t3 kB\n", 3072},
                 {"NotMemAvailable: 5 kB\n", 0},
                 {"MemAvailable: none\n", 0},
                 {"MemAvailable:", 0},
                 {"", 0}};
    for (const auto& c : cases) EXPECT_EQ(BytesOfLine(c.text, "MemAvailable:"), c.bytes) << c.text;
}

#ifndef __SANITIZE_ADDRESS__

TEST(AvailableMemory, ALimitOfTheProcessCounts) {
    constexpr std::uint64_t kRoom = 64 << 20;
    const AddressSpaceLimit limit(kRoom);
    EXPECT_LE(AvailableMemory(), kRoom);
    EXPECT_GT(AvailableMemory(), kRoom / 2);
    EXPECT_EQ(UndoStorage::OfThisSystem().memoryBytes, 256u << 20) << "the least";
}

#endif

TEST(StateFolder, IsThePersonsOwnUnlessTheEnvironmentNamesOne) {
    const struct {
        const char* state;
        const char* folder;
    } cases[] = {{"/var/state", "/var/state/sonavel"},
                 {"relative", "/home/a/.local/state/sonavel"},
                 {"", "/home/a/.local/state/sonavel"}};
    const char* const home = std::getenv("HOME");
    const std::string before = home ? home : "";
    setenv("HOME", "/home/a", 1);
    for (const auto& c : cases) {
        setenv("XDG_STATE_HOME", c.state, 1);
        EXPECT_EQ(StateFolder(), c.folder);
        EXPECT_EQ(UndoStorage::OfThisSystem().folder, StateFolder() / "recovery");
    }
    unsetenv("XDG_STATE_HOME");
    setenv("HOME", before.c_str(), 1);
}

}  // namespace
}  // namespace sonavel
