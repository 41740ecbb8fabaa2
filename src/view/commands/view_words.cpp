#include "view/commands/view_words.h"

namespace sonavel {

StepWords WordsOf(const CSoundView& view, std::string_view rowName) {
    if (rowName.empty()) return {};
    return rowName.starts_with("paste") ? WordsOfPaste(view, rowName) : WordsAt(view, rowName);
}

StepWords WordsAt(const CSoundView& view, std::string_view command) {
    const Selection at = view.State().GetSelection();
    StepWords words{.lines = PlaceLines(at.start, at.end, view.State().Cursor())};
    words.lines.emplace_back(command);
    return words;
}

StepWords WordsOfPaste(const CSoundView& view, std::string_view command) {
    StepWords words = WordsAt(view, command);
    words.takes = Supply::kClip;
    return words;
}

}  // namespace sonavel
