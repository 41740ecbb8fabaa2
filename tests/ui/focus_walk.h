// A person who goes through a window by Tab, and what they miss on the way.
#pragma once

#include <QStringList>
#include <QWidget>

namespace sonavel {

// Walks through a shown window, each page of its tabs, and says which controls Tab never comes to,
// where it goes back up or to the left or returns to a group that it had left, and which controls
// look the same with the keyboard as without it.
QStringList FocusComplaints(QWidget& window);

}  // namespace sonavel
