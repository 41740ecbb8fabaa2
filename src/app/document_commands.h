// The command table of the document: saving.
#pragma once

#include <span>

#include "app/document_saver.h"
#include "platform/command_table.h"

namespace sonavel {

std::span<const Command<DocumentSaver>> DocumentCommands();

}  // namespace sonavel
