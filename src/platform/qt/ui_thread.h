// The way onto the user-interface thread for threads of the sound device.
#pragma once

#include <functional>

namespace sonavel {

// Runs the task from the event loop of the user-interface thread, after what is queued already. May
// be called on any thread; a task posted after the application object is gone is dropped.
void PostToUiThread(std::function<void()> task);

}  // namespace sonavel
