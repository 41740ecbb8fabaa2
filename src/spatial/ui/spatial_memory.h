// What the 3D editors remember until the program ends. The main frame owns one and hands it down.
#pragma once

#include <QString>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "spatial/listener.h"
#include "spatial/path_shapes.h"
#include "spatial/place_many.h"
#include "spatial/placing.h"
#include "spatial/presets.h"
#include "spatial/ui/source_motion.h"

namespace sonavel {

struct SystemEditorMemory {
    SystemPreset chosen;
    PathEnd active = PathEnd::kStart;
    QString preset;  // the current one, empty for none
};

struct UserEditorMemory {
    UserPreset points;
    std::vector<std::optional<double>> times{};  // of the points, in seconds
    int current = -1;                            // the index of the selected point
    QString preset;
};

// Of one editor at rest and one moving. Empty before the first dialog.
template <class Memory>
class MemoryByMotion {
  public:
    std::optional<Memory>& operator[](SourceMotion motion) {
        return of_[static_cast<std::size_t>(motion)];
    }

  private:
    std::array<std::optional<Memory>, 2> of_;
};

struct SpatialMemory {
    MemoryByMotion<SystemEditorMemory> system;
    MemoryByMotion<UserEditorMemory> user;
    // How the sources of all editors are heard.
    MemoryByMotion<Placing> heard;
    Listener listener;
    // Lets the listener have the ears that the person has chosen since; null for the table's.
    std::function<void(Listener&)> prepare;
    ShapeNumbers shape;  // of the path that was begun with last
    // All open sounds that can be placed; null where only the active one is known.
    std::function<std::vector<CSoundDoc*>()> openSounds;
    double speakerAngle = 30;  // degrees
    bool beginsLive = false;   // whether editors are heard live as soon as they open
    std::optional<ManyPlacesChoice> places;
};

}  // namespace sonavel
