// Work that may take long and cannot poll, such as a call that waits for the disk: done on a thread
// of its own while the calling thread keeps its progress window alive.
#pragma once

#include <atomic>
#include <functional>

#include "platform/piece_watch.h"
#include "platform/progress_window.h"

namespace sonavel {

// Returns when the work has. It may look at `cancelled`, which becomes true when the person
// cancels, and end early then; it throws nothing. False when the person has cancelled. Where no
// thread can be had, the calling one does the work.
using BesideWork = std::function<void(const std::atomic<bool>& cancelled)>;
bool DoBeside(ProgressWindow& window, const BesideWork& work);
// Likewise, with what stands for the window's poll.
bool DoBeside(const std::function<bool()>& poll, const BesideWork& work);
// Likewise, of work whose pieces the window shows from 0 to 100, and whose watch says when it is
// not wanted any more.
using WatchedWork = std::function<void(const PieceWatch& watch)>;
bool DoWatchedBeside(ProgressWindow& window, const WatchedWork& work);

}  // namespace sonavel
