// The responses that the person has chosen for smooth 3D sound, and where that is kept.
#pragma once

#include <functional>
#include <string>

#include "spatial/listener.h"

namespace sonavel {

// The chosen SOFA file's path; empty for the table.
std::string ChosenEars();
void ChooseEars(const std::string& path);

// Called now and then while a file is read and analysed on a thread of its own; true cancels.
using EarsPoll = std::function<bool()>;

// Lets the listener hear with the responses of the file, or of the table for an empty path. Fails,
// and leaves the listener as it is, when the file cannot be used.
Outcome TakeEars(const std::string& path, Listener& listener, const EarsPoll& poll);

// "361 directions; …", or why the file cannot be used.
std::string DescribeEars(const std::string& path, const EarsPoll& poll);

}  // namespace sonavel
