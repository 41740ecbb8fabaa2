#include "audio/live_loop.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>
#include <utility>

namespace sonavel {
namespace {

constexpr std::uint32_t kPiecesPerSecond = 100;
constexpr std::uint32_t kLeastPiece = 32;
constexpr std::uint32_t kGreatestPiece = 4096;

// Hann's, which has no corner at either end.
std::vector<float> RiseOver(std::uint32_t frames) {
    std::vector<float> rise(frames);
    for (std::uint32_t i = 0; i < frames; ++i)
        rise[i] = static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * (i + 0.5) / frames));
    return rise;
}

// `to` = from where the rise begins to what it was where it ends.
void FadeIn(std::span<const float> rise, std::span<const float> from, std::span<float> to) {
    for (std::size_t i = 0; i < to.size(); ++i) to[i] = from[i] + (to[i] - from[i]) * rise[i / 2];
}

}  // namespace

std::uint32_t LiveLoop::PieceFramesAt(std::uint32_t framesPerSecond) {
    return std::clamp(framesPerSecond / kPiecesPerSecond, kLeastPiece, kGreatestPiece);
}

LiveLoop::LiveLoop(const LiveRange& range, std::unique_ptr<LiveRenderer> untouched)
    : frames_(range.frames),
      pieceFrames_(PieceFramesAt(range.framesPerSecond)),
      untouched_(std::move(untouched)),
      match_(static_cast<double>(pieceFrames_) / std::max(1u, range.framesPerSecond)),
      rise_(RiseOver(pieceFrames_)),
      changed_(std::size_t{2} * pieceFrames_),
      original_(changed_.size()),
      former_(changed_.size()) {}

void LiveLoop::RenderPiece(std::span<float> pairs) try {
    RenderChanged();
    Read(*untouched_, original_);
    match_.Hear(original_, changed_);
    MixBypass();
    std::ranges::transform(changed_, pairs.begin(), [](float value) {
        // What is no number compares false both times.
        return value > 1 ? 1.0f : value >= -1 ? value : value < -1 ? -1.0f : 0.0f;
    });
    position_ = static_cast<std::uint32_t>((std::uint64_t{position_} + pieceFrames_) % frames_);
} catch (const std::bad_alloc&) {
    std::ranges::fill(pairs, 0.0f);
}

// From the position on, and from the beginning again behind the range's end.
void LiveLoop::Read(LiveRenderer& renderer, std::span<float> pairs) {
    std::uint32_t first = position_;
    while (!pairs.empty()) {
        const std::size_t frames = std::min<std::size_t>(pairs.size() / 2, frames_ - first);
        renderer.Render(first, pairs.first(2 * frames));
        pairs = pairs.subspan(2 * frames);
        first = 0;
    }
}

void LiveLoop::RenderChanged() {
    if (!next_) return Read(*now_, changed_);
    Read(*next_, changed_);
    if (now_) {
        Read(*now_, former_);
        FadeIn(rise_, former_, changed_);
    }
    now_ = std::move(next_);
}

// The gain glides as well: it follows the sound.
void LiveLoop::MixBypass() {
    const float gain = match_.GainOfUntouched();
    const float former = std::exchange(heardGain_, gain);
    const Bypass from = std::exchange(heardBypass_, bypass_);
    if (from == Bypass::kOff && bypass_ == Bypass::kOff) return;
    for (std::size_t i = 0; i < original_.size(); ++i)
        original_[i] *= former + (gain - former) * rise_[i / 2];
    if (from == bypass_) {
        changed_ = original_;
    } else if (bypass_ == Bypass::kOn) {
        FadeIn(rise_, changed_, original_);
        changed_ = original_;
    } else {
        FadeIn(rise_, original_, changed_);
    }
}

}  // namespace sonavel
