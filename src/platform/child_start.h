// How a child process comes to be: its descriptors, its signals and its limits.
#pragma once

#include <sys/types.h>

#include "platform/child_process.h"

namespace sonavel {

// This side's ends; -1 where there is none.
struct ChildDescriptors {
    int input = -1;
    int output = -1;
    int error = -1;
};

// The child's process id; -1 when it cannot be started, and then no descriptor is left open.
pid_t StartChild(const ChildCommand& command, ChildDescriptors& ours);

}  // namespace sonavel
