#include <algorithm>
#include <new>

#include "platform/commit_beside.h"
#include "platform/failure_texts.h"
#include "platform/replacing_file.h"
#include "sound/format_refusal.h"
#include "sound/transfer_progress.h"
#include "sound/wav_file.h"
#include "sound/wav_format.h"
#include "sound/wav_markers.h"

namespace sonavel {
namespace {

Outcome WriteSamples(ReplacingFile& file, std::span<const std::uint8_t> bytes,
                     TransferProgress& progress) {
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (!file.Write(bytes.subspan(done, piece))) {
            progress.Finish();
            return Failed(failure::kWriteData);
        }
        done += piece;
        if (!progress.Advance(done)) return Cancelled();
    }
    return Done();
}

Outcome WriteFile(ReplacingFile& file, const Sound& sound, const MarkerChunks& markers,
                  const TransferHost& host) {
    // The list behind "cue " is left out of the RIFF size, and odd data get no pad byte: intended,
    // a file that is saved again stays as it is.
    const auto dataBytes = static_cast<std::uint32_t>(sound.GetDataSize());
    const auto cueBytes = static_cast<std::uint32_t>(markers.cue.size());
    if (!file.Write(BuildWavHeader(sound.GetFormat(), dataBytes, cueBytes)))
        return Failed(failure::kWriteData);
    TransferProgress progress(host, "Write sound file", sound.GetDataSize());
    if (Outcome written = WriteSamples(file, sound.Bytes(), progress); !written) return written;
    if (!file.Write(markers.cue) || !file.Write(markers.list)) return Failed(failure::kWriteData);
    return CommitBeside(
        file, [&] { return progress.Poll(); }, failure::kWriteData);
}

bool HasRegions(const MarkerList& markers) {
    return std::ranges::any_of(markers.All(), [](const Marker& m) { return m.length != 0; });
}

// The reader skips a byte behind a label of odd length that the writer does not write, and so
// misses the labels behind it.
bool HidesLabels(const MarkerList& markers) {
    return std::any_of(markers.All().begin(), markers.All().end() - 1,
                       [](const Marker& marker) { return marker.name.size() % 2 != 0; });
}

}  // namespace

Outcome WriteWav(const Sound& sound, const std::filesystem::path& path, MarkerSaving saving,
                 const TransferHost& host) try {
    if (Outcome fits = CheckSavedFormat(sound.GetFormat()); !fits) return fits;
    ReplacingFile file;
    if (!file.Open(path)) return Failed(failure::kOpenFile);
    MarkerChunks markers;
    if (saving == MarkerSaving::kOn && !sound.Markers().Empty())
        markers = BuildMarkerChunks(sound.Markers());
    if (Outcome written = WriteFile(file, sound, markers, host); !written) return written;
    // A save that leaves markers out counts as failed, so that the sound stays modified: intended.
    return saving == MarkerSaving::kOn
               ? Done()
               : FailedQuietly("The sound was written without its markers.");
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

SaveLoss LossInWav(const Sound& sound, const SavedForm& form) {
    if (form.markers == MarkerSaving::kOff)
        return {
            "Saving markers is off: the file gets the sound alone, and the sound still "
            "counts as not saved."};
    const MarkerList& markers = sound.Markers();
    if (markers.Empty()) return {};
    const std::uint64_t frameBytes = form.channels * (form.bits / 8);
    if (sound.GetFrameCount() * frameBytes % 2 != 0)
        return {
            "The markers will not be found when the file is opened, because its number of "
            "bytes is odd."};
    SaveLoss loss;
    if (HidesLabels(markers))
        loss.Add("Marker names behind one with an odd number of bytes will not be read again.");
    if (HasRegions(markers)) loss.Add("The lengths of markers will not be read again.");
    return loss;
}

}  // namespace sonavel
