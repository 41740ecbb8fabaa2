// Why commands of the view are refused, in the same words everywhere.
#pragma once

namespace sonavel::refusal {

inline constexpr char kNoSound[] = "The document has no sound.";
inline constexpr char kNoMarkers[] = "The sound has no markers.";
inline constexpr char kNoSelection[] = "Nothing is selected.";

}  // namespace sonavel::refusal
