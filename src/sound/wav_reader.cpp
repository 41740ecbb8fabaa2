#include <algorithm>
#include <array>
#include <new>
#include <string>

#include "platform/failure_texts.h"
#include "sound/byte_source.h"
#include "sound/format_refusal.h"
#include "sound/riff.h"
#include "sound/transfer_progress.h"
#include "sound/wav_file.h"
#include "sound/wav_format.h"
#include "sound/wav_markers.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;  // the data go up to the end of the file

// One reading of one file, step by step.
class WavReader {
  public:
    WavReader() : riff_(file_) {}

    Outcome FindFormatAndData(const std::filesystem::path& path);
    Outcome CheckEditable() const;
    Outcome ReadSamples(const TransferHost& host);
    void ReadMarkerChunks(const TransferHost& host);

    SoundFileInfo Info() const;
    Sound TakeSound() { return {format_, std::move(samples_), std::move(markers_)}; }

  private:
    Outcome FindFormat();
    Outcome ReadFormat(const RiffChunk& chunk);
    Outcome Transfer(TransferProgress& progress);

    FileSource file_;
    RiffReader riff_;
    RiffChunk form_;
    RiffChunk data_;
    PcmFormat format_;
    SoundBuffer samples_;
    MarkerList markers_;
};

Outcome WavReader::FindFormatAndData(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Failed(failure::kOpenFile);
    if (Outcome found = FindFormat(); !found) return found;
    const std::optional<RiffChunk> data = riff_.Descend(kDataChunk, form_);
    if (!data) return FailedQuietly("The file has no data chunk.");
    data_ = *data;
    // What writes into a pipe cannot know the size when it writes the header.
    if (data_.sizeBytes == kUnknownSize)
        data_.sizeBytes = static_cast<std::uint32_t>(riff_.Cursor().Remaining());
    return Done();
}

Outcome WavReader::FindFormat() {
    const std::optional<RiffChunk> form = riff_.DescendForm(kRiffChunk, kWaveForm);
    if (!form) return FailedQuietly("The file has no RIFF chunk of the form WAVE.");
    form_ = *form;
    const std::optional<RiffChunk> format = riff_.Descend(kFormatChunk, form_);
    if (!format) return FailedQuietly("The file has no fmt chunk.");
    if (Outcome read = ReadFormat(*format); !read) return read;
    riff_.Ascend(*format);
    return Done();
}

Outcome WavReader::ReadFormat(const RiffChunk& chunk) {
    std::array<std::uint8_t, kWavExtensibleFormatBytes> bytes;
    const std::size_t wanted = std::min<std::size_t>(chunk.sizeBytes, bytes.size());
    const std::span there(bytes.data(), riff_.Cursor().Read({bytes.data(), wanted}));
    if (there.size() < kLeastWavFormatBytes) return Failed("Wave Format Read Failure.");
    format_ = ParseWavFormat(there);
    if (format_.formatTag == kPcmFormatTag && there.size() < kWavPcmFormatBytes)
        return Failed("Data Read Failure.");
    return Done();
}

SoundFileInfo WavReader::Info() const {
    const std::uint64_t bytes = data_.sizeBytes;
    // A block of compressed sound holds many frames.
    if (format_.formatTag != kPcmFormatTag && format_.averageBytesPerSecond != 0)
        return {format_, bytes * format_.samplesPerSecond / format_.averageBytesPerSecond};
    return {format_, format_.blockAlign ? bytes / format_.blockAlign : 0};
}

Outcome WavReader::CheckEditable() const {
    if (IsEditable(format_)) return Done();
    const std::string text = FormatRefusal(format_);
    return format_.formatTag == kPcmFormatTag ? Failed(text) : FailedQuietly(text);
}

Outcome WavReader::ReadSamples(const TransferHost& host) {
    if (data_.sizeBytes > kMaxSoundBytes) return Failed(failure::kMemory);
    // Looked at before the memory is taken, so that a size that lies costs nothing.
    const bool complete = data_.sizeBytes <= riff_.Cursor().Remaining();
    if (complete && !samples_.AllocBuffer(data_.sizeBytes)) return Failed(failure::kMemory);
    TransferProgress progress(host, "Read sound file", data_.sizeBytes);
    if (complete) return Transfer(progress);
    progress.Finish();
    return Failed(failure::kReadData);
}

Outcome WavReader::Transfer(TransferProgress& progress) {
    const std::span<std::uint8_t> bytes = samples_.Bytes();
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (!riff_.Cursor().ReadAll(bytes.subspan(done, piece))) {
            progress.Finish();
            return Failed(failure::kReadData);
        }
        done += piece;
        if (!progress.Advance(done)) return Cancelled();
    }
    return Done();
}

void WavReader::ReadMarkerChunks(const TransferHost& host) {
    riff_.Ascend(data_);
    if (!ReadMarkers(riff_, form_, markers_)) host.Warn("마커 읽기 실패...");
}

}  // namespace

Result<SoundFileInfo> ProbeWav(const std::filesystem::path& path) {
    WavReader reader;
    if (Outcome found = reader.FindFormatAndData(path); !found) return found;
    return reader.Info();
}

Result<Sound> ReadWav(const std::filesystem::path& path, const TransferHost& host) try {
    WavReader reader;
    if (Outcome found = reader.FindFormatAndData(path); !found) return found;
    if (Outcome editable = reader.CheckEditable(); !editable) return editable;
    if (Outcome read = reader.ReadSamples(host); !read) return read;
    reader.ReadMarkerChunks(host);
    return reader.TakeSound();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
