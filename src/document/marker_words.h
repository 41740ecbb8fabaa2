// How a script makes one list of markers of another.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sound/marker_list.h"

namespace sonavel {

// The commands, which give exactly `now`; nothing where none do.
std::optional<std::vector<std::string>> MarkerWords(const MarkerList& before,
                                                    const MarkerList& now);

}  // namespace sonavel
