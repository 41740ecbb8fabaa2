// Making the clip on the clipboard fit the sound that it is to go into.
#include "document/clip_image.h"
#include "document/edit_operations.h"
#include "platform/failure_texts.h"

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

}  // namespace

Outcome PrepareClip(CSoundDoc& document, ClipRecord& clip) {
    const HostServices& services = document.Services();
    const bool read = ReadClipboard(services.clipboard, clip);
    if (!read || !clip.present) return Failed("The clipboard holds no sound that can be pasted.");
    const std::uint64_t mark = MarkOfClip(services.clipboard, clip.Bytes());
    document.Steps().NoteFound(Supply::kClip, mark);
    if (SameFormat(document.Sound(), clip)) return Done();
    if (!AskWhetherToConvert(services.prompts)) return Cancelled();
    if (!TakeRateAndBits(document, clip)) return Failed(failure::kMemory);
    // A clip that differed in nothing but rate or bits is never pasted: people who have got past
    // the warning still choose how channels are converted, and here there is nothing to choose.
    if (clip.GetChannels() == document.Sound().GetChannels())
        return Failed("A sound of another rate or bit depth is not pasted.");
    const auto choice = services.prompts.AskChannelConversion(
        clip.GetChannels() == 1 ? ChannelConversion::kMonoToStereo
                                : ChannelConversion::kStereoToMono);
    if (!choice) return Cancelled();
    // Scripts answer with both unless they are told otherwise.
    document.Steps().NoteFound(Supply::kClip, *choice == ChannelChoice::kBothOrMix ? mark : 0);
    return DoneIf(clip.ConvertChannels(document.Sound().GetChannels(), *choice), failure::kMemory);
}

}  // namespace sonavel::edit
