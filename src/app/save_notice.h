// What the Save As dialog says about the save that it is about to ask for.
#pragma once

#include "app/save_as_dialog.h"
#include "workspace/workspace.h"

namespace sonavel {

// For the workspace's active sound. A name that no format goes by cannot be saved, nor can a file
// that is open in another window, nor can a sound be converted while it is being recorded.
SaveNotice NoticeOfSave(Workspace& workspace, const SaveAsChoice& choice);

}  // namespace sonavel
