#include <algorithm>
#include <new>
#include <string>

#include "exchange/au_annotation.h"
#include "exchange/file_frame.h"
#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kHeaderBytes = 24;
constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;

std::uint32_t EncodingOf(EncodedDepth depth) {
    switch (depth) {
        case EncodedDepth::k8:
            return 2;
        case EncodedDepth::k16:
            return 3;
        case EncodedDepth::k24:
            return 4;
        case EncodedDepth::kFloat32:
            break;
    }
    return 6;
}

// Ended by zeros up to a multiple of 8.
std::string PaddedAnnotation(const SoundExtras& extras) {
    std::string text = AnnotationOf(extras.tags);
    text.resize((text.size() / 8 + 1) * 8);
    return text;
}

}  // namespace

Result<FileFrame> FrameAu(const EncodeRequest& request, const SoundExtras& extras) try {
    FileFrame frame;
    frame.samples = {request.depth, ByteOrder::kBig, EightBitZero::kAt0};
    const std::string annotation = PaddedAnnotation(extras);
    const std::uint64_t dataBytes = request.frames * request.channels * frame.samples.Bytes();
    ByteBuilder head;
    head.Text(".snd").Big32(kHeaderBytes + static_cast<std::uint32_t>(annotation.size()));
    // A greater size counts as unknown, and the sound goes on to the end of the file.
    head.Big32(static_cast<std::uint32_t>(std::min<std::uint64_t>(dataBytes, kUnknownSize)));
    head.Big32(EncodingOf(request.depth)).Big32(request.rate).Big32(request.channels);
    frame.before = head.Text(annotation).Bytes();
    return frame;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
