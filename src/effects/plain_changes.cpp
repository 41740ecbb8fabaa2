#include "effects/plain_changes.h"

#include <algorithm>
#include <array>

namespace sonavel {
namespace {

constexpr int kHalfWay = 50;  // percent, where measuring ends and changing begins

// What only looks at the frames puts them nowhere.
class NoSink : public RangeSink {
  public:
    void Put(std::uint32_t, std::span<const float>) override {}
};

}  // namespace

Outcome Mute(const RangeWork& work, RangeSink& sink) {
    return ChangePieces(work, sink, Cancel::kIgnored,
                        [](const RangePiece& piece) { std::ranges::fill(piece.shares, 0.0f); });
}

Outcome Invert(const RangeWork& work, RangeSink& sink) {
    return ChangePieces(work, sink, Cancel::kIgnored, [](const RangePiece& piece) {
        for (float& share : piece.shares) share = -share;
    });
}

Outcome RemoveOffset(const RangeWork& work, RangeSink& sink) {
    const unsigned channels = work.Channels();
    std::array<double, 2> sums{};
    NoSink none;
    Outcome measured = ChangeInOrder(work, none,
                                     [&](const RangePiece& piece) {
                                         for (std::size_t i = 0; i < piece.shares.size(); ++i)
                                             sums[i % channels] +=
                                                 static_cast<double>(piece.shares[i]);
                                     },
                                     {0, kHalfWay});
    if (!measured) return measured;
    const std::array<float, 2> means = {static_cast<float>(sums[0] / work.Frames()),
                                        static_cast<float>(sums[1] / work.Frames())};
    return ChangePieces(work, sink, Cancel::kIgnored,
                        [&](const RangePiece& piece) {
                            for (std::size_t i = 0; i < piece.shares.size(); ++i)
                                piece.shares[i] -= means[i % channels];
                        },
                        {kHalfWay, 100});
}

Outcome Reverse(const RangeWork& work, RangeSink& sink) {
    const unsigned channels = work.Channels();
    return ChangePieces(work, sink, Cancel::kHeeded, [&](const RangePiece& piece) {
        const auto frames = static_cast<std::uint32_t>(piece.shares.size() / channels);
        work.Read(work.Frames() - piece.first - frames, piece.shares);
        std::ranges::reverse(piece.shares);
        if (channels == 2)
            for (std::size_t i = 0; i < piece.shares.size(); i += 2)
                std::swap(piece.shares[i], piece.shares[i + 1]);
    });
}

}  // namespace sonavel
