// A UserPrompts that notes every text and answers from queues.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/user_prompts.h"

namespace sonavel {

class RecordingPrompts : public UserPrompts {
  public:
    void ShowMessage(std::string_view text) override { messages.emplace_back(text); }
    void ShowStatus(std::string_view text) override { statusTexts.emplace_back(text); }

    bool AskOkCancel(std::string_view text, std::string_view) override { return Answer(text); }
    bool AskYesNo(std::string_view text, std::string_view) override { return Answer(text); }

    std::optional<ChannelChoice> AskChannelConversion(ChannelConversion conversion) override {
        conversions.push_back(conversion);
        return channelAnswer;
    }

    std::vector<std::string> messages;
    std::vector<std::string> statusTexts;
    std::vector<std::string> questions;
    std::vector<ChannelConversion> conversions;

    // Taken from the front; with none left every question is answered by OK or Yes.
    std::deque<bool> answers;
    std::optional<ChannelChoice> channelAnswer = ChannelChoice::kBothOrMix;

  private:
    bool Answer(std::string_view text) {
        questions.emplace_back(text);
        if (answers.empty()) return true;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}  // namespace sonavel
