#include <algorithm>
#include <new>
#include <string>

#include "sound/byte_order.h"
#include "sound/byte_source.h"
#include "sound/failure_texts.h"
#include "sound/format_refusal.h"
#include "sound/riff.h"
#include "sound/transfer_progress.h"
#include "sound/wav_file.h"
#include "sound/wav_markers.h"

namespace sonavel {
namespace {

// One reading of one file. Each step returns false after it has reported its failure.
class WavReader {
  public:
    explicit WavReader(CWave& wave) : wave_(wave), riff_(file_) {}

    bool FindFormatAndData(const std::filesystem::path& path);
    bool CheckEditable();
    bool ReadSamples();
    bool ReadMarkerChunks();

    WavInfo Info() const;
    SoundCopy TakeSound() { return std::move(sound_); }

  private:
    bool Fail(std::string_view text);
    bool FailQuietly(std::string_view text);
    bool FindFormat();
    bool ReadFormat(const RiffChunk& chunk);
    bool Transfer(TransferProgress& progress);

    CWave& wave_;
    FileSource file_;
    RiffReader riff_;
    RiffChunk form_;
    RiffChunk data_;
    SoundCopy sound_;
};

bool WavReader::Fail(std::string_view text) {
    wave_.ReportError(text);
    return false;
}

bool WavReader::FailQuietly(std::string_view text) {
    wave_.ReportInStatus(text);
    return false;
}

bool WavReader::FindFormatAndData(const std::filesystem::path& path) {
    if (!file_.Open(path)) return Fail(failure::kOpenFile);
    if (!FindFormat()) return false;
    const std::optional<RiffChunk> data = riff_.Descend(kDataChunk, form_);
    if (!data) return FailQuietly("The file has no data chunk.");
    data_ = *data;
    return true;
}

bool WavReader::FindFormat() {
    const std::optional<RiffChunk> form = riff_.DescendForm(kRiffChunk, kWaveForm);
    if (!form) return FailQuietly("The file has no RIFF chunk of the form WAVE.");
    form_ = *form;
    const std::optional<RiffChunk> format = riff_.Descend(kFormatChunk, form_);
    if (!format) return FailQuietly("The file has no fmt chunk.");
    if (!ReadFormat(*format)) return false;
    riff_.Ascend(*format);
    return true;
}

bool WavReader::ReadFormat(const RiffChunk& chunk) {
    std::uint8_t bytes[16];
    if (chunk.sizeBytes < 14 || !riff_.Cursor().ReadAll(std::span(bytes, 14)))
        return Fail("Wave Format Read Failure.");
    PcmFormat& format = sound_.format;
    format.formatTag = LoadLittle16(bytes);
    format.channels = LoadLittle16(bytes + 2);
    format.samplesPerSecond = LoadLittle32(bytes + 4);
    format.averageBytesPerSecond = LoadLittle32(bytes + 8);
    format.blockAlign = LoadLittle16(bytes + 12);
    if (format.formatTag != kPcmFormatTag) return true;
    if (chunk.sizeBytes < 16 || !riff_.Cursor().ReadAll(std::span(bytes + 14, 2)))
        return Fail("Data Read Failure.");
    format.bitsPerSample = LoadLittle16(bytes + 14);
    return true;
}

WavInfo WavReader::Info() const {
    const std::uint16_t blockAlign = sound_.format.blockAlign;
    return {sound_.format, data_.sizeBytes, blockAlign ? data_.sizeBytes / blockAlign : 0};
}

bool WavReader::CheckEditable() {
    if (IsEditable(sound_.format)) return true;
    const std::string text = FormatRefusal(sound_.format);
    return sound_.format.formatTag == kPcmFormatTag ? Fail(text) : FailQuietly(text);
}

bool WavReader::ReadSamples() {
    if (data_.sizeBytes > kMaxSoundBytes) return Fail(failure::kMemory);
    // Looked at before the memory is taken, so that a size that lies costs nothing.
    const bool complete = data_.sizeBytes <= riff_.Cursor().Remaining();
    if (complete && !sound_.buffer.AllocBuffer(data_.sizeBytes)) return Fail(failure::kMemory);
    TransferProgress progress(wave_.Progress(), "Read sound file", data_.sizeBytes);
    if (complete) return Transfer(progress);
    progress.Finish();
    return Fail(failure::kReadData);
}

bool WavReader::Transfer(TransferProgress& progress) {
    const std::span<std::uint8_t> bytes = sound_.buffer.Bytes();
    for (std::size_t done = 0; done < bytes.size();) {
        const std::size_t piece = std::min(bytes.size() - done, kTransferPieceBytes);
        if (!riff_.Cursor().ReadAll(bytes.subspan(done, piece))) {
            progress.Finish();
            return Fail(failure::kReadData);
        }
        done += piece;
        if (!progress.Advance(done)) return FailQuietly(failure::kCancelled);
    }
    return true;
}

bool WavReader::ReadMarkerChunks() {
    riff_.Ascend(data_);
    const MarkerReading reading = ReadMarkers(riff_, form_, sound_.markers);
    if (reading == MarkerReading::kDone) return true;
    Fail("마커 읽기 실패...");
    return reading == MarkerReading::kIncomplete;
}

}  // namespace

std::optional<WavInfo> ProbeWav(const std::filesystem::path& path, CWave& wave) {
    WavReader reader(wave);
    if (!reader.FindFormatAndData(path)) return std::nullopt;
    return reader.Info();
}

bool ReadWav(const std::filesystem::path& path, CWave& wave) try {
    WavReader reader(wave);
    if (!reader.FindFormatAndData(path) || !reader.CheckEditable() || !reader.ReadSamples() ||
        !reader.ReadMarkerChunks())
        return false;
    wave.Adopt(reader.TakeSound());
    wave.SetModified(false);
    return true;
} catch (const std::bad_alloc&) {
    wave.ReportError(failure::kMemory);
    return false;
}

}  // namespace sonavel
