// Writes what FLAC, Ogg Vorbis and Opus files hold of tags and markers: comments, chapters among
// them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "exchange/sound_extras.h"

namespace sonavel {

// A comment block as AddVorbisComments reads it. `vendor` names the program that wrote the sound;
// the markers' frames are those of a sound of `rate` frames a second. Of regions the beginning is
// written; tags whose keys cannot be names of comments are left out.
std::vector<std::uint8_t> BuildCommentBlock(std::string_view vendor, const SoundExtras& extras,
                                            std::uint32_t rate);

// The vendor of a comment block.
std::string_view VendorOf(std::span<const std::uint8_t> block);

}  // namespace sonavel
