// Which programs decode and encode, and what they are allowed.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace sonavel {

// Empty where there is no such program.
struct CodecPrograms {
    std::filesystem::path helper;  // sonavel-codec
    std::filesystem::path ffmpeg;
    std::filesystem::path ffprobe;  // says more of a file before it is decoded; not needed
};

// The helper beside the running program, in libexec/sonavel beside its folder, or in
// /usr/libexec/sonavel, the others in the absolute folders of PATH.
CodecPrograms FindCodecPrograms();

struct CodecLimits {
    // A child that neither gives nor takes anything for so long hangs.
    std::chrono::milliseconds silence{10'000};
    // How often the watcher is asked at least.
    std::chrono::milliseconds slice{20};
    std::uint64_t helperMemory = std::uint64_t{512} << 20;
    std::uint64_t ffmpegMemory = std::uint64_t{2} << 30;
    // Computing time: so much for any file, and so much more for each MiB of it. The slowest
    // decoders take a fifth of the latter.
    std::uint64_t baseSeconds = 60;
    std::uint64_t secondsPerMiB = 20;
};

struct CodecSetup {
    CodecPrograms programs;
    CodecLimits limits;
};

// The computing time for a file of this size.
std::uint64_t SecondsFor(const CodecLimits& limits, std::uint64_t fileBytes);

}  // namespace sonavel
