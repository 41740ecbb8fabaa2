// Export of many parts of a sound at once: every region, or every stretch between markers, into a
// file of its own.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "exchange/sound_export.h"

namespace sonavel {

enum class SplitAt : std::uint8_t {
    kRegions,  // each marker that has a length
    kMarkers,  // from the start, from marker to marker, and to the end
};

struct NamedPart {
    FrameRange frames;
    std::string name;  // UTF-8; a stretch before the first marker has the sound's title

    bool operator==(const NamedPart&) const = default;
};

// In the order of their frames, cut to `within`; parts without frames are left out.
std::vector<NamedPart> PartsOf(const Sound& sound, SplitAt split, FrameRange within,
                               const std::string& title);

// A file name for each part, without folder and extension. In the pattern {number} counts from 1,
// with leading zeros to the width of the greatest and at least two digits; {name} is the part's
// name and {title} the sound's. What no file name may hold becomes "_". Fails for other words in
// braces, for a name that is empty, and where two parts would have the same.
Result<std::vector<std::string>> PartFileNames(const std::string& pattern,
                                               const std::vector<NamedPart>& parts,
                                               const std::string& title);

enum class ExistingFiles : std::uint8_t { kRefuse, kReplace };

struct RegionExport {
    std::filesystem::path folder;  // made where it is missing
    std::vector<NamedPart> parts;
    std::vector<std::string> names;  // of each part
    ExportChoice choice;             // but for its frames
    ExistingFiles existing = ExistingFiles::kRefuse;
};

// ".flac", with which the names of that kind's files end.
std::string ExtensionOf(SoundFileKind kind);
std::filesystem::path PathOfPart(const RegionExport& regions, std::size_t part);
// Those of the files that are there already.
std::vector<std::filesystem::path> ExistingParts(const RegionExport& regions);

using PartWritten = std::function<void(const std::filesystem::path& path, FrameRange frames)>;

// Writes the files one after the other under one progress window, telling of each. Where files are
// not to be replaced and one of them is there, none is written. What fails or is cancelled leaves
// the files before it.
Outcome ExportRegions(const RegionExport& regions, const Sound& sound, const SoundExtras& extras,
                      const SoundCodecs* codecs, const TransferHost& host,
                      const PartWritten& written);

}  // namespace sonavel
