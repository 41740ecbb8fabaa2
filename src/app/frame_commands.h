// The command table of the main frame: its child windows, its bars, and recording.
#pragma once

#include <span>

#include "platform/command_table.h"

namespace sonavel {

class CMainFrame;

std::span<const Command<CMainFrame>> FrameCommands();

}  // namespace sonavel
