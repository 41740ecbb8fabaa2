#include "spatial/smooth_renderer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/vector_clones.h"
#include "spatial/fractional_reader.h"

namespace sonavel {
namespace {

constexpr int kHop = kHopFrames;
constexpr int kHopsPerBlock = kBlockFrames / kHop;
static_assert(kHopsPerBlock * kHop == kBlockFrames);

// out[j] = the sum of taps[k] * signal[j - k]; signal[-(taps.size() - 1)] is there.
SONAVEL_VECTOR_CLONES
void FilterHop(const float* signal, std::span<const float> taps, std::span<float, kHop> out) {
    std::array<float, kHop> sum{};
    for (std::size_t k = 0; k < taps.size(); k += 4) {
        const float a = taps[k], b = taps[k + 1], c = taps[k + 2], d = taps[k + 3];
        const float* from = signal - k;
        for (int j = 0; j < kHop; ++j)
            sum[j] += (a * from[j] + b * from[j - 1]) + (c * from[j - 2] + d * from[j - 3]);
    }
    std::copy(sum.begin(), sum.end(), out.begin());
}

// Fades from one to the other and puts the result into every other float, from the first on.
void FadeInto(std::span<const float, kHop> former, std::span<const float, kHop> next, float* out) {
    for (int j = 0; j < kHop; ++j)
        out[2 * j] = former[j] + (next[j] - former[j]) * (static_cast<float>(j) / kHop);
}

}  // namespace

// What both ears hear of the sound before their responses, with as much before the block as these
// are long.
struct SmoothRenderer::Heard {
    std::array<std::vector<float>, 2> signals;
};

SmoothRenderer::SmoothRenderer(const RangeInput& input,
                               std::shared_ptr<const ResponseSet> responses,
                               const SmoothCourse& course)
    : input_(input), bank_(std::move(responses)) {
    const std::uint32_t frames = input.range.Frames();
    const std::size_t blocks = (std::size_t{frames} + kBlockFrames - 1) / kBlockFrames;
    const ExactPath exact(course.course);
    const Flight flight{exact, frames, static_cast<double>(input.sound.GetSamplesPerSecond()),
                        course.metresPerUnit, course.law};
    places_ = HeardPlaces(bank_, flight, blocks * kHopsPerBlock + 1);
    bank_.Compute();
}

double SmoothRenderer::ReadAt(std::int64_t frame, Ear ear) const {
    const auto e = static_cast<std::size_t>(ear);
    // Before the range the source stands where it begins.
    if (frame < 0) return places_.front().readAt[e] + static_cast<double>(frame);
    const std::int64_t place = frame / kHop;
    const double from = places_[place].readAt[e];
    if (frame % kHop == 0) return from;
    return from + (places_[place + 1].readAt[e] - from) * static_cast<double>(frame % kHop) / kHop;
}

void SmoothRenderer::Read(std::size_t block, Heard& heard) const {
    const std::size_t count = bank_.Responses().Taps() + kBlockFrames;
    const std::int64_t first = static_cast<std::int64_t>(block) * kBlockFrames -
                               static_cast<std::int64_t>(bank_.Responses().Taps());
    std::vector<double> places(2 * count);
    for (const Ear ear : kBothEars)
        for (std::size_t i = 0; i < count; ++i)
            places[static_cast<std::size_t>(ear) * count + i] =
                ReadAt(first + static_cast<std::int64_t>(i), ear);
    const auto [least, greatest] = std::minmax_element(places.begin(), places.end());
    const auto from = static_cast<std::int64_t>(std::floor(*least)) - kReaderBefore;
    const auto to = static_cast<std::int64_t>(std::floor(*greatest)) + kReaderBehind + 1;
    std::vector<float> frames(static_cast<std::size_t>(to - from));
    input_.Read(from, frames);
    for (double& place : places) place -= static_cast<double>(from);
    for (const std::size_t ear : {0u, 1u}) {
        heard.signals[ear].resize(count);
        ReadBetweenFrames(frames, std::span(places).subspan(ear * count, count),
                          heard.signals[ear]);
    }
}

void SmoothRenderer::Filter(std::size_t block, Ear ear, std::span<const float> signal,
                            BlockOutput output) const {
    std::vector<float> taps(bank_.Responses().Taps());
    std::array<float, kHop> former{};
    std::array<float, kHop> next{};
    for (int hop = 0; hop < kHopsPerBlock; ++hop) {
        const HeardPlace& from = places_[block * kHopsPerBlock + hop];
        const HeardPlace& to = places_[block * kHopsPerBlock + hop + 1];
        const float* begin = signal.data() + bank_.Responses().Taps() + std::ptrdiff_t{hop} * kHop;
        bank_.Blend(from.blend, ear, from.gain, taps);
        FilterHop(begin, taps, former);
        next = former;
        if (!to.SoundsLike(from)) {
            bank_.Blend(to.blend, ear, to.gain, taps);
            FilterHop(begin, taps, next);
        }
        FadeInto(former, next,
                 output.data() + std::ptrdiff_t{2} * hop * kHop + static_cast<int>(ear));
    }
}

void SmoothRenderer::Render(std::size_t block, BlockOutput output) const {
    Heard heard;
    Read(block, heard);
    for (const Ear ear : kBothEars)
        Filter(block, ear, heard.signals[static_cast<std::size_t>(ear)], output);
}

}  // namespace sonavel
