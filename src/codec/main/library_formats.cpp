#include "codec/main/library_formats.h"

#include <sndfile.h>

#include <algorithm>
#include <iterator>

namespace sonavel {
namespace {

using enum SoundFileKind;
using enum FrameSamples;

constexpr LibraryContainer kContainers[] = {
    {SF_FORMAT_WAV, kWav, "WAV"},           {SF_FORMAT_WAVEX, kWav, "WAV"},
    {SF_FORMAT_RF64, kRf64, "RF64"},        {SF_FORMAT_W64, kW64, "W64"},
    {SF_FORMAT_AIFF, kAiff, "AIFF"},        {SF_FORMAT_AU, kAu, "AU"},
    {SF_FORMAT_CAF, kCaf, "CAF"},           {SF_FORMAT_FLAC, kFlac, "FLAC"},
    {SF_FORMAT_MPEG, kOther, "MPEG audio"}, {SF_FORMAT_OGG, kOther, "Ogg"},
    {SF_FORMAT_RAW, kOther, "Raw"},         {SF_FORMAT_PAF, kOther, "PAF"},
    {SF_FORMAT_SVX, kOther, "IFF/8SVX"},    {SF_FORMAT_NIST, kOther, "NIST Sphere"},
    {SF_FORMAT_VOC, kOther, "VOC"},         {SF_FORMAT_IRCAM, kOther, "IRCAM"},
    {SF_FORMAT_MAT4, kOther, "MAT 4"},      {SF_FORMAT_MAT5, kOther, "MAT 5"},
    {SF_FORMAT_PVF, kOther, "PVF"},         {SF_FORMAT_XI, kOther, "XI"},
    {SF_FORMAT_HTK, kOther, "HTK"},         {SF_FORMAT_SDS, kOther, "SDS"},
    {SF_FORMAT_AVR, kOther, "AVR"},         {SF_FORMAT_SD2, kOther, "SD2"},
    {SF_FORMAT_WVE, kOther, "WVE"},         {SF_FORMAT_MPC2K, kOther, "MPC 2000"},
};

// Where the coding names the file better than its container does.
constexpr struct {
    int subtype;
    SoundFileKind kind;
    std::string_view name;
} kNamedByCoding[] = {
    {SF_FORMAT_VORBIS, kOggVorbis, "Ogg Vorbis"}, {SF_FORMAT_OPUS, kOpus, "Opus"},
    {SF_FORMAT_MPEG_LAYER_I, kOther, "MP1"},      {SF_FORMAT_MPEG_LAYER_II, kOther, "MP2"},
    {SF_FORMAT_MPEG_LAYER_III, kMp3, "MP3"},
};

constexpr FileDepth kInteger = FileDepth::kInteger;
constexpr FileDepth kNone = FileDepth::kNone;

constexpr LibraryCoding kCodings[] = {
    {SF_FORMAT_PCM_U8, "", kInteger, 8, kUnsigned8},
    {SF_FORMAT_PCM_S8, "", kInteger, 8, kUnsigned8},
    {SF_FORMAT_PCM_16, "", kInteger, 16, kSigned16},
    {SF_FORMAT_PCM_24, "", kInteger, 24, kFloat32},
    {SF_FORMAT_PCM_32, "", kInteger, 32, kFloat32},
    {SF_FORMAT_FLOAT, "", FileDepth::kFloat, 32, kFloat32},
    {SF_FORMAT_DOUBLE, "", FileDepth::kFloat, 64, kFloat32},
    {SF_FORMAT_ALAC_16, "Apple Lossless", kInteger, 16, kSigned16},
    {SF_FORMAT_ALAC_20, "Apple Lossless", kInteger, 20, kFloat32},
    {SF_FORMAT_ALAC_24, "Apple Lossless", kInteger, 24, kFloat32},
    {SF_FORMAT_ALAC_32, "Apple Lossless", kInteger, 32, kFloat32},
    {SF_FORMAT_DWVW_12, "DWVW", kInteger, 12, kSigned16},
    {SF_FORMAT_DWVW_16, "DWVW", kInteger, 16, kSigned16},
    {SF_FORMAT_DWVW_24, "DWVW", kInteger, 24, kFloat32},
    {SF_FORMAT_DPCM_8, "DPCM", kInteger, 8, kUnsigned8},
    {SF_FORMAT_DPCM_16, "DPCM", kInteger, 16, kSigned16},
    {SF_FORMAT_ULAW, "mu-law", kNone, 0, kFloat32},
    {SF_FORMAT_ALAW, "A-law", kNone, 0, kFloat32},
    {SF_FORMAT_IMA_ADPCM, "IMA ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_MS_ADPCM, "Microsoft ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_GSM610, "GSM 6.10", kNone, 0, kFloat32},
    {SF_FORMAT_VOX_ADPCM, "VOX ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_NMS_ADPCM_16, "NMS ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_NMS_ADPCM_24, "NMS ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_NMS_ADPCM_32, "NMS ADPCM", kNone, 0, kFloat32},
    {SF_FORMAT_G721_32, "G.721", kNone, 0, kFloat32},
    {SF_FORMAT_G723_24, "G.723", kNone, 0, kFloat32},
    {SF_FORMAT_G723_40, "G.723", kNone, 0, kFloat32},
    {SF_FORMAT_VORBIS, "", kNone, 0, kFloat32},
    {SF_FORMAT_OPUS, "", kNone, 0, kFloat32},
    {SF_FORMAT_MPEG_LAYER_I, "", kNone, 0, kFloat32},
    {SF_FORMAT_MPEG_LAYER_II, "", kNone, 0, kFloat32},
    {SF_FORMAT_MPEG_LAYER_III, "", kNone, 0, kFloat32},
};

// The subtypes for 8, 16, 24 bits and float; 0 for none. A lossy kind has one for all.
constexpr struct {
    SoundFileKind kind;
    int major;
    int byDepth[4];
} kWritten[] = {
    {kWav, SF_FORMAT_WAV, {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kRf64,
     SF_FORMAT_RF64,
     {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kW64, SF_FORMAT_W64, {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kAiff,
     SF_FORMAT_AIFF,
     {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kAu, SF_FORMAT_AU, {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kCaf, SF_FORMAT_CAF, {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}},
    {kFlac, SF_FORMAT_FLAC, {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, 0}},
    {kOggVorbis,
     SF_FORMAT_OGG,
     {SF_FORMAT_VORBIS, SF_FORMAT_VORBIS, SF_FORMAT_VORBIS, SF_FORMAT_VORBIS}},
    {kOpus, SF_FORMAT_OGG, {SF_FORMAT_OPUS, SF_FORMAT_OPUS, SF_FORMAT_OPUS, SF_FORMAT_OPUS}},
    {kMp3,
     SF_FORMAT_MPEG,
     {SF_FORMAT_MPEG_LAYER_III, SF_FORMAT_MPEG_LAYER_III, SF_FORMAT_MPEG_LAYER_III,
      SF_FORMAT_MPEG_LAYER_III}},
};

}  // namespace

LibraryContainer ContainerOf(int libraryFormat) {
    const int major = libraryFormat & SF_FORMAT_TYPEMASK;
    const int subtype = libraryFormat & SF_FORMAT_SUBMASK;
    for (const auto& named : kNamedByCoding)
        if (named.subtype == subtype) return {major, named.kind, named.name};
    const auto* found = std::ranges::find(kContainers, major, &LibraryContainer::major);
    return found != std::end(kContainers) ? *found : LibraryContainer{major, kOther, "Sound"};
}

LibraryCoding CodingOf(int libraryFormat) {
    const int subtype = libraryFormat & SF_FORMAT_SUBMASK;
    const auto* found = std::ranges::find(kCodings, subtype, &LibraryCoding::subtype);
    return found != std::end(kCodings)
               ? *found
               : LibraryCoding{subtype, "unknown coding", kNone, 0, kFloat32};
}

std::optional<int> LibraryFormatFor(SoundFileKind kind, EncodedDepth depth) {
    for (const auto& written : kWritten) {
        const int subtype = written.byDepth[static_cast<std::size_t>(depth)];
        if (written.kind == kind && subtype != 0) return written.major | subtype;
    }
    return std::nullopt;
}

}  // namespace sonavel
