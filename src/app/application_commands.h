// The command table of the application.
#pragma once

#include <span>

#include "platform/command_table.h"

namespace sonavel {

class Application;

std::span<const Command<Application>> ApplicationCommands();

}  // namespace sonavel
