// Alt keys for every label and button of a dialog, no two alike.
#pragma once

#include <QStringList>
#include <QWidget>

namespace sonavel {

// Puts an ampersand into the texts of the buttons that have none, and of the labels that lead to a
// field. Keys that buttons have already stay theirs, and so do those of `alsoShown`, texts that a
// button shows at other times.
void GiveMnemonics(QWidget& dialog, const QStringList& alsoShown);

}  // namespace sonavel
