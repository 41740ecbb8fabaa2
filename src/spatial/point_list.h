// Points and paths by name from a table of numbers, and the names of the files that sounds placed
// there get.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "spatial/direction.h"

namespace sonavel {

struct NamedPoint {
    std::string name;  // empty: the sound's own
    SourcePosition position;
    std::vector<SourcePosition> onward{};  // of a path: the points behind the first one

    bool operator==(const NamedPoint&) const = default;
};

inline constexpr std::size_t kMostListedPoints = 10000;

// Of comma-separated text, a point a line: x,y,z or name,x,y,z, in scene units; three numbers more
// for each further point make it a path. A name in quotes may hold commas and, doubled, quotes.
// Empty lines and a first line "x,y,z" or "name,x,y,z" do not count. Fails for a line of another
// kind, naming it, for none and for more than kMostListedPoints.
Result<std::vector<NamedPoint>> ParsePoints(std::string_view text);

// A name for each point or path, by a pattern in which {name}, {number}, {azimuth}, {elevation} and
// {distance} stand for the point's, or those of a path's first point: the number with leading
// zeros, the angles in whole degrees, the distance with two decimals. What no file name may hold
// becomes "_"; a name that comes again gets
// "_2", "_3" behind it. Fails for a field of another name and for a name of more than 200 bytes.
Result<std::vector<std::string>> NamesOfPlaces(std::string_view pattern,
                                               const std::vector<NamedPoint>& points,
                                               std::string_view soundName);

}  // namespace sonavel
