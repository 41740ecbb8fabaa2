// What people are told when a file cannot be decoded or encoded.
#pragma once

#include <string>
#include <string_view>

#include "codec/wire.h"

namespace sonavel::codec_texts {

inline constexpr std::string_view kNoSuchFile = "There is no such file.";
inline constexpr std::string_view kNotPermitted = "The file may not be read.";
inline constexpr std::string_view kNoRegularFile = "This is not a file that holds sound.";
inline constexpr std::string_view kUnreadable = "The file cannot be read.";
inline constexpr std::string_view kUnknownFormat = "The format of the file is not known.";
inline constexpr std::string_view kDamaged =
    "The file is so damaged that nothing of it can be read.";
inline constexpr std::string_view kDecoderCrashed = "The decoder crashed on this file.";
inline constexpr std::string_view kDecoderTooLong = "Decoding the file took too long.";
inline constexpr std::string_view kDecoderMemory = "The decoder asked for too much memory.";
inline constexpr std::string_view kDecoderNonsense = "The decoder's answer makes no sense.";
inline constexpr std::string_view kEncoderCrashed = "The encoder crashed.";
inline constexpr std::string_view kEncoderTooLong = "Encoding the file took too long.";
inline constexpr std::string_view kEncoderMemory = "The encoder asked for too much memory.";
inline constexpr std::string_view kEncoderNonsense = "The encoder's answer makes no sense.";
inline constexpr std::string_view kUnwritable =
    "The file cannot be written: the disk is full or fails.";
inline constexpr std::string_view kUnencodable = "This kind of file cannot hold this sound.";

// "Reading M4A files needs the program ffmpeg, which is not installed."
std::string NeedsProgram(std::string_view doing, std::string_view program);

}  // namespace sonavel::codec_texts
