// The comments of FLAC, Ogg Vorbis and Opus files: tags, and chapters as CHAPTER001=00:01:02.500
// with CHAPTER001NAME.
#pragma once

#include <cstdint>
#include <span>

#include "exchange/random_bytes.h"
#include "exchange/sound_extras.h"

namespace sonavel {

// Adds what a comment block holds, which begins with the name of the program that wrote it. `rate`,
// in frames a second, turns the chapters' times into frames; 0 leaves them out.
void AddVorbisComments(std::span<const std::uint8_t> block, std::uint32_t rate,
                       ExtrasKeeper& keeper);

// The frame at that time of a chapter, to the nearest one.
std::uint64_t ChapterFrame(std::uint64_t nanoseconds, std::uint32_t rate);

// Finds the comment block of a FLAC file, also behind an ID3 tag.
void ReadFlacExtras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper);
// Puts the comment packet of the first stream of an Ogg file together from its pages: Vorbis, Opus
// or FLAC.
void ReadOggExtras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper);

}  // namespace sonavel
