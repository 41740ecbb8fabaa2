// What a press of the mouse, its moves and its release mean, one small class a gesture: frames in,
// intent out. No gesture knows pixels, the view or a toolkit.
#pragma once

#include <cstdint>
#include <optional>

#include "view/state/selection.h"

namespace sonavel {

// What the view is to show after an event; what is absent stays as it is.
struct GestureIntent {
    std::optional<Selection> selection;
    std::optional<std::uint32_t> cursor;

    struct MarkerMove {
        std::uint32_t id = 0;
        std::uint32_t position = 0;

        bool operator==(const MarkerMove&) const = default;
    };
    std::optional<MarkerMove> marker;

    bool operator==(const GestureIntent&) const = default;
};

class Gesture {
  public:
    virtual ~Gesture() = default;

    virtual GestureIntent Press(std::uint32_t frame) = 0;
    virtual GestureIntent Move(std::uint32_t frame) = 0;
    // By default the release means what a last move there would.
    virtual GestureIntent Release(std::uint32_t frame) { return Move(frame); }
};

// A click sets the cursor and drops the selection; a drag selects from the press on.
class SelectGesture : public Gesture {
  public:
    GestureIntent Press(std::uint32_t frame) override;
    GestureIntent Move(std::uint32_t frame) override;

  private:
    std::uint32_t anchor_ = 0;
};

// Moves the nearer end of the selection to the pointer; without a selection it selects from the
// cursor.
class ExtendGesture : public Gesture {
  public:
    ExtendGesture(Selection selection, std::uint32_t cursor);
    GestureIntent Press(std::uint32_t frame) override;
    GestureIntent Move(std::uint32_t frame) override;

  private:
    Selection selection_;
    std::uint32_t cursor_;
    std::uint32_t fixed_ = 0;
};

// Moves one edge of the selection; pulled over the other edge it goes on from there.
class DragEdgeGesture : public Gesture {
  public:
    explicit DragEdgeGesture(std::uint32_t fixedEdge) : fixed_(fixedEdge) {}
    // A press alone moves nothing, so that a click on an edge keeps it to the frame.
    GestureIntent Press(std::uint32_t frame) override;
    GestureIntent Move(std::uint32_t frame) override;

  private:
    std::uint32_t fixed_;
    std::uint32_t pressed_ = 0;
    bool moved_ = false;
};

// Moves a marker's flag by as much as the pointer moves, up to the frame `furthest`.
class DragMarkerGesture : public Gesture {
  public:
    DragMarkerGesture(std::uint32_t id, std::uint32_t position, std::uint32_t furthest);
    GestureIntent Press(std::uint32_t frame) override;
    GestureIntent Move(std::uint32_t frame) override;

  private:
    std::uint32_t id_;
    std::uint32_t position_;
    std::uint32_t furthest_;
    std::uint32_t pressed_ = 0;
    bool moved_ = false;
};

}  // namespace sonavel
