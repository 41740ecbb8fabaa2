#include "view/input/gestures.h"

#include <algorithm>

namespace sonavel {
namespace {

GestureIntent Select(std::uint32_t a, std::uint32_t b) {
    GestureIntent intent;
    intent.selection = RangeBetween(a, b);
    return intent;
}

std::uint32_t Distance(std::uint32_t a, std::uint32_t b) {
    return a > b ? a - b : b - a;
}

}  // namespace

GestureIntent SelectGesture::Press(std::uint32_t frame) {
    anchor_ = frame;
    GestureIntent intent = Select(frame, frame);
    intent.cursor = frame;
    return intent;
}

GestureIntent SelectGesture::Move(std::uint32_t frame) {
    return Select(anchor_, frame);
}

ExtendGesture::ExtendGesture(Selection selection, std::uint32_t cursor)
    : selection_(selection), cursor_(cursor) {}

GestureIntent ExtendGesture::Press(std::uint32_t frame) {
    if (selection_.IsEmpty())
        fixed_ = cursor_;
    else if (Distance(frame, selection_.start) < Distance(frame, selection_.end))
        fixed_ = selection_.end;
    else
        fixed_ = selection_.start;
    return Move(frame);
}

GestureIntent ExtendGesture::Move(std::uint32_t frame) {
    return Select(fixed_, frame);
}

GestureIntent DragEdgeGesture::Press(std::uint32_t frame) {
    pressed_ = frame;
    return {};
}

GestureIntent DragEdgeGesture::Move(std::uint32_t frame) {
    if (!moved_ && frame == pressed_) return {};
    moved_ = true;
    return Select(fixed_, frame);
}

DragMarkerGesture::DragMarkerGesture(std::uint32_t id, std::uint32_t position,
                                     std::uint32_t furthest)
    : id_(id), position_(position), furthest_(furthest) {}

GestureIntent DragMarkerGesture::Press(std::uint32_t frame) {
    pressed_ = frame;
    return {};
}

GestureIntent DragMarkerGesture::Move(std::uint32_t frame) {
    if (!moved_ && frame == pressed_) return {};
    moved_ = true;
    const std::int64_t moved = std::int64_t{position_} + frame - pressed_;
    GestureIntent intent;
    intent.marker = {id_, static_cast<std::uint32_t>(
                              std::clamp<std::int64_t>(moved, 0, std::int64_t{furthest_}))};
    return intent;
}

}  // namespace sonavel
