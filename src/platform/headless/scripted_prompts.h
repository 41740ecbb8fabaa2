// Prompts without a person: messages and questions are printed, answers come from a queue.
#pragma once

#include <deque>
#include <iosfwd>
#include <string>

#include "platform/user_prompts.h"

namespace sonavel {

enum class PromptAnswer { kOk, kCancel, kYes, kNo, kLeft, kRight, kBoth, kMix };

// The answer of that lower-case word; nothing for another word.
std::optional<PromptAnswer> PromptAnswerFromWord(std::string_view word);

// Text on one line: each line break becomes "\n" in two characters.
std::string OnOneLine(std::string_view text);

// Prints "message: TEXT" and "question: TEXT -> ANSWER". Without an answer in the queue the
// affirmative one is given. "ok" and "yes" affirm every question, "cancel" and "no" decline it; an
// answer that does not fit its question declines it too. Notes for a status bar are not printed.
class ScriptedPrompts : public UserPrompts {
  public:
    explicit ScriptedPrompts(std::ostream& out) : out_(out) {}

    void QueueAnswer(PromptAnswer answer) { answers_.push_back(answer); }

    void ShowMessage(std::string_view text) override;
    void ShowStatus(std::string_view text) override;
    bool AskOkCancel(std::string_view text, std::string_view caption) override;
    bool AskYesNo(std::string_view text, std::string_view caption) override;
    std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion) override;

  private:
    PromptAnswer NextAnswer();
    void PrintQuestion(std::string_view text, std::string_view answer);
    bool Ask(std::string_view text, std::string_view affirmative, std::string_view negative);

    std::ostream& out_;
    std::deque<PromptAnswer> answers_;
};

}  // namespace sonavel
