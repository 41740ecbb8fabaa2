#include "spatial/live_placing.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>

#include "audio/untouched_range.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

class PlacedRange : public LiveRenderer {
  public:
    PlacedRange(std::unique_ptr<const BlockRenderer> blocks, unsigned bits)
        : blocks_(std::move(blocks)),
          share_((bits == ByteSample::kBits ? kEightBitScale : 1) / WordSample::kHalfScale) {}

    void Render(std::uint32_t first, std::span<float> pairs) override {
        while (!pairs.empty()) {
            MoveTo(first / kBlockFrames);
            const std::size_t from = std::size_t{2} * (first % kBlockFrames);
            const std::size_t count = std::min(pairs.size(), pairs_.size() - from);
            for (std::size_t i = 0; i < count; ++i) pairs[i] = pairs_[from + i] * share_;
            pairs = pairs.subspan(count);
            first += static_cast<std::uint32_t>(count / 2);
        }
    }

  private:
    void MoveTo(std::size_t block) {
        if (rendered_ == block) return;
        blocks_->Render(block, pairs_);
        rendered_ = block;
    }

    std::unique_ptr<const BlockRenderer> blocks_;
    float share_;
    std::optional<std::size_t> rendered_;
    std::array<float, std::size_t{2} * kBlockFrames> pairs_{};
};

}  // namespace

std::unique_ptr<LiveRenderer> LivePlacing::MakeUntouched() try {
    return std::make_unique<UntouchedRange>(input_.sound, input_.range);
} catch (const std::bad_alloc&) {
    return nullptr;
}

std::unique_ptr<LiveRenderer> LivePlacing::MakeLatest(std::uint32_t at) try {
    const Placing* const placing = placing_.Take();
    if (!placing || placing->points.empty()) return nullptr;
    auto blocks = MakeRenderer(*placing, input_, listener_);
    if (!blocks) return nullptr;
    auto made = std::make_unique<PlacedRange>(std::move(*blocks), input_.sound.GetBits());
    std::array<float, 2> frame{};
    made->Render(at, frame);
    return made;
} catch (const std::bad_alloc&) {
    return nullptr;
}

}  // namespace sonavel
