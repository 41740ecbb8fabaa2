// 3D sound on a document: the selection, or the whole sound, rendered to stereo for headphones as
// heard from a fixed or a moving source.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "document/sound_doc.h"
#include "spatial/direction.h"
#include "spatial/placing.h"

namespace sonavel {

// Suffixes of the progress window's caption.
namespace spatial_title {
inline constexpr std::string_view kSystemPositional = " System Positional Sound";
inline constexpr std::string_view kUserPositional = " User Positional Sound";
inline constexpr std::string_view kSystemMoving = "System Moving Sound";
inline constexpr std::string_view kUserMoving = "User Moving Sound";
}  // namespace spatial_title

enum class SpatialOutcome {
    kApply,          // the document becomes 16-bit stereo and holds the result; one undo step
    kPreview,        // the preview sound holds the result
    kPlayedPreview,  // likewise, and plays
};

struct SpatialTarget {
    CSoundDoc& document;
    std::uint32_t selectionStart = 0;
    std::uint32_t selectionEnd = 0;
    std::string_view title;
    SpatialOutcome outcome = SpatialOutcome::kApply;
};

// All read channel 0 alone. They fail, and do nothing, for an empty sound, one too long to become
// 16-bit stereo, without memory, or when an undo step was refused. A cancelled run ends in silence
// and counts as done.
Outcome SpatializePositional(const SpatialTarget& target, const SourcePosition& position);
// Along the points in order, at constant speed; at least one point.
Outcome SpatializeMoving(const SpatialTarget& target, std::span<const SourcePosition> path);
// As the placing says; without memory for the listener's responses it fails, too.
Outcome SpatializePlaced(const SpatialTarget& target, const Placing& placing, Listener& listener);

// What SpatializePlaced() would make of the whole sound, with its markers, as a sound of its own.
// Fails likewise; a cancelled run gives nothing.
Result<Sound> PlacedCopy(const Sound& sound, const Placing& placing, Listener& listener,
                         ProgressWindow& progress);

}  // namespace sonavel
