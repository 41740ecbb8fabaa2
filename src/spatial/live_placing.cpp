#include "spatial/live_placing.h"

#include "spatial/placed_range.h"

namespace sonavel {

std::unique_ptr<LiveRenderer> LivePlacing::MakeLatest() {
    const Placing* const placing = placing_.Take();
    if (!placing || placing->points.empty()) return nullptr;
    const RangeInput input{HeardSound(), HeardFrames()};
    auto blocks = MakeRenderer(*placing, input, listener_);
    if (!blocks) return nullptr;
    return std::make_unique<PlacedRange>(*std::move(blocks), input);
}

}  // namespace sonavel
