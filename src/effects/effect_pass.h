// One pass of a processor over a range of a sound: its pieces are loaded, computed on all cores as
// far as the effect allows, and stored, while the progress window is kept alive.
#pragma once

#include <array>
#include <cstdint>

#include "effects/effect_table.h"
#include "effects/piece_input.h"
#include "platform/parallel.h"
#include "platform/progress_window.h"
#include "sound/frame_range.h"
#include "sound/pair_buffer.h"
#include "sound/sound.h"

namespace sonavel {

class EffectPass {
  public:
    EffectPass(const EffectTraits& traits, const Sound& sound, FrameRange range,
               EffectProcessor& processor, ProgressWindow& progress);

    // Into the same range of the sound, piece by piece. While the window is polled, and views may
    // paint the sound, nothing is written.
    WorkEnd RunInPlace(Sound& sound);
    // Into pairs of the range's length; the peaks of each channel are noted where the effect needs
    // them.
    WorkEnd RunIntoPairs(PairBuffer& pairs);
    // The greatest magnitudes of a channel before and after a pass into pairs.
    struct Peaks {
        float before = 0;
        float after = 0;
    };
    const Peaks& PeaksOf(unsigned channel) const { return peaks_[channel]; }

  private:
    // A piece, or one channel of it.
    struct Unit {
        std::uint32_t first;
        std::uint32_t frames;
        unsigned firstSlot;
        unsigned slots;
    };

    template <class Store>
    WorkEnd Run(UnitOrder order, const Store& store);
    unsigned Threads() const;
    void ShowEnd();
    std::size_t UnitCount(UnitOrder order) const;
    std::size_t Lanes() const;
    Unit UnitAt(UnitOrder order, std::size_t index) const;
    template <class Store>
    void Compute(const Unit& unit, const Store& store);
    void NotePeaksBefore(const Unit& unit, const EffectPiece& piece);
    Onward ShowBefore(const Unit& unit);
    int PercentOf(std::uint32_t done) const;

    const EffectTraits& traits_;
    const Sound& sound_;
    FrameRange range_;
    EffectProcessor& processor_;
    ProgressWindow& progress_;
    std::uint32_t pieceFrames_;
    PieceInput input_;
    std::size_t pieces_;
    unsigned slots_;
    bool cancelled_ = false;
    // Each changed by its channel alone, which is computed on one thread at a time.
    std::array<Peaks, 2> peaks_{};
};

}  // namespace sonavel
