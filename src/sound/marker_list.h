// The named markers of a sound, in the order in which they were added.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sonavel {

// A cue point with its label and its region, holding what the chunks "cue ", "labl" and "ltxt"
// hold.
struct Marker {
    std::uint32_t id = 0;
    std::uint32_t position = 0;  // frame
    std::uint32_t chunkId = 0;   // "data"
    std::uint32_t chunkStart = 0;
    std::uint32_t blockStart = 0;
    std::uint32_t sampleOffset = 0;  // the position again
    std::uint32_t labelId = 0;
    std::string name;  // bytes as read or typed; DisplayText() gives what a person sees
    std::uint32_t textId = 0;
    std::uint32_t length = 0;   // frames of the marked region, 0 for a plain marker
    std::uint32_t purpose = 0;  // "rgn "; 0 when the file had no "ltxt" for it
    std::uint32_t countryAndLanguage = 0;
    std::uint32_t dialectAndCodePage = 0;

    bool operator==(const Marker&) const = default;
};

class MarkerList {
  public:
    // The new marker's id is the count + 1, even where that id exists; an empty name becomes
    // "Marker %d" with the id. Returns the id.
    std::uint32_t Add(std::uint32_t position, std::string_view name, std::uint32_t length);
    // Changes the first marker of that id; an empty name keeps the old one. False when there is
    // none.
    bool Set(std::uint32_t id, std::uint32_t position, std::string_view name, std::uint32_t length);
    // Removes the first marker of that id and renumbers nothing. False when there is none.
    bool Remove(std::uint32_t id);
    const Marker* Find(std::uint32_t id) const;

    // The greatest marker position that is <= position and > 0; 0 when there is none.
    std::uint32_t Before(std::uint32_t position) const;
    // The least marker position that is > position and < frameCount; frameCount when there is none.
    std::uint32_t After(std::uint32_t position, std::uint32_t frameCount) const;

    // Markers at or behind `frame` move by `frames`.
    void ShiftForInsertion(std::uint32_t frame, std::uint32_t frames);
    // Markers inside [start, end) are dropped, those at or behind `end` move down.
    void ShiftForRemoval(std::uint32_t start, std::uint32_t end);
    // The frames [start, end) have become `frames`: markers inside keep their share of the way,
    // those at or behind `end` move along, and regions end where their last frame has gone.
    void ShiftForStretch(std::uint32_t start, std::uint32_t end, std::uint32_t frames);

    const std::vector<Marker>& All() const { return markers_; }
    std::vector<Marker>& All() { return markers_; }
    bool Empty() const { return markers_.empty(); }
    std::size_t Count() const { return markers_.size(); }
    void Clear() { markers_.clear(); }

    bool operator==(const MarkerList&) const = default;

  private:
    std::vector<Marker> markers_;
};

}  // namespace sonavel
