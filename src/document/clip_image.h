// The form in which clips lie on the clipboard: a complete RIFF WAVE file without markers.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "document/clip_record.h"
#include "platform/wave_clipboard.h"
#include "sound/pcm_format.h"

namespace sonavel {

// A 44-byte header and the sample bytes as they are. Nothing when the memory cannot be had.
std::optional<std::vector<std::uint8_t>> WriteClipImage(const PcmFormat& format,
                                                        std::span<const std::uint8_t> samples);

// Takes an image from anywhere into the record. False, with the record as it was, for anything but
// a RIFF WAVE image of a format that the editor can hold, or when the samples that it announces
// are not all there. An image of no samples succeeds and leaves the record as it was.
bool ReadClipImage(std::span<const std::uint8_t> image, ClipRecord& clip);

// The image of a clip of floats rounded to 16 bits, for programs that take no floats. Nothing for
// an image that cannot be read or when the memory cannot be had.
std::optional<std::vector<std::uint8_t>> ImageOf16Bits(std::span<const std::uint8_t> image);

// Tells the clip on the clipboard from others: a small one by its content; a large one, which would
// take long to read, by its number there, so that it is 0, which stands for none, where another
// program has put it.
std::uint64_t MarkOfClip(const WaveClipboard& clipboard, std::span<const std::uint8_t> samples);

// The image on the clipboard, read as above; false also when there is none.
bool ReadClipboard(const WaveClipboard& clipboard, ClipRecord& clip);

}  // namespace sonavel
