// The command table of the main frame: its child windows, its bars, and recording.
#pragma once

#include <span>

#include "platform/command_table.h"

namespace sonavel {

class MainFrame;

std::span<const Command<MainFrame>> FrameCommands();

}  // namespace sonavel
