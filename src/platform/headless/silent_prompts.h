// Prompts for programs that work without anybody to ask: nothing is shown, every question is
// affirmed.
#pragma once

#include "platform/user_prompts.h"

namespace sonavel {

class SilentPrompts : public UserPrompts {
  public:
    void ShowMessage(std::string_view) override {}
    void ShowStatus(std::string_view) override {}
    bool AskOkCancel(std::string_view, std::string_view) override { return true; }
    bool AskYesNo(std::string_view, std::string_view) override { return true; }
    std::optional<ChannelChoice> AskChannelConversion(ChannelConversion) override {
        return ChannelChoice::kBothOrMix;
    }
};

}  // namespace sonavel
