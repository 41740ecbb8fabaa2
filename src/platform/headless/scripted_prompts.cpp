#include "platform/headless/scripted_prompts.h"

#include <ostream>
#include <utility>

namespace sonavel {
namespace {

constexpr std::pair<std::string_view, PromptAnswer> kWords[] = {
    {"ok", PromptAnswer::kOk},     {"cancel", PromptAnswer::kCancel},
    {"yes", PromptAnswer::kYes},   {"no", PromptAnswer::kNo},
    {"left", PromptAnswer::kLeft}, {"right", PromptAnswer::kRight},
    {"both", PromptAnswer::kBoth}, {"mix", PromptAnswer::kMix},
};

bool IsAffirmative(PromptAnswer answer) {
    return answer == PromptAnswer::kOk || answer == PromptAnswer::kYes;
}

std::optional<ChannelChoice> ChoiceFrom(PromptAnswer answer) {
    switch (answer) {
        case PromptAnswer::kLeft:
            return ChannelChoice::kLeft;
        case PromptAnswer::kRight:
            return ChannelChoice::kRight;
        case PromptAnswer::kCancel:
        case PromptAnswer::kNo:
            return std::nullopt;
        default:
            return ChannelChoice::kBothOrMix;
    }
}

std::string_view WordOf(std::optional<ChannelChoice> choice, ChannelConversion conversion) {
    if (!choice) return "cancel";
    if (*choice == ChannelChoice::kLeft) return "left";
    if (*choice == ChannelChoice::kRight) return "right";
    return conversion == ChannelConversion::kMonoToStereo ? "both" : "mix";
}

}  // namespace

std::optional<PromptAnswer> PromptAnswerFromWord(std::string_view word) {
    for (const auto& [name, answer] : kWords)
        if (name == word) return answer;
    return std::nullopt;
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\n' || text[i] == '\r')
            line += "\\n";
        else
            line += text[i];
    }
    return line;
}

void ScriptedPrompts::ShowMessage(std::string_view text) {
    out_ << "message: " << OnOneLine(text) << '\n';
}

void ScriptedPrompts::ShowStatus(std::string_view) {}

bool ScriptedPrompts::AskOkCancel(std::string_view text, std::string_view) {
    return Ask(text, "ok", "cancel");
}

bool ScriptedPrompts::AskYesNo(std::string_view text, std::string_view) {
    return Ask(text, "yes", "no");
}

std::optional<ChannelChoice> ScriptedPrompts::AskChannelConversion(ChannelConversion conversion) {
    const std::optional<ChannelChoice> choice = ChoiceFrom(NextAnswer());
    const bool toStereo = conversion == ChannelConversion::kMonoToStereo;
    PrintQuestion(toStereo ? "Convert to stereo" : "Convert to mono", WordOf(choice, conversion));
    return choice;
}

PromptAnswer ScriptedPrompts::NextAnswer() {
    if (answers_.empty()) return PromptAnswer::kOk;
    const PromptAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
}

void ScriptedPrompts::PrintQuestion(std::string_view text, std::string_view answer) {
    out_ << "question: " << OnOneLine(text) << " -> " << answer << '\n';
}

bool ScriptedPrompts::Ask(std::string_view text, std::string_view affirmative,
                          std::string_view negative) {
    const bool affirmed = IsAffirmative(NextAnswer());
    PrintQuestion(text, affirmed ? affirmative : negative);
    return affirmed;
}

}  // namespace sonavel
