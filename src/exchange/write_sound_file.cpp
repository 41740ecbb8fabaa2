#include "exchange/write_sound_file.h"

#include <algorithm>
#include <new>

#include "exchange/file_frame.h"
#include "platform/commit_beside.h"
#include "platform/replacing_file.h"

namespace sonavel {
namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 20;

Result<FileFrame> FrameOf(const EncodeRequest& request, const SoundExtras& extras) {
    if (request.kind == SoundFileKind::kAiff) return FrameAiff(request, extras);
    if (request.kind == SoundFileKind::kAu) return FrameAu(request, extras);
    return FrameWav(request, extras);
}

Outcome WriteFrames(const EncodeRequest& request, const FileSamples& as, FrameSource& source,
                    ReplacingFile& file) {
    const std::size_t frameBytes = request.BytesPerFrame();
    const std::size_t pieceFrames = std::max<std::size_t>(kPieceBytes / frameBytes, 1);
    std::vector<std::uint8_t> given(pieceFrames * frameBytes);
    std::vector<std::uint8_t> packed(pieceFrames * request.channels * as.Bytes());
    for (std::uint64_t left = request.frames; left > 0;) {
        if (source.Watch() == GoOn::kNo) return Cancelled();
        const auto frames = static_cast<std::size_t>(std::min<std::uint64_t>(left, pieceFrames));
        const auto from = std::span(given).first(frames * frameBytes);
        const auto to = std::span(packed).first(frames * request.channels * as.Bytes());
        if (Outcome outcome = source.Give(from); !outcome) return outcome;
        PackSamples(from, request.samples, as, to);
        if (!file.Write(to)) return Failed(failure::kWriteData);
        left -= frames;
    }
    return Done();
}

}  // namespace

bool IsWrittenHere(SoundFileKind kind) {
    return kind == SoundFileKind::kWav || kind == SoundFileKind::kRf64 ||
           kind == SoundFileKind::kAiff || kind == SoundFileKind::kAu;
}

Outcome WriteSoundFile(const std::filesystem::path& path, const EncodeRequest& request,
                       const SoundExtras& extras, FrameSource& source) try {
    if (!IsWrittenHere(request.kind) || request.channels == 0 || request.channels > 0xFFFF)
        return Failed("There is no such kind of file.");
    const Result<FileFrame> frame = FrameOf(request, extras);
    if (!frame) return frame.Ended();
    ReplacingFile file;
    if (!file.Open(path)) return Failed(failure::kOpenFile);
    if (!file.Write(frame->before)) return Failed(failure::kWriteData);
    if (Outcome written = WriteFrames(request, frame->samples, source, file); !written)
        return written;
    if (!file.Write(frame->behind)) return Failed(failure::kWriteData);
    return CommitBeside(
        file, [&] { return source.Watch() == GoOn::kNo; }, failure::kWriteData);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
