// Chunks of a RIFF file, built into a block of bytes.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "exchange/sound_extras.h"

namespace sonavel {

inline constexpr FourCc kSamplerChunk = MakeFourCc("smpl");

// With a pad byte where the content is of odd size. The content is shorter than 4 GiB.
void AppendRiffChunk(FourCc id, std::span<const std::uint8_t> content,
                     std::vector<std::uint8_t>& to);
void AppendRiffList(std::string_view form, std::span<const std::uint8_t> content,
                    std::vector<std::uint8_t>& to);

// "cue " and a list "adtl" in which the lengths precede the labels. Nothing for no markers. What
// lies behind the last of `frames` or beyond 32 bits is left out.
void AppendMarkers(const std::vector<SoundChapter>& markers, std::uint64_t frames,
                   std::vector<std::uint8_t>& to);

// A chunk "smpl" as it came, but its loops where the regions "Loop 1", "Loop 2" are now.
std::vector<std::uint8_t> SamplerWithLoops(std::vector<std::uint8_t> smpl,
                                           const std::vector<SoundChapter>& markers);
// The markers without those that a kept chunk "smpl" holds.
std::vector<SoundChapter> MarkersBesideLoops(const SoundExtras& extras);

}  // namespace sonavel
