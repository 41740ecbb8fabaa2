// The file operations of CWave.
#include "sound/format_refusal.h"
#include "sound/wav_file.h"
#include "sound/wave.h"

namespace sonavel {

bool CWave::Open(const std::filesystem::path& path, WavOpenMode mode) {
    if (mode == WavOpenMode::kProbe) return ProbeWav(path, *this).has_value();
    return ReadWav(path, *this);
}

bool CWave::IsPCM(const std::filesystem::path& path) {
    const std::optional<WavInfo> info = ProbeWav(path, *this);
    if (!info) return false;
    if (info->format.formatTag == kPcmFormatTag) return true;
    ReportInStatus(FormatRefusal(info->format));
    return false;
}

bool CWave::Save(const std::filesystem::path& path, MarkerSaving markers) {
    return WriteWav(path, *this, markers);
}

}  // namespace sonavel
