#include "codec/client/foreign_formats.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <string>

namespace sonavel {

using namespace std::string_view_literals;

const std::string_view kAllowedDemuxers =
    "mov,mp4,m4a,asf,avi,matroska,webm,wv,g722,aac,mp3,mpeg,mpegts,ogg,flv,wav,w64,aiff,au,caf,"
    "flac,ape,tta,tak,amr,ac3,eac3,dts,mpc,mpc8,dsf,oma,rm,voc,gsm,shn,truehd,mlp,xwma";

namespace {

struct Signature {
    std::size_t offset;
    std::string_view bytes;
    std::string_view name;
};

constexpr Signature kSignatures[] = {
    {4, "ftypM4A "sv, "M4A"},       {4, "ftypM4B "sv, "M4B"},
    {4, "ftypqt  "sv, "QuickTime"}, {4, "ftyp3g"sv, "3GP"},
    {4, "ftyp"sv, "MP4"},           {4, "moov"sv, "QuickTime"},
    {4, "mdat"sv, "QuickTime"},     {0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv, "WMA"},
    {0, "wvpk"sv, "WavPack"},       {0, "\x1A\x45\xDF\xA3"sv, "Matroska"},
    {8, "AVI "sv, "AVI"},           {0, "FLV\x01"sv, "FLV"},
    {0, "\0\0\1\xBA"sv, "MPEG"},    {0, "MAC "sv, "APE"},
    {0, "TTA1"sv, "TTA"},           {0, "tBaK"sv, "TAK"},
    {0, "#!AMR"sv, "AMR"},          {0, "MP+"sv, "Musepack"},
    {0, "MPCK"sv, "Musepack"},      {0, "DSD "sv, "DSF"},
    {0, ".RMF"sv, "RealMedia"},     {0, "\x0B\x77"sv, "AC-3"},
    {0, "ajkg"sv, "Shorten"},       {28, "Speex   "sv, "Ogg Speex"},
    {0, "\xFF\xF1"sv, "AAC"},       {0, "\xFF\xF9"sv, "AAC"},
};

constexpr std::pair<std::string_view, std::string_view> kExtensions[] = {
    {".g722", "G.722"},    {".722", "G.722"},     {".aac", "AAC"}, {".m4a", "M4A"},
    {".wma", "WMA"},       {".wv", "WavPack"},    {".mp4", "MP4"}, {".mkv", "Matroska"},
    {".webm", "WebM"},     {".mov", "QuickTime"}, {".ts", "MPEG"}, {".dts", "DTS"},
    {".spx", "Ogg Speex"},
};

struct Coding {
    std::string_view ffmpegName;
    std::string_view name;
    bool isLossless;
};

constexpr Coding kCodings[] = {
    {"aac", "AAC", false},
    {"alac", "Apple Lossless", true},
    {"wavpack", "", true},
    {"flac", "FLAC", true},
    {"ape", "", true},
    {"tta", "", true},
    {"tak", "", true},
    {"shorten", "", true},
    {"wmalossless", "WMA Lossless", true},
    {"mlp", "MLP", true},
    {"truehd", "TrueHD", true},
    {"wmav1", "WMA 1", false},
    {"wmav2", "WMA 2", false},
    {"wmapro", "WMA Pro", false},
    {"wmavoice", "WMA Voice", false},
    {"adpcm_g722", "G.722", false},
    {"mp1", "MP1", false},
    {"mp2", "MP2", false},
    {"mp3", "MP3", false},
    {"vorbis", "Vorbis", false},
    {"opus", "Opus", false},
    {"speex", "Speex", false},
    {"ac3", "AC-3", false},
    {"eac3", "E-AC-3", false},
    {"dts", "DTS", false},
    {"amr_nb", "AMR", false},
    {"amr_wb", "AMR-WB", false},
    {"pcm_u8", "", true},
    {"pcm_s8", "", true},
    {"pcm_s16le", "", true},
    {"pcm_s16be", "", true},
    {"pcm_s24le", "", true},
    {"pcm_s24be", "", true},
    {"pcm_s32le", "", true},
    {"pcm_s32be", "", true},
    {"pcm_f32le", "", true},
    {"pcm_f32be", "", true},
};

const Coding* FindCoding(std::string_view ffmpegName) {
    const auto* found = std::ranges::find(kCodings, ffmpegName, &Coding::ffmpegName);
    return found != std::end(kCodings) ? found : nullptr;
}

std::string FirstBytes(const std::filesystem::path& path) {
    constexpr std::size_t kEnough = 64;
    std::string bytes(kEnough, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), kEnough);
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return bytes;
}

std::string LowerExtension(const std::filesystem::path& path) {
    std::string extension = path.extension().string();
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

}  // namespace

std::string_view ForeignFormatName(const std::filesystem::path& path) {
    const std::string bytes = FirstBytes(path);
    for (const Signature& signature : kSignatures)
        if (bytes.size() >= signature.offset + signature.bytes.size() &&
            bytes.compare(signature.offset, signature.bytes.size(), signature.bytes) == 0)
            return signature.name;
    const std::string extension = LowerExtension(path);
    for (const auto& [ending, name] : kExtensions)
        if (ending == extension) return name;
    return {};
}

std::string_view CodingName(std::string_view ffmpegName) {
    const Coding* coding = FindCoding(ffmpegName);
    return coding != nullptr ? coding->name : ffmpegName;
}

bool IsLossless(std::string_view ffmpegName) {
    const Coding* coding = FindCoding(ffmpegName);
    return coding != nullptr && coding->isLossless;
}

}  // namespace sonavel
