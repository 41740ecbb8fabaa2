// Fuzzes what takes markers, tags and chunks out of foreign files, and what writes them again: what
// was read must be bounded, and come back from a WAV file.
#include <algorithm>
#include <cstdlib>

#include "exchange/file_frame.h"
#include "exchange/read_extras.h"

namespace {

void Require(bool promise) {
    if (!promise) std::abort();
}

std::size_t BytesOf(const sonavel::SoundExtras& extras) {
    std::size_t bytes = 0;
    for (const auto& tag : extras.tags) bytes += tag.value.size();
    for (const auto& marker : extras.markers) bytes += marker.name.size();
    for (const auto& chunk : extras.chunks) bytes += chunk.bytes.size();
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sonavel;
    BytesInMemory bytes({data, size});
    const auto extras = ReadExtras(bytes, 44100);
    Require(extras && BytesOf(*extras) <= kMostTagBytesOfFile);
    EncodeRequest request;
    request.rate = 44100;
    request.channels = 1;
    request.frames = 0;
    for (SoundChapter marker : extras->markers)
        request.frames = std::max(request.frames, marker.startFrame);
    const auto frame = FrameWav(request, *extras);
    Require(frame && FrameAu(request, *extras));
    (void)FrameAiff(request, *extras);
    return 0;
}
