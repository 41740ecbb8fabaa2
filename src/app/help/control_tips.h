// What the controls of the dialogs do, one sentence each, for their tool tips. The effects and the
// preferences have theirs in tables of their own.
#pragma once

#include <QDialog>

namespace sonavel {

// Gives a tool tip to those controls that have none, by the names that screen readers read; and
// a name to those parts of a control that its label does not reach.
void AddControlTips(QDialog& dialog);

}  // namespace sonavel
