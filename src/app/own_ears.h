// The responses that the person has chosen for smooth 3D sound, and where that is kept.
#pragma once

#include <string>

#include "platform/progress_window.h"
#include "spatial/listener.h"

namespace sonavel {

// The chosen SOFA file's path; empty for the table.
std::string ChosenEars();
void ChooseEars(const std::string& path);

// Lets the listener hear with the responses of the file, or of the table for an empty path. Fails,
// and leaves the listener as it is, when the file cannot be used; likewise cancelled by the window,
// which shows how far the file is read and analysed.
Outcome TakeEars(const std::string& path, Listener& listener, ProgressWindow& window);

// "361 directions; …"; fails where TakeEars() does.
Result<std::string> DescribeEars(const std::string& path, ProgressWindow& window);

}  // namespace sonavel
