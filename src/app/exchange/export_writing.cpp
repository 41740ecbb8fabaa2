#include "app/exchange/export_writing.h"

#include <algorithm>

#include "codec/kind_rules.h"
#include "exchange/export_losses.h"
#include "exchange/sound_frames.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

namespace {

using enum EncodedDepth;

unsigned BitsOf(EncodedDepth depth) {
    constexpr unsigned kBits[] = {8, 16, 24, 32};
    return kBits[static_cast<std::size_t>(depth)];
}

// Thousands of bits that a second of a channel takes at the qualities 0 to 10, measured with pink
// noise, which takes more than most sounds.
constexpr unsigned kVorbisRates[] = {30, 34, 38, 40, 44, 51, 71, 78, 90, 115, 184};
constexpr unsigned kOpusRates[] = {7, 32, 58, 83, 108, 133, 158, 183, 209, 234, 259};
constexpr unsigned kMp3Rates[] = {57, 90, 149, 160, 160, 160, 160, 160, 160, 160, 160};

const unsigned* RatesOf(SoundFileKind kind) {
    switch (kind) {
        case SoundFileKind::kOggVorbis:
            return kVorbisRates;
        case SoundFileKind::kOpus:
            return kOpusRates;
        default:
            return kMp3Rates;
    }
}

std::uint64_t EstimatedBytes(const EncodeRequest& request) {
    if (!IsLossy(request.kind))
        return request.frames * request.channels * BitsOf(request.depth) / 8;
    const double seconds = static_cast<double>(request.frames) / request.rate;
    const unsigned rate = RatesOf(request.kind)[std::min(request.quality, kBestQuality)];
    return static_cast<std::uint64_t>(seconds * request.channels * rate * 1000 / 8);
}

EncodeRequest RequestOf(const Sound& sound, FrameRange range, const ExportAnswer& answer) {
    EncodeRequest request;
    request.kind = answer.kind;
    request.depth = answer.depth;
    request.quality = answer.quality;
    request.rate = sound.GetSamplesPerSecond();
    request.channels = sound.GetChannels();
    request.frames = range.Frames();
    request.samples = FrameSamplesOf(sound.GetFormat());
    return request;
}

SoundExtras ExtrasOf(const CSoundDoc& document, const ExportAnswer& answer) {
    SoundExtras extras = document.Extras();
    extras.markers.clear();
    extras.tags.clear();
    if (answer.tags == Writing::kWrite) extras.tags = answer.tagValues;
    return extras;
}

// Regions end with the sound.
void CutRegions(MarkerList& markers, std::uint32_t frames) {
    for (Marker& marker : markers.All())
        marker.length = std::min(marker.length, frames - std::min(marker.position, frames));
}

bool TakeRange(Sound& sound, FrameRange range) {
    const std::uint32_t frames = sound.GetFrameCount();
    if (range.end < frames && !sound.RemoveFrames(range.end, frames)) return false;
    if (range.start > 0 && !sound.RemoveFrames(0, range.start)) return false;
    CutRegions(sound.Markers(), sound.GetFrameCount());
    return true;
}

bool IsRounded(const Sound& sound, const ExportAnswer& answer) {
    return !IsLossy(answer.kind) && BitsOf(answer.depth) < sound.GetBits();
}

// In the depth of the file where that is below the sound's own: rounding to it takes dither.
Result<Sound> SoundToWrite(const Sound& sound, FrameRange range, const ExportAnswer& answer) {
    Result<Sound> copy = sound.Copy();
    if (!copy) return copy;
    if (answer.markers == Writing::kLeaveOut) copy->Markers().Clear();
    if (!TakeRange(*copy, range)) return Failed(failure::kMemory);
    const bool dithers = IsRounded(sound, answer) && answer.depth != k24;
    if (dithers && !copy->ConvertBits(BitsOf(answer.depth))) return Failed(failure::kMemory);
    return copy;
}

}  // namespace

EncodedDepth DepthOfSound(const CSoundDoc& document) {
    const unsigned bits = document.Sound().GetBits();
    return bits == 8 ? k8 : bits == 16 ? k16 : kFloat32;
}

std::vector<EncodedDepth> DepthsOf(SoundFileKind kind) {
    std::vector<EncodedDepth> depths;
    if (IsLossy(kind)) return depths;
    for (const EncodedDepth depth : {kFloat32, k24, k16, k8}) {
        EncodeRequest request;
        request.kind = kind;
        request.depth = depth;
        request.channels = 1;
        request.rate = 48000;
        if (CheckEncodable(request)) depths.push_back(depth);
    }
    return depths;
}

ExportNotice NoticeOfExport(const CSoundDoc& document, FrameRange range,
                            const ExportAnswer& answer) {
    const Sound& sound = document.Sound();
    const EncodeRequest request = RequestOf(sound, range, answer);
    ExportNotice notice;
    notice.estimatedBytes = EstimatedBytes(request);
    if (const Outcome can = CheckEncodable(request); !can) notice.refusal = Utf8Text(can.Reason());
    SoundExtras extras = ExtrasOf(document, answer);
    if (answer.markers == Writing::kWrite) extras.markers = ChaptersOf(sound.Markers());
    for (const std::string& loss : LossesOf(answer.kind, extras)) notice.losses << Utf8Text(loss);
    if (IsRounded(sound, answer))
        notice.losses
            << QObject::tr("The samples are rounded to %1 bits").arg(BitsOf(answer.depth));
    return notice;
}

Outcome WriteExport(CSoundDoc& document, FrameRange range, const ExportAnswer& answer) {
    const Result<Sound> written = SoundToWrite(document.Sound(), range, answer);
    if (!written) return written.Ended();
    const EncodeRequest request = RequestOf(*written, {0, written->GetFrameCount()}, answer);
    const HostServices& services = document.Services();
    return WriteForeignFile(answer.path, *written, request, ExtrasOf(document, answer),
                            services.codecs, document.Sound().FileHost());
}

}  // namespace sonavel
