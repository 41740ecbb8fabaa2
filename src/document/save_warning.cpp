// What a save leaves out of a sound, told before it happens.
#include <algorithm>
#include <cstring>

#include "document/file_kind.h"
#include "document/sound_doc.h"

namespace sonavel {
namespace {

bool HasRegions(const MarkerList& markers) {
    return std::any_of(markers.All().begin(), markers.All().end(),
                       [](const Marker& marker) { return marker.length != 0; });
}

// The reader skips a byte behind a label of odd length that the writer does not write, and so
// misses the labels behind it.
bool HidesLabels(const MarkerList& markers) {
    if (markers.Empty()) return false;
    return std::any_of(markers.All().begin(), markers.All().end() - 1,
                       [](const Marker& marker) { return marker.name.size() % 2 != 0; });
}

void Append(std::string& text, std::string_view sentence) {
    if (!text.empty()) text += ' ';
    text += sentence;
}

std::string WavWarning(const CWave& sound, const SaveAsChoice& choice) {
    if (!choice.saveMarkers)
        return "Saving markers is off: the file gets the sound alone, and the sound still "
               "counts as not saved.";
    const MarkerList& markers = sound.Markers();
    if (markers.Empty()) return {};
    const std::uint64_t frameBytes = choice.channels * (choice.bits / 8);
    if (sound.GetFrameCount() * frameBytes % 2 != 0)
        return "The markers will not be found when the file is opened, because its number of bytes "
               "is odd.";
    std::string text;
    if (HidesLabels(markers))
        Append(text, "Marker names behind one with an odd number of bytes will not be read again.");
    if (HasRegions(markers)) Append(text, "The lengths of markers will not be read again.");
    return text;
}

// A 16-bit AIFF file gets one second of sound.
bool IsCutInAiff(const CWave& sound, unsigned bits) {
    return bits == 16 && sound.GetFrameCount() > sound.GetRate();
}

std::string AiffWarning(const CWave& sound, const SaveAsChoice& choice) {
    std::string text;
    if (IsCutInAiff(sound, choice.bits))
        Append(text, "Only the first second of a 16-bit sound is written to an AIFF file.");
    if (!sound.Markers().Empty()) Append(text, "An AIFF file holds no markers.");
    return text;
}

std::string WarningOfFormat(const CWave& sound, const SaveAsChoice& choice) {
    switch (FileKindOfExtension(ExtensionFromFirstDot(choice.path))) {
        case FileKind::kWav:
            return WavWarning(sound, choice);
        case FileKind::kAiff:
            return AiffWarning(sound, choice);
        case FileKind::kNextSun:
            return sound.Markers().Empty() ? "" : "A Next/Sun file holds no markers.";
        case FileKind::kUnknown:
            break;
    }
    return {};
}

// The greatest 8-bit value, 128 or byte 0, becomes the least 16-bit one.
bool WrapsWhenConverted(const CWave& sound, unsigned bits) {
    return sound.GetBits() == 8 && bits == 16 && sound.HasData() &&
           std::memchr(sound.Bytes().data(), 0, sound.Bytes().size()) != nullptr;
}

}  // namespace

std::string CSoundDoc::SaveWarning(const std::filesystem::path& path) const {
    return SaveWarning({path, sound_.GetChannels(), sound_.GetBits(), options_.saveMarkers != 0});
}

bool CSoundDoc::SaveCutsSound(const std::filesystem::path& path) const {
    return FileKindOfExtension(ExtensionFromFirstDot(path)) == FileKind::kAiff &&
           IsCutInAiff(sound_, sound_.GetBits());
}

std::string CSoundDoc::SaveWarning(const SaveAsChoice& choice) const {
    std::string text = WarningOfFormat(sound_, choice);
    if (WrapsWhenConverted(sound_, choice.bits))
        Append(text, "The loudest 8-bit samples wrap around to the other sign in 16 bits.");
    return text;
}

}  // namespace sonavel
