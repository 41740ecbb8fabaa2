#include "view/state/scroll_state.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr std::int64_t kLinePixels = 1;
constexpr std::int64_t kPagePixels = 10;  // small on purpose: a page is a nudge, not a screenful

}  // namespace

std::int64_t ScrollState::LastPosition() const {
    return page > 0 ? maximum - page + 1 : maximum;
}

ScrollState ScrollState::Clamped() const {
    ScrollState state = *this;
    state.maximum = std::max(state.maximum, state.minimum);
    state.page = std::clamp<std::int64_t>(state.page, 0, state.Range() + 1);
    state.position =
        std::clamp(state.position, state.minimum, std::max(state.minimum, state.LastPosition()));
    return state;
}

ScrollState ScrollState::WithRange(std::int64_t newMaximum, std::int64_t newPosition) const {
    return ScrollState{0, std::max<std::int64_t>(newMaximum, 0), page, newPosition}.Clamped();
}

ScrollState ScrollState::WithPosition(std::int64_t newPosition) const {
    return ScrollState{minimum, maximum, page, newPosition}.Clamped();
}

ScrollState ScrollState::Stepped(ScrollStep step) const {
    switch (step) {
        case ScrollStep::kLineBack:
            return WithPosition(position - kLinePixels);
        case ScrollStep::kLineForward:
            return WithPosition(position + kLinePixels);
        case ScrollStep::kPageBack:
            return WithPosition(position - kPagePixels);
        case ScrollStep::kPageForward:
            return WithPosition(position + kPagePixels);
        case ScrollStep::kToStart:
            return WithPosition(minimum);
        case ScrollStep::kToEnd:
            return WithPosition(maximum);
    }
    return *this;
}

ScrollState ScrollState::Resized(std::int64_t oldExtent, std::int64_t newExtent) const {
    if (oldExtent < 1 || newExtent < 1) return *this;
    ScrollState state = *this;
    state.maximum = maximum * newExtent / oldExtent;
    if (maximum > 0 && maximum >= page) {
        state.page = page * state.maximum / maximum;
        state.position = position * state.maximum / maximum;
    } else {
        state.page = kWholeRangePage;
    }
    return state.Clamped();
}

}  // namespace sonavel
