// The order in which Tab walks through a dialog.
#pragma once

#include <QWidget>

namespace sonavel {

// As the layouts have it: boxes in their order, grids row by row, nested ones and the parts of
// splitters in their place. In whatever order the widgets were made.
void TabAsLaidOut(const QWidget& dialog);

}  // namespace sonavel
