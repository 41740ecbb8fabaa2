#include "sound/marker_list.h"

#include <algorithm>
#include <limits>

#include "sound/four_cc.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kLastPosition = std::numeric_limits<std::uint32_t>::max();

void MoveTo(Marker& marker, std::uint32_t position) {
    marker.position = position;
    marker.sampleOffset = position;
}

Marker* FindIn(std::vector<Marker>& markers, std::uint32_t id) {
    const auto found = std::ranges::find(markers, id, &Marker::id);
    return found == markers.end() ? nullptr : &*found;
}

// Where a place goes when [start, end) becomes `frames` long.
std::uint32_t Stretched(std::uint64_t place, std::uint32_t start, std::uint32_t end,
                        std::uint32_t frames) {
    if (place <= start) return static_cast<std::uint32_t>(place);
    const std::uint64_t before = end - start;
    const std::uint64_t moved = place >= end
                                    ? place - before + frames
                                    : start + ((place - start) * frames + before / 2) / before;
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(moved, kLastPosition));
}

}  // namespace

std::uint32_t MarkerList::Add(std::uint32_t position, std::string_view name, std::uint32_t length) {
    const auto id = static_cast<std::uint32_t>(markers_.size() + 1);
    Marker marker;
    marker.id = marker.labelId = marker.textId = id;
    marker.chunkId = kDataChunk;
    marker.purpose = kRegionPurpose;
    marker.length = length;
    marker.name = name.empty() ? "Marker " + std::to_string(id) : std::string(name);
    MoveTo(marker, position);
    markers_.push_back(std::move(marker));
    return id;
}

bool MarkerList::Set(std::uint32_t id, std::uint32_t position, std::string_view name,
                     std::uint32_t length) {
    Marker* marker = FindIn(markers_, id);
    if (!marker) return false;
    MoveTo(*marker, position);
    if (!name.empty()) marker->name = name;
    marker->length = length;
    return true;
}

bool MarkerList::Remove(std::uint32_t id) {
    const auto found = std::ranges::find(markers_, id, &Marker::id);
    if (found == markers_.end()) return false;
    markers_.erase(found);
    return true;
}

const Marker* MarkerList::Find(std::uint32_t id) const {
    const auto found = std::ranges::find(markers_, id, &Marker::id);
    return found == markers_.end() ? nullptr : &*found;
}

std::uint32_t MarkerList::Before(std::uint32_t position) const {
    std::uint32_t greatest = 0;
    for (const Marker& marker : markers_)
        if (marker.position <= position) greatest = std::max(greatest, marker.position);
    return greatest;
}

std::uint32_t MarkerList::After(std::uint32_t position, std::uint32_t frameCount) const {
    std::uint32_t least = frameCount;
    for (const Marker& marker : markers_)
        if (marker.position > position) least = std::min(least, marker.position);
    return least;
}

void MarkerList::ShiftForInsertion(std::uint32_t frame, std::uint32_t frames) {
    for (Marker& marker : markers_) {
        if (marker.position < frame) continue;
        // A file may hold a position near the end of the range; it must not wrap to the front.
        MoveTo(marker, marker.position + std::min(frames, kLastPosition - marker.position));
    }
}

void MarkerList::ShiftForRemoval(std::uint32_t start, std::uint32_t end) {
    if (start >= end) return;
    std::erase_if(markers_, [=](const Marker& marker) {
        return marker.position >= start && marker.position < end;
    });
    for (Marker& marker : markers_)
        if (marker.position >= end) MoveTo(marker, marker.position - (end - start));
}

void MarkerList::ShiftForStretch(std::uint32_t start, std::uint32_t end, std::uint32_t frames) {
    if (start >= end) return;
    for (Marker& marker : markers_) {
        const std::uint64_t regionEnd = std::uint64_t{marker.position} + marker.length;
        const std::uint32_t position = Stretched(marker.position, start, end, frames);
        if (marker.length > 0) marker.length = Stretched(regionEnd, start, end, frames) - position;
        MoveTo(marker, position);
    }
}

}  // namespace sonavel
