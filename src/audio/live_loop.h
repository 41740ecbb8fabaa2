// A range that is heard over and over while its processing changes: what is rendered next, piece by
// piece. From one setting to the next it glides within a piece, and it can be compared with the
// untouched range at the same loudness.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "audio/loudness_match.h"

namespace sonavel {

// The range as one setting makes it. Used by one thread at a time.
class LiveRenderer {
  public:
    virtual ~LiveRenderer() = default;

    // The range's frames from `first` on, left and right of each, as shares of full scale, which
    // may lie beyond it. They follow those asked for last, or begin the range anew; after that,
    // and at first, they may also begin anywhere. Throws std::bad_alloc alone.
    virtual void Render(std::uint32_t first, std::span<float> pairs) = 0;

    // Does what has to be done to render from about that frame on, so that the first Render() takes
    // no longer than those behind it. Before it is heard, and on another thread. Throws
    // std::bad_alloc alone.
    virtual void Prepare(std::uint32_t first) {
        std::array<float, 2> frame{};
        Render(first, frame);
    }
};

enum class Bypass { kOff, kOn };

struct LiveRange {
    std::uint32_t frames;
    std::uint32_t framesPerSecond;
};

class LiveLoop {
  public:
    // 10 ms: short enough to be heard at once, long enough for a glide that does not click.
    static std::uint32_t PieceFramesAt(std::uint32_t framesPerSecond);

    // `untouched` renders the range as it is. The range is not empty.
    LiveLoop(const LiveRange& range, std::unique_ptr<LiveRenderer> untouched);

    // What is heard from the next piece on, in which it fades in over what was heard before.
    void Change(std::unique_ptr<LiveRenderer> next) { next_ = std::move(next); }
    // Likewise.
    void SetBypass(Bypass bypass) { bypass_ = bypass; }

    // Whether there is something to render.
    bool IsReady() const { return now_ || next_; }
    std::uint32_t PieceFrames() const { return pieceFrames_; }
    // The frame of the range with which the next piece begins.
    std::uint32_t Position() const { return position_; }
    // PieceFrames() pairs, held at full scale. Silence where the memory is short.
    void RenderPiece(std::span<float> pairs);

  private:
    void Read(LiveRenderer& renderer, std::span<float> pairs);
    void RenderChanged();
    void MixBypass();

    std::uint32_t frames_;
    std::uint32_t pieceFrames_;
    std::unique_ptr<LiveRenderer> untouched_;
    std::unique_ptr<LiveRenderer> now_;
    std::unique_ptr<LiveRenderer> next_;
    Bypass bypass_ = Bypass::kOff;
    Bypass heardBypass_ = Bypass::kOff;
    LoudnessMatch match_;
    float heardGain_ = 1;
    std::uint32_t position_ = 0;
    // From 0 to 1 over a piece.
    std::vector<float> rise_;
    std::vector<float> changed_;
    std::vector<float> original_;
    std::vector<float> former_;
};

}  // namespace sonavel
