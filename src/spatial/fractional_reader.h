// Reads a sound between its frames: a windowed sine cardinal (Kaiser's window) of 32 taps, from a
// table of 512 places between two frames.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace sonavel {

inline constexpr int kReaderTaps = 32;
// How many frames before a place and behind it are looked at.
inline constexpr int kReaderBefore = kReaderTaps / 2 - 1;
inline constexpr int kReaderBehind = kReaderTaps / 2;

// out[i] is what lies at places[i] of `frames`. Every place has kReaderBefore frames before it and
// kReaderBehind behind it.
void ReadBetweenFrames(std::span<const float> frames, std::span<const double> places,
                       std::span<float> out);

}  // namespace sonavel
