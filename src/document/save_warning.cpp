// What a save leaves out of a sound, told before it happens.
#include <cstring>

#include "document/sound_doc.h"
#include "sound/file_formats.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

SaveLoss LossOf(const Sound& sound, const SaveAsChoice& choice) {
    const FileFormat* format = FileFormatOfExtension(ExtensionFromFirstDot(choice.path));
    if (!format) return {};
    return format->lossOf(sound, {choice.channels, choice.bits,
                                  choice.saveMarkers ? MarkerSaving::kOn : MarkerSaving::kOff});
}

// The greatest 8-bit value, 128 or byte 0, becomes the least 16-bit one.
bool WrapsWhenConverted(const Sound& sound, unsigned bits) {
    return sound.GetBits() == 8 && bits == 16 && sound.HasData() &&
           std::memchr(sound.Bytes().data(), 0, sound.Bytes().size()) != nullptr;
}

}  // namespace

SaveAsChoice CSoundDoc::SaveAsItIs(const std::filesystem::path& path) const {
    return {path, sound_.GetChannels(), sound_.GetBits(), options_.saveMarkers != 0};
}

std::string CSoundDoc::SaveWarning(const std::filesystem::path& path) const {
    return IsOrigin(path) ? std::string() : SaveWarning(SaveAsItIs(path));
}

bool CSoundDoc::SaveCutsSound(const std::filesystem::path& path) const {
    return !IsOrigin(path) && LossOf(sound_, SaveAsItIs(path)).cutsSound;
}

std::string CSoundDoc::SaveWarning(const SaveAsChoice& choice) const {
    SaveLoss loss = LossOf(sound_, choice);
    if (WrapsWhenConverted(sound_, choice.bits))
        loss.Add("The loudest 8-bit samples wrap around to the other sign in 16 bits.");
    if (AreWholeNumbers(choice.bits) && !AreWholeNumbers(sound_.GetBits()))
        loss.Add("The 32-bit float samples are rounded to " + std::to_string(choice.bits) +
                 " bits; Export keeps them.");
    return loss.text;
}

}  // namespace sonavel
