// What the sound library calls a file's format, in the editor's words.
#pragma once

#include <optional>
#include <string_view>

#include "sound/codec_values.h"

namespace sonavel {

// The container, by the library's major format.
struct LibraryContainer {
    int major;
    SoundFileKind kind;
    std::string_view name;
};

// How samples are coded in it, by the library's subtype.
struct LibraryCoding {
    int subtype;
    std::string_view name;  // empty for plain numbers
    FileDepth depth;
    std::uint32_t bits;
    FrameSamples samples;  // in which they are decoded without loss
};

// A container or coding unknown to this program is named so and decoded to floats.
LibraryContainer ContainerOf(int libraryFormat);
LibraryCoding CodingOf(int libraryFormat);

// The library's format for a file to be written; nothing where the kind has no such depth.
std::optional<int> LibraryFormatFor(SoundFileKind kind, EncodedDepth depth);

}  // namespace sonavel
