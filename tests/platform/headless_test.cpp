#include <gtest/gtest.h>

#include <sstream>

#include "platform/headless/headless_progress.h"
#include "platform/headless/memory_clipboard.h"
#include "platform/headless/scripted_prompts.h"

namespace sonavel {
namespace {

std::string AskEverything(ScriptedPrompts& prompts, std::ostringstream& out) {
    const bool ok = prompts.AskOkCancel("Go\r\non?", "c");
    const bool yes = prompts.AskYesNo("Sure?", "c");
    const auto up = prompts.AskChannelConversion(ChannelConversion::kMonoToStereo);
    const auto down = prompts.AskChannelConversion(ChannelConversion::kStereoToMono);
    out << ok << yes << (up ? static_cast<int>(*up) : -1) << (down ? static_cast<int>(*down) : -1);
    return out.str();
}

TEST(ScriptedPrompts, AffirmsWithoutAnswers) {
    std::ostringstream out;
    ScriptedPrompts prompts(out);
    prompts.ShowMessage("first\nsecond");
    prompts.ShowStatus("not printed");
    EXPECT_EQ(AskEverything(prompts, out),
              "message: first\\nsecond\nquestion: Go\\non? -> ok\nquestion: Sure? -> yes\n"
              "question: Convert to stereo -> both\nquestion: Convert to mono -> mix\n1122");
}

TEST(ScriptedPrompts, TakesAnswersInTurn) {
    std::ostringstream out;
    ScriptedPrompts prompts(out);
    for (const char* word : {"cancel", "no", "right", "cancel"})
        prompts.QueueAnswer(PromptAnswerFromWord(word).value());
    EXPECT_EQ(AskEverything(prompts, out),
              "question: Go\\non? -> cancel\nquestion: Sure? -> no\n"
              "question: Convert to stereo -> right\nquestion: Convert to mono -> cancel\n001-1");
    EXPECT_FALSE(PromptAnswerFromWord("maybe"));
}

TEST(HeadlessProgress, WritesEachPercentageOnce) {
    std::ostringstream out;
    HeadlessProgress factory(&out);
    const auto window = factory.CreateProgress("Saving");
    window->SetRange(0, 1000);
    for (int position : {0, 4, 9, 10, 505, 505, 2000}) window->SetPosition(position);
    EXPECT_FALSE(window->Poll());
    EXPECT_EQ(out.str(), "Saving: 0%\nSaving: 1%\nSaving: 50%\nSaving: 100%\n");
}

TEST(MemoryClipboard, OffersWhatWasSet) {
    MemoryClipboard clipboard;
    EXPECT_FALSE(clipboard.OffersWave());
    EXPECT_FALSE(clipboard.GetImage());
    ASSERT_TRUE(clipboard.SetImage({1, 2}));
    EXPECT_TRUE(clipboard.OffersWave());
    EXPECT_EQ(clipboard.GetImage(), (std::vector<std::uint8_t>{1, 2}));
}

}  // namespace
}  // namespace sonavel
