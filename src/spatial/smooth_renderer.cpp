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

std::size_t PlacesFor(std::uint32_t frames) {
    return (std::size_t{frames} + kBlockFrames - 1) / kBlockFrames * kHopsPerBlock + 1;
}

}  // namespace

// What both ears hear of the sound before their responses, with as much before the block as these
// are long.
struct SmoothRenderer::Heard {
    std::array<std::vector<float>, 2> signals;
};

SmoothRenderer::SmoothRenderer(const RangeInput& input, std::shared_ptr<ResponseBank> bank,
                               const SmoothCourse& course)
    : input_(input),
      bank_(std::move(bank)),
      places_(bank_,
              Flight{ExactPath(course.course), input.range.Frames(),
                     static_cast<double>(input.sound.GetSamplesPerSecond()), course.metresPerUnit,
                     course.law},
              PlacesFor(input.range.Frames())) {}

void SmoothRenderer::PutReadFrames(std::int64_t first, std::size_t ear,
                                   std::span<double> reads) const {
    std::size_t i = 0;
    // Before the range the source stands where it begins.
    for (; i < reads.size() && first < 0; ++i, ++first)
        reads[i] = static_cast<double>(first) - places_.At(0).delays[ear];
    while (i < reads.size()) {
        const auto place = static_cast<std::size_t>(first / kHop);
        const double from = places_.At(place).delays[ear];
        const double step = (places_.At(place + 1).delays[ear] - from) / kHop;
        for (std::int64_t k = first % kHop; k < kHop && i < reads.size(); ++k, ++i, ++first)
            reads[i] = static_cast<double>(first) - (from + step * static_cast<double>(k));
    }
}

void SmoothRenderer::Read(std::size_t block, Heard& heard) const {
    const std::size_t taps = bank_->Responses().Taps();
    const std::size_t count = taps + kBlockFrames;
    const std::int64_t first =
        static_cast<std::int64_t>(block) * kBlockFrames - static_cast<std::int64_t>(taps);
    std::vector<double> places(2 * count);
    for (const std::size_t ear : {0u, 1u})
        PutReadFrames(first, ear, std::span(places).subspan(ear * count, count));
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
    std::vector<float> taps(bank_->Responses().Taps());
    std::array<float, kHop> former{};
    std::array<float, kHop> next{};
    for (int hop = 0; hop < kHopsPerBlock; ++hop) {
        const HeardPlace& from = places_.At(block * kHopsPerBlock + hop);
        const HeardPlace& to = places_.At(block * kHopsPerBlock + hop + 1);
        const float* begin = signal.data() + taps.size() + std::ptrdiff_t{hop} * kHop;
        from.blend.Sum(ear, from.gain, taps);
        FilterHop(begin, taps, former);
        next = former;
        if (!to.SoundsLike(from)) {
            to.blend.Sum(ear, to.gain, taps);
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

void SmoothRenderer::Prepare(std::size_t block) const {
    for (int hop = 0; hop <= kHopsPerBlock; ++hop) (void)places_.At(block * kHopsPerBlock + hop);
}

}  // namespace sonavel
