// 3D sound as commands of a script.
#pragma once

#include "document/step_words.h"
#include "spatial/spatializer.h"

namespace sonavel {

// No lines where a script cannot say it: for other ears than the table's, where they are heard, and
// for numbers with more decimals than a script takes.
StepWords WordsOf(const SpatialTarget& target, const Placing& placing, const Listener& listener);
StepWords WordsOfCrosstalk(std::uint32_t selectionStart, std::uint32_t selectionEnd, double angle,
                           const Listener& listener);

// Of coordinates, which are numbers of single precision.
inline constexpr int kCoordinateDecimals = 9;

}  // namespace sonavel
