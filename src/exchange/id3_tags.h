// ID3 tags of MP3 files, and of chunks of WAV and AIFF files: versions 2.2 to 2.4 and version 1.
#pragma once

#include <cstdint>
#include <span>

#include "exchange/random_bytes.h"
#include "exchange/sound_extras.h"

namespace sonavel {

// What of a tag was passed over.
struct Id3Rest {
    bool pictures = false;
    bool others = false;  // lyrics, ratings, private data
};

// Adds the tags and chapters of a tag of version 2 that begins the bytes; they may be cut short.
// Texts that the editor has no word for are tags by the name of their frame, "TENC"; a text with a
// name of its own is a tag by that.
// `rate`, in frames a second, turns the chapters' milliseconds into frames; 0 leaves them out.
Id3Rest AddId3Tags(std::span<const std::uint8_t> bytes, std::uint32_t rate, ExtrasKeeper& keeper);

// The length of the tag of version 2 that these first 10 bytes of a file begin, with its head; 0
// where they begin none.
std::uint64_t BytesOfId3(std::span<const std::uint8_t> head);

// The tag of version 2 at the beginning of a file, then the one of version 1 at its end for what
// the first does not say. What was passed over is said in a remark.
void ReadMp3Extras(RandomBytes& bytes, std::uint32_t rate, ExtrasKeeper& keeper);

}  // namespace sonavel
