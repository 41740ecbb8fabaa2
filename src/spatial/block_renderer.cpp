#include "spatial/block_renderer.h"

#include <algorithm>
#include <array>
#include <new>
#include <vector>

#include "platform/parallel.h"
#include "sound/pair_buffer.h"

namespace sonavel {

FilteredBlocks::FilteredBlocks(const RangeInput& input, std::unique_ptr<const BlockFilter> filter)
    : input_(input), filter_(std::move(filter)) {}

void FilteredBlocks::Render(std::size_t block, BlockOutput output) const {
    std::array<float, kBlockInput> samples;
    input_.ReadBlock(block, samples);
    filter_->Process(samples, block, output);
}

RenderedBlocks RenderBlocks(const BlockRenderer& renderer, std::uint32_t framesPerSecond,
                            std::span<float> pairs, ProgressWindow& progress) {
    constexpr std::size_t kBlockFloats = std::size_t{2} * kBlockFrames;
    const std::size_t blocks = (pairs.size() + kBlockFloats - 1) / kBlockFloats;
    const std::size_t frames = pairs.size() / 2;
    std::vector<float> peaks(blocks);
    const auto compute = [&](std::size_t index) {
        std::array<float, kBlockFloats> block;
        renderer.Render(index, block);
        const auto to = pairs.subspan(index * kBlockFloats);
        const auto heard = std::span(block).first(std::min(block.size(), to.size()));
        std::ranges::copy(heard, to.begin());
        peaks[index] = PeakOf(heard);
    };
    const auto before = [&](std::size_t index) {
        if (index == 0) return Onward::kGoOn;
        if (progress.Poll()) return Onward::kStop;
        progress.SetPosition(static_cast<int>(index * kBlockFloats * 100 / frames / 2));
        return Onward::kGoOn;
    };
    // Less than a second's sound is done before another thread has started.
    const unsigned threads = frames < framesPerSecond ? 1 : ThreadsToUse();
    const WorkDone done =
        ComputeUnits({.count = blocks, .compute = compute, .before = before}, threads);
    if (done.end == WorkEnd::kOutOfMemory) throw std::bad_alloc();
    if (done.units < blocks) std::ranges::fill(pairs.subspan(done.units * kBlockFloats), 0.0f);
    progress.SetPosition(100);
    return {PeakOf(std::span(peaks).first(done.units)),
            done.units < blocks ? RenderEnd::kCancelled : RenderEnd::kWhole};
}

}  // namespace sonavel
