// What a script says of commands that work on what a view shows.
#pragma once

#include <string_view>

#include "view/sound_view.h"

namespace sonavel {

// Of the row of that name; nothing of a row without.
StepWords WordsOf(const CSoundView& view, std::string_view rowName);
// The command on the view's selection, or at its cursor.
StepWords WordsAt(const CSoundView& view, std::string_view command);
// Likewise of one that takes the clip.
StepWords WordsOfPaste(const CSoundView& view, std::string_view command);

}  // namespace sonavel
