// What the editor and its codec program say to each other over a pipe: a greeting, then records of
// a type, a length and that many bytes. All numbers are little-endian and of fixed width; every
// length has a limit, and both sides take the other for hostile.
//
// Decoding: greeting, description, tags, chapters, then frames and an end; or a failure at any
// place. Probing: the same without frames. Encoding: greeting, request, tags and frames to the
// program; a greeting and an end or a failure back. Responses of ears: greeting, a head of
// responses, floats as records of frames, and an end.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sonavel::wire {

inline constexpr std::uint32_t kMagic = 0x43564E53;  // "SNVC"
inline constexpr std::uint32_t kVersion = 1;
inline constexpr std::size_t kGreetingBytes = 8;
inline constexpr std::size_t kRecordHeadBytes = 8;

enum class RecordType : std::uint32_t {
    kDescription = 1,
    kTag,
    kChapter,
    kFrames,
    kEnd,
    kFailure,
    kRequest,
    kResponseHead,
};

// A record of frames holds at most this much, of whole frames.
inline constexpr std::size_t kMostFrameBytes = std::size_t{1} << 20;
inline constexpr std::uint32_t kMostChannels = 1024;
inline constexpr std::uint32_t kMostRate = 1u << 30;
inline constexpr std::uint64_t kMostFrames = std::uint64_t{1} << 62;
inline constexpr std::size_t kMostNameBytes = 1024;  // of a format, a coding, a key or a reason
inline constexpr std::size_t kMostChapterName = std::size_t{1} << 16;
inline constexpr std::size_t kMostTags = 65536;
inline constexpr std::size_t kMostChapters = 65536;

// A listener's responses: for each direction azimuth (clockwise) and elevation in degrees and the
// delays of both ears in frames, then the taps of the left and of the right ear, all of them
// floats.
inline constexpr std::uint32_t kMostDirections = 20'000;
inline constexpr std::uint32_t kMostTaps = 16'384;
inline constexpr std::uint64_t kMostResponseFloats = std::uint64_t{1} << 25;
inline constexpr std::uint32_t kFloatsBeforeTaps = 4;

// The most bytes that a record of this type may hold; 0 for a type that does not exist.
std::size_t MostBytes(RecordType type);

// Why the codec program gave up.
enum class FailureCode : std::uint32_t {
    kUnreadable = 1,  // the file is not there or may not be read
    kUnknownFormat,
    kDamaged,
    kMemory,
    kUnwritable,   // the disk is full or fails
    kUnencodable,  // the kind of file cannot hold this sound
    kBadCall,      // what came over the pipe makes no sense
};

}  // namespace sonavel::wire
