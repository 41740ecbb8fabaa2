// Whether the source of a 3D editor rests or moves, and the two ends of a moving source's path.
#pragma once

namespace sonavel {

enum class SourceMotion { kPositional = 0, kMoving = 1 };

enum class PathEnd { kStart = 0, kEnd = 1 };

}  // namespace sonavel
