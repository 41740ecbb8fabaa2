// When the commands of a view are offered: null where one is, else the reason why it is not.
#pragma once

#include "view/sound_view.h"

namespace sonavel::view_condition {

using Condition = const char* (*)(const CSoundView&);

const char* IsIdle(const CSoundView& view);
const char* HasSound(const CSoundView& view);
const char* HasSelection(const CSoundView& view);
const char* HasClip(const CSoundView& view);
const char* CanPlay(const CSoundView& view);
const char* CanStop(const CSoundView& view);
const char* CanPause(const CSoundView& view);
const char* CanUseSpace(const CSoundView& view);
const char* CanRemove(const CSoundView& view);
const char* CanPaste(const CSoundView& view);
const char* CanOverwrite(const CSoundView& view);
const char* CanPasteNew(const CSoundView& view);
const char* CanUndo(const CSoundView& view);
const char* CanRedo(const CSoundView& view);
const char* HasMarkers(const CSoundView& view);
const char* CanDelete(const CSoundView& view);
const char* HadSelection(const CSoundView& view);
const char* HasZoomBack(const CSoundView& view);
const char* HasZoomForward(const CSoundView& view);
const char* CanMakeRegion(const CSoundView& view);

}  // namespace sonavel::view_condition
