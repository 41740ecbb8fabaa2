#include <algorithm>
#include <new>

#include "platform/replacing_file.h"
#include "sound/byte_order.h"
#include "sound/failure_texts.h"
#include "sound/transfer_progress.h"
#include "sound/wav_file.h"
#include "sound/wav_markers.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kBytesBeforeData = 36;

std::vector<std::uint8_t> BuildHeader(const CWave& wave, std::uint32_t riffSize) {
    const PcmFormat& format = wave.GetFormat();
    ByteBuilder header;
    header.Text("RIFF").Little32(riffSize).Text("WAVEfmt ").Little32(16);
    header.Little16(format.formatTag).Little16(format.channels);
    header.Little32(format.samplesPerSecond).Little32(format.averageBytesPerSecond);
    header.Little16(format.blockAlign).Little16(format.bitsPerSample);
    header.Text("data").Little32(wave.GetDataSize());
    return header.Bytes();
}

// False when a write failed or the person cancelled; the failure is reported.
bool WriteSamples(ReplacingFile& file, CWave& wave) {
    const std::span<const std::uint8_t> bytes = wave.Bytes();
    TransferProgress progress(wave.Progress(), "Write sound file", bytes.size());
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (!file.Write(bytes.subspan(done, piece))) {
            progress.Finish();
            wave.ReportError(failure::kWriteData);
            return false;
        }
        done += piece;
        if (!progress.Advance(done)) {
            wave.ReportInStatus(failure::kCancelled);
            return false;
        }
    }
    return true;
}

bool WriteFile(ReplacingFile& file, CWave& wave, const MarkerChunks& markers) {
    // The list behind "cue " is left out of the RIFF size, and odd data get no pad byte: intended,
    // files keep the bytes that they always had.
    const auto riffSize =
        static_cast<std::uint32_t>(kBytesBeforeData + wave.GetDataSize() + markers.cue.size());
    const bool headed = file.Write(BuildHeader(wave, riffSize));
    if (headed && !WriteSamples(file, wave)) return false;
    if (headed && file.Write(markers.cue) && file.Write(markers.list) && file.Commit()) return true;
    wave.ReportError(failure::kWriteData);
    return false;
}

}  // namespace

bool WriteWav(const std::filesystem::path& path, CWave& wave, MarkerSaving saving) try {
    ReplacingFile file;
    if (!file.Open(path)) {
        wave.ReportError(failure::kOpenFile);
        return false;
    }
    MarkerChunks markers;
    if (saving == MarkerSaving::kOn && !wave.Markers().Empty())
        markers = BuildMarkerChunks(wave.Markers());
    if (!WriteFile(file, wave, markers)) return false;
    if (saving == MarkerSaving::kOff) {
        // A save that leaves markers out counts as failed, so that the sound stays modified:
        // intended.
        wave.ReportInStatus("The sound was written without its markers.");
        return false;
    }
    wave.SetModified(false);
    return true;
} catch (const std::bad_alloc&) {
    wave.ReportError(failure::kMemory);
    return false;
}

}  // namespace sonavel
