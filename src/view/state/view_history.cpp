#include "view/state/view_history.h"

#include <algorithm>

namespace sonavel {

void ZoomHistory::Leave(const SeenPlace& place) {
    forward_.clear();
    if (!back_.empty() && back_.back() == place) return;
    back_.push_back(place);
    if (back_.size() > kMost) back_.pop_front();
}

std::optional<SeenPlace> ZoomHistory::Back(const SeenPlace& now) {
    if (back_.empty()) return std::nullopt;
    const SeenPlace place = back_.back();
    back_.pop_back();
    forward_.push_back(now);
    return place;
}

std::optional<SeenPlace> ZoomHistory::Forward(const SeenPlace& now) {
    if (forward_.empty()) return std::nullopt;
    const SeenPlace place = forward_.back();
    forward_.pop_back();
    back_.push_back(now);
    return place;
}

void SelectionHistory::Change(Selection before, Selection after) {
    if (before.IsEmpty() || before.start == after.start || before.end == after.end) return;
    std::erase(past_, before);
    past_.push_front(before);
    if (past_.size() > kMost) past_.pop_back();
}

std::optional<Selection> SelectionHistory::Last(Selection now) {
    std::erase(past_, now);
    if (past_.empty()) return std::nullopt;
    const Selection last = past_.front();
    past_.pop_front();
    if (!now.IsEmpty()) past_.push_back(now);
    return last;
}

}  // namespace sonavel
