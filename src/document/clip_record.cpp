#include "document/clip_record.h"

namespace sonavel {

std::uint32_t ClipRecord::GetFrameCount() const {
    return format.blockAlign ? DataSize() / format.blockAlign : 0;
}

double ClipRecord::GetDuration() const {
    if (format.samplesPerSecond == 0) return 0;
    return static_cast<double>(GetFrameCount()) / format.samplesPerSecond;
}

std::optional<SoundCopy> ClipRecord::CopySound() const {
    SoundCopy copy{format, {}, {}};
    if (!copy.buffer.CopyFrom(buffer)) return std::nullopt;
    return copy;
}

}  // namespace sonavel
