#include "codec/main/library_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "codec/main/library_formats.h"

namespace sonavel {
namespace {

constexpr struct {
    int libraryString;
    std::string_view key;
} kStrings[] = {
    {SF_STR_TITLE, "title"},       {SF_STR_ARTIST, "artist"},   {SF_STR_ALBUM, "album"},
    {SF_STR_DATE, "date"},         {SF_STR_COMMENT, "comment"}, {SF_STR_COPYRIGHT, "copyright"},
    {SF_STR_TRACKNUMBER, "track"}, {SF_STR_GENRE, "genre"},     {SF_STR_LICENSE, "license"},
    {SF_STR_SOFTWARE, "software"},
};

constexpr std::pair<int, Speaker> kSpeakers[] = {
    {SF_CHANNEL_MAP_MONO, Speaker::kMono},
    {SF_CHANNEL_MAP_LEFT, Speaker::kFrontLeft},
    {SF_CHANNEL_MAP_RIGHT, Speaker::kFrontRight},
    {SF_CHANNEL_MAP_CENTER, Speaker::kFrontCentre},
    {SF_CHANNEL_MAP_FRONT_LEFT, Speaker::kFrontLeft},
    {SF_CHANNEL_MAP_FRONT_RIGHT, Speaker::kFrontRight},
    {SF_CHANNEL_MAP_FRONT_CENTER, Speaker::kFrontCentre},
    {SF_CHANNEL_MAP_REAR_CENTER, Speaker::kRearCentre},
    {SF_CHANNEL_MAP_REAR_LEFT, Speaker::kRearLeft},
    {SF_CHANNEL_MAP_REAR_RIGHT, Speaker::kRearRight},
    {SF_CHANNEL_MAP_LFE, Speaker::kLowFrequency},
    {SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER, Speaker::kFrontLeftOfCentre},
    {SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER, Speaker::kFrontRightOfCentre},
    {SF_CHANNEL_MAP_SIDE_LEFT, Speaker::kSideLeft},
    {SF_CHANNEL_MAP_SIDE_RIGHT, Speaker::kSideRight},
    {SF_CHANNEL_MAP_TOP_CENTER, Speaker::kTopCentre},
    {SF_CHANNEL_MAP_TOP_FRONT_LEFT, Speaker::kTopFrontLeft},
    {SF_CHANNEL_MAP_TOP_FRONT_RIGHT, Speaker::kTopFrontRight},
    {SF_CHANNEL_MAP_TOP_FRONT_CENTER, Speaker::kTopFrontCentre},
    {SF_CHANNEL_MAP_TOP_REAR_LEFT, Speaker::kTopRearLeft},
    {SF_CHANNEL_MAP_TOP_REAR_RIGHT, Speaker::kTopRearRight},
    {SF_CHANNEL_MAP_TOP_REAR_CENTER, Speaker::kTopRearCentre},
    {SF_CHANNEL_MAP_AMBISONIC_B_W, Speaker::kAmbisonicW},
    {SF_CHANNEL_MAP_AMBISONIC_B_X, Speaker::kAmbisonicX},
    {SF_CHANNEL_MAP_AMBISONIC_B_Y, Speaker::kAmbisonicY},
    {SF_CHANNEL_MAP_AMBISONIC_B_Z, Speaker::kAmbisonicZ},
};

wire::Failure FailureOfOpening() {
    // The library's public numbers come first in its list; a failed allocation has only its text.
    const int error = sf_error(nullptr);
    const std::string text = sf_strerror(nullptr);
    if (text.find("malloc") != std::string::npos) return {wire::FailureCode::kMemory, text};
    const bool isKnown =
        error != SF_ERR_UNRECOGNISED_FORMAT && error != SF_ERR_UNSUPPORTED_ENCODING;
    return {isKnown ? wire::FailureCode::kDamaged : wire::FailureCode::kUnknownFormat, text};
}

// The library's greatest number stands for an unknown length.
bool IsCounted(const SF_INFO& info) {
    return info.frames >= 0 && static_cast<std::uint64_t>(info.frames) <= wire::kMostFrames;
}

// Only of samples that all take the same room can be said which are there.
std::int64_t FixedFrameBytes(const SF_INFO& info) {
    const int subtype = info.format & SF_FORMAT_SUBMASK;
    const LibraryCoding coding = CodingOf(info.format);
    if (subtype == SF_FORMAT_ULAW || subtype == SF_FORMAT_ALAW) return info.channels;
    return coding.name.empty() ? std::int64_t{coding.bits} / 8 * info.channels : 0;
}

void OpenPadded(const char* path, LibraryFile& file) {
    file.padded = std::make_unique<PaddedFile>(path);
    file.info = {};
    file.handle.reset(file.padded->Open(SFM_READ, file.info));
    if (!file.handle) return;
    const std::int64_t frameBytes = FixedFrameBytes(file.info);
    const sf_count_t there = frameBytes > 0 ? file.padded->BytesAhead() / frameBytes : 0;
    if (there == 0 || file.info.frames < there) return file.handle.reset();
    file.promisedFrames = std::min(static_cast<std::uint64_t>(file.info.frames), wire::kMostFrames);
    file.info.frames = there;
}

Speaker SpeakerFor(int place) {
    for (const auto& [ofLibrary, speaker] : kSpeakers)
        if (ofLibrary == place) return speaker;
    return Speaker::kUnknown;
}

std::vector<Speaker> SpeakersOf(const LibraryFile& file) {
    std::vector<int> map(static_cast<std::size_t>(file.info.channels));
    const int bytes = static_cast<int>(map.size() * sizeof(int));
    if (sf_command(file.handle.get(), SFC_GET_CHANNEL_MAP_INFO, map.data(), bytes) != SF_TRUE)
        return {};
    std::vector<Speaker> speakers;
    speakers.reserve(map.size());
    for (const int place : map) speakers.push_back(SpeakerFor(place));
    const bool saysNothing = std::ranges::count(speakers, Speaker::kUnknown) ==
                             static_cast<std::ptrdiff_t>(speakers.size());
    return saysNothing ? std::vector<Speaker>{} : speakers;
}

std::string LogOf(const LibraryFile& file) {
    std::string log(16384, '\0');
    const int got =
        sf_command(file.handle.get(), SFC_GET_LOG_INFO, log.data(), static_cast<int>(log.size()));
    log.resize(static_cast<std::size_t>(std::clamp(got, 0, static_cast<int>(log.size()))));
    return log;
}

struct DisputedSize {
    std::uint64_t claimed = 0;
    std::uint64_t present = 0;
};

// The numbers of a line "NAME : CLAIMED (should be PRESENT)" of the log; zeros when there is none.
DisputedSize FindDisputedSize(std::string_view log, std::string_view name) {
    constexpr std::string_view kDispute = "(should be ";
    const std::size_t at = log.find(name);
    if (at == std::string_view::npos) return {};
    const std::string line(log.substr(at + name.size(), log.find('\n', at + 1) - at - name.size()));
    const std::size_t dispute = line.find(kDispute);
    if (dispute == std::string::npos) return {};
    return {std::strtoull(line.c_str(), nullptr, 10),
            std::strtoull(line.c_str() + dispute + kDispute.size(), nullptr, 10)};
}

// What programs write that do not know the size while they write the head.
bool IsPlaceholder(std::uint64_t bytes) {
    return bytes >= 0x7FFFF000 && bytes <= 0xFFFFFFFF;
}

// How many frames were to lie in the bytes that are not there.
std::uint64_t FramesOfMissing(const DisputedSize& size, const SF_INFO& info) {
    const LibraryCoding coding = CodingOf(info.format);
    const std::uint64_t missing = size.claimed - size.present;
    if (coding.depth != FileDepth::kNone) {
        const auto frameBytes =
            std::max<std::uint64_t>(coding.bits / 8 * static_cast<std::uint64_t>(info.channels), 1);
        return (missing + frameBytes - 1) / frameBytes;
    }
    // Coded sound: as many a byte as there are in what is present.
    const double framesPerByte = static_cast<double>(info.frames) /
                                 static_cast<double>(std::max<std::uint64_t>(size.present, 1));
    const double frames = framesPerByte * static_cast<double>(missing);
    return frames < static_cast<double>(wire::kMostFrames) ? static_cast<std::uint64_t>(frames)
                                                           : wire::kMostFrames;
}

}  // namespace

LibraryFile OpenLibraryFile(const char* path) {
    LibraryFile file;
    struct stat status;
    if (stat(path, &status) != 0) {
        file.failure = {wire::FailureCode::kUnreadable, std::strerror(errno)};
    } else if (!S_ISREG(status.st_mode)) {
        file.failure = {wire::FailureCode::kUnreadable, "not a regular file"};
    } else {
        file.handle.reset(sf_open(path, SFM_READ, &file.info));
        if (!file.handle) file.failure = FailureOfOpening();
        if (!file.handle && PaddedFile::CanHelp(path)) OpenPadded(path, file);
    }
    return file;
}

SoundFileDescription DescribeFile(const LibraryFile& file) {
    const LibraryContainer container = ContainerOf(file.info.format);
    const LibraryCoding coding = CodingOf(file.info.format);
    SoundFileDescription description;
    description.kind = container.kind;
    description.format = container.name;
    description.coding = coding.name;
    description.depth = coding.depth;
    description.bits = coding.bits;
    description.rate = static_cast<std::uint32_t>(std::max(file.info.samplerate, 0));
    description.channels = static_cast<std::uint32_t>(std::max(file.info.channels, 0));
    description.samples = coding.samples;
    description.speakers = SpeakersOf(file);
    if (IsCounted(file.info)) {
        description.counted = FrameCount::kStated;
        description.frames = static_cast<std::uint64_t>(file.info.frames);
    }
    return description;
}

std::vector<SoundTag> TagsOf(const LibraryFile& file) {
    std::vector<SoundTag> tags;
    std::size_t total = 0;
    for (const auto& [number, key] : kStrings) {
        const char* text = sf_get_string(file.handle.get(), number);
        if (text == nullptr || *text == '\0') continue;
        const std::size_t size = strnlen(text, kMostTagBytes);
        total += size;
        if (total <= kMostTagBytesOfFile)
            tags.push_back({std::string(key), std::string(text, size)});
    }
    return tags;
}

std::vector<SoundChapter> ChaptersOf(const LibraryFile& file) {
    std::uint32_t count = 0;
    if (sf_command(file.handle.get(), SFC_GET_CUE_COUNT, &count, sizeof count) != SF_TRUE)
        return {};
    count = std::min(count, static_cast<std::uint32_t>(wire::kMostChapters));
    const std::size_t headBytes = offsetof(SF_CUES, cue_points);
    std::vector<std::uint8_t> cues(headBytes + count * sizeof(SF_CUE_POINT));
    if (sf_command(file.handle.get(), SFC_GET_CUE, cues.data(), static_cast<int>(cues.size())) !=
        SF_TRUE)
        return {};
    std::vector<SoundChapter> chapters;
    for (std::uint32_t i = 0; i < count; ++i) {
        SF_CUE_POINT point;
        std::memcpy(&point, cues.data() + headBytes + i * sizeof point, sizeof point);
        const std::size_t size = strnlen(point.name, sizeof point.name);
        chapters.push_back({point.sample_offset, 0, std::string(point.name, size)});
    }
    return chapters;
}

bool LacksItsEnd(const LibraryFile& file) {
    return (file.info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_OGG &&
           DescribeFile(file).counted == FrameCount::kUnknown;
}

std::uint64_t PromisedFrames(const LibraryFile& file) {
    if (file.promisedFrames > 0) return file.promisedFrames;
    if (!IsCounted(file.info)) return 0;
    const std::string log = LogOf(file);
    for (const std::string_view name :
         {"\ndata :", "\n SSND :", "\n  Data Size   :", "\nriff :", "\n  Riff size :"}) {
        const DisputedSize size = FindDisputedSize(log, name);
        if (size.claimed <= size.present || IsPlaceholder(size.claimed)) continue;
        return std::min(
            static_cast<std::uint64_t>(file.info.frames) + FramesOfMissing(size, file.info),
            wire::kMostFrames);
    }
    return 0;
}

}  // namespace sonavel
