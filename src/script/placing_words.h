// How a source is placed, as words of a script say it: coordinates and the keys behind them.
#pragma once

#include <string>
#include <vector>

#include "script/command_row.h"
#include "spatial/placing.h"

namespace sonavel::script {

// A rule of one coordinate for each name, in scene units.
std::vector<PositionalRule> Coordinates(const std::vector<std::string>& names);
// smooth=, and of a path doppler=, metres-per-unit= and curve= too.
std::vector<KeyRule> PlacingKeys(PlacingKind kind);

// From the positional words behind the first `skipped` ones and the keys.
Placing PlacingFrom(PlacingKind kind, const Arguments& words, std::size_t skipped = 0);

}  // namespace sonavel::script
