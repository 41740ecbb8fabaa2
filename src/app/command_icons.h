// The picture of each command that has one.
#pragma once

#include <QIcon>

namespace sonavel {

// Null for a command without a picture.
QIcon CommandIcon(int commandId);

// The icon of the program's windows, in colours of its own.
QIcon ProgramIcon();

// To be called once before the first icon is asked for: links the pictures in.
void LoadPictures();

}  // namespace sonavel
