// The file operations of CWave.
#include "sound/format_refusal.h"
#include "sound/wav_file.h"
#include "sound/wave.h"

namespace sonavel {

bool CWave::Open(const std::filesystem::path& path, WavOpenMode mode) {
    if (mode == WavOpenMode::kProbe) return ReportOutcome(ProbeWav(path).Ended());
    return Take(ReadWav(path, FileHost()));
}

bool CWave::IsPCM(const std::filesystem::path& path) {
    const Result<SoundFileInfo> info = ProbeWav(path);
    if (!info) return ReportOutcome(info.Ended());
    return info->format.formatTag == kPcmFormatTag ||
           ReportOutcome(FailedQuietly(FormatRefusal(info->format)));
}

bool CWave::Save(const std::filesystem::path& path, MarkerSaving markers) {
    if (!ReportOutcome(WriteWav(*this, path, markers, FileHost()))) return false;
    SetModified(false);
    return true;
}

bool CWave::Take(Result<Sound>&& read) {
    if (!read) return ReportOutcome(read.Ended());
    Adopt(std::move(*read));
    SetModified(false);
    return true;
}

TransferHost CWave::FileHost() {
    return {.progress = &progress_,
            .warn = [this](std::string_view text) { ReportError(text); },
            .note = [this](std::string_view text) { prompts_.ShowStatus(text); }};
}

}  // namespace sonavel
