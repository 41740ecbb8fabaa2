// Making the clip on the clipboard fit the sound that it is to go into.
#include "document/clip_image.h"
#include "document/edit_operations.h"
#include "sound/failure_texts.h"

namespace sonavel::edit {
namespace {

bool SameFormat(const Sound& sound, const ClipRecord& clip) {
    return sound.GetSamplesPerSecond() == clip.GetSamplesPerSecond() &&
           sound.GetChannels() == clip.GetChannels() && sound.GetBits() == clip.GetBits();
}

bool AskWhetherToConvert(UserPrompts& prompts) {
    return prompts.AskOkCancel("원본 포맷과 같지 않습니다...", "경고");
}

// The rate is taken over without resampling.
bool TakeRateAndBits(const CSoundDoc& document, ClipRecord& clip) {
    clip.SetRate(document.Sound().GetSamplesPerSecond());
    return clip.ConvertBits(document.Sound().GetBits());
}

bool Refuse(CSoundDoc& document, std::string_view reason) {
    document.SetLastError(reason);
    return false;
}

}  // namespace

bool PrepareClip(CSoundDoc& document, ClipRecord& clip) {
    const HostServices& services = document.Services();
    const bool read = ReadClipboard(services.clipboard, clip);
    if (!read || !clip.present)
        return Refuse(document, "The clipboard holds no sound that can be pasted.");
    if (SameFormat(document.Sound(), clip)) return true;
    if (!AskWhetherToConvert(services.prompts)) return Refuse(document, failure::kCancelled);
    if (!TakeRateAndBits(document, clip)) return Refuse(document, failure::kMemory);
    // A clip that differed in nothing but rate or bits is never pasted: people who have got past
    // the warning still choose how channels are converted, and here there is nothing to choose.
    if (clip.GetChannels() == document.Sound().GetChannels())
        return Refuse(document, "A sound of another rate or bit depth is not pasted.");
    const auto choice = services.prompts.AskChannelConversion(
        clip.GetChannels() == 1 ? ChannelConversion::kMonoToStereo
                                : ChannelConversion::kStereoToMono);
    if (!choice) return Refuse(document, failure::kCancelled);
    return clip.ConvertChannels(document.Sound().GetChannels(), *choice) ||
           Refuse(document, failure::kMemory);
}

}  // namespace sonavel::edit
