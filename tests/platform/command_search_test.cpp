// The palette's search: which names fit, and which of them fit best.
#include "platform/command_search.h"

#include <gtest/gtest.h>

#include <string>

namespace sonavel {
namespace {

TEST(CommandSearchTest, FindsNamesByTheirLettersInOrder) {
    for (const char* typed : {"", "zoom", "zi", "ZOOM IN", "zmi", "oom"})
        EXPECT_TRUE(CommandFit(typed, "Zoom In")) << typed;
    for (const char* typed : {"iz", "zoomx", "zz", "a"})
        EXPECT_FALSE(CommandFit(typed, "Zoom In")) << typed;
    const std::string name = "Write the markers as a label track";
    EXPECT_TRUE(CommandFit("writethemarkersas", name));
    EXPECT_FALSE(CommandFit("writethemarkerszs", name));
    EXPECT_FALSE(CommandFit("x", ""));
}

TEST(CommandSearchTest, BeginningsOfWordsFitBest) {
    const struct {
        const char* typed;
        const char* better;
        const char* worse;
    } cases[] = {
        {"ex", "Export...", "Find Next"},      {"fp", "Find Pauses...", "Flip"},
        {"cut", "Cut", "Preview cut/cursor"},  {"mark", "Marker", "Import Markers..."},
        {"paste", "Paste", "Undo as stepped"},
    };
    for (const auto& one : cases)
        EXPECT_LT(CommandFit(one.typed, one.better).value(),
                  CommandFit(one.typed, one.worse).value_or(1000))
            << one.typed;
}

}  // namespace
}  // namespace sonavel
