#include "recovery/take_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "platform/file_identity.h"
#include "sound/byte_order.h"
#include "sound/wav_file.h"

namespace sonavel::recovery {
namespace {

constexpr std::uint64_t kHeaderBytes = 44;
constexpr std::uint64_t kMostSaid = 0xFFFFFFFF - kHeaderBytes;

std::vector<std::uint8_t> HeaderOf(const PcmFormat& format, std::uint64_t soundBytes) {
    const auto said = static_cast<std::uint32_t>(std::min(soundBytes, kMostSaid));
    ByteBuilder header;
    header.Text("RIFF").Little32(static_cast<std::uint32_t>(said + kHeaderBytes - 8));
    header.Text("WAVEfmt ").Little32(16).Little16(format.formatTag).Little16(format.channels);
    header.Little32(format.samplesPerSecond).Little32(format.averageBytesPerSecond);
    header.Little16(format.blockAlign).Little16(format.bitsPerSample);
    header.Text("data").Little32(said);
    return header.Bytes();
}

}  // namespace

bool TakeFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t put =
            pwrite(file_.Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) return false;
        offset += static_cast<std::uint64_t>(put);
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
    return true;
}

bool TakeFile::Open(const std::filesystem::path& path, const PcmFormat& format) {
    format_ = format;
    soundBytes_ = 0;
    file_ = FileDescriptor(
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600));
    return file_.IsOpen() && WriteAt(0, HeaderOf(format_, 0));
}

bool TakeFile::Append(std::span<const std::uint8_t> wholeFrames) {
    if (!WriteAt(kHeaderBytes + soundBytes_, wholeFrames)) return false;
    soundBytes_ += wholeFrames.size();
    return true;
}

bool TakeFile::Sync() {
    return WriteAt(0, HeaderOf(format_, soundBytes_)) && fdatasync(file_.Get()) == 0;
}

std::optional<TakeFacts> LookAtTake(const std::filesystem::path& path) {
    const auto identity = IdentityOfFile(path);
    if (!identity || identity->sizeBytes <= kHeaderBytes) return std::nullopt;
    const Result<SoundFileInfo> info = ProbeWav(path);
    if (!info || !IsEditable(info->format)) return std::nullopt;
    const std::uint64_t bytes =
        std::min(identity->sizeBytes - kHeaderBytes, MostSoundBytes(info->format));
    const TakeFacts facts{info->format, bytes - bytes % info->format.blockAlign};
    return facts.soundBytes > 0 ? std::optional(facts) : std::nullopt;
}

Result<SoundBuffer> ReadTake(const std::filesystem::path& path, const TakeFacts& facts) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    SoundBuffer samples;
    if (!samples.AllocBuffer(facts.soundBytes)) return Failed(failure::kMemory);
    for (std::uint64_t done = 0; done < facts.soundBytes;) {
        const ssize_t got = pread(file.Get(), samples.Data() + done, facts.soundBytes - done,
                                  static_cast<off_t>(kHeaderBytes + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return Failed("The recording cannot be read.");
        done += static_cast<std::uint64_t>(got);
    }
    return samples;
}

}  // namespace sonavel::recovery
