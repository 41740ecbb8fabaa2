#include "app/exchange/export_writing.h"

#include <algorithm>

#include "codec/kind_rules.h"
#include "exchange/export_losses.h"
#include "platform/qt/utf8_text.h"
#include "sound/file_rates.h"

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
    const std::uint32_t rate = std::max<std::uint32_t>(sound.GetSamplesPerSecond(), 1);
    request.rate = WrittenRate(answer.kind, rate);
    request.channels = sound.GetChannels();
    request.frames = std::uint64_t{range.Frames()} * request.rate / rate;
    return request;
}

SoundExtras ExtrasOf(const CSoundDoc& document, const ExportAnswer& answer) {
    SoundExtras extras = document.Extras();
    extras.tags = answer.tagValues;
    return extras;
}

// What of them is to be written.
SoundExtras ChosenOf(const CSoundDoc& document, const ExportAnswer& answer) {
    SoundExtras extras = ExtrasOf(document, answer);
    if (answer.tags == ExportPart::kLeaveOut) extras.tags.clear();
    if (answer.markers == ExportPart::kWrite)
        extras.markers = ChaptersOf(document.Sound().Markers());
    return extras;
}

bool IsRounded(const Sound& sound, const ExportAnswer& answer) {
    return !IsLossy(answer.kind) && BitsOf(answer.depth) < sound.GetBits();
}

}  // namespace

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
    for (const std::string& loss :
         LossesOf(answer.kind, sound.GetSamplesPerSecond(), ChosenOf(document, answer)))
        notice.losses << Utf8Text(loss);
    if (IsRounded(sound, answer))
        notice.losses
            << QObject::tr("The samples are rounded to %1 bits").arg(BitsOf(answer.depth));
    return notice;
}

Outcome WriteExport(CSoundDoc& document, FrameRange range, const ExportAnswer& answer) {
    const ExportChoice choice{.kind = answer.kind,
                              .depth = answer.depth,
                              .quality = answer.quality,
                              .markers = answer.markers,
                              .tags = answer.tags,
                              .frames = range};
    document.NoteWriting(answer.path);
    return ExportSound(answer.path, document.Sound(), ExtrasOf(document, answer), choice,
                       document.Services().codecs, document.Sound().FileHost());
}

}  // namespace sonavel
