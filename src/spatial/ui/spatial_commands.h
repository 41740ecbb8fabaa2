// The commands of the menu "3D Sound": each opens its editor over a document and its view.
#pragma once

#include <span>

#include "platform/command_table.h"
#include "spatial/ui/spatial_memory.h"
#include "view/sound_view.h"

namespace sonavel {

namespace spatial_command {
enum Id : int {
    kSystemPositional = 32890,
    kUserPositional = 32891,
    kSystemMoving = 32892,
    kUserMoving = 32893,
    kCrosstalk = 33300,
    kPlaceMany = 33301,
    kScene = 33302,  // of the programs that know all open sounds
    kLiveAtOnce = 33303,
};
}  // namespace spatial_command

struct SpatialCommandTarget {
    CSoundDoc& document;
    CSoundView& view;
    SpatialMemory& memory;
};

// Offered while there is sound and it is not being recorded.
std::span<const Command<SpatialCommandTarget>> SpatialCommandTable();

class SpatialCommands : public CommandTarget {
  public:
    SpatialCommands(CSoundDoc& document, CSoundView& view, SpatialMemory& memory);

    bool HandlesCommand(int id) const override { return commands_.HandlesCommand(id); }
    CommandState StateOfCommand(int id) const override { return commands_.StateOfCommand(id); }
    std::string MenuTextOfCommand(int id) const override { return commands_.MenuTextOfCommand(id); }
    Outcome RunCommand(int id) override { return commands_.RunCommand(id); }

  private:
    SpatialCommandTarget target_;
    TableCommandTarget<SpatialCommandTarget> commands_;
};

}  // namespace sonavel
