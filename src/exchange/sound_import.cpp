#include "exchange/sound_import.h"

#include <algorithm>
#include <new>

#include "exchange/foreign_text.h"
#include "exchange/import_sink.h"
#include "exchange/plain_samples.h"
#include "exchange/random_bytes.h"
#include "exchange/read_extras.h"
#include "platform/failure_texts.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

constexpr std::string_view kNoCodecs = "Reading this file needs the program sonavel-codec.";

// Of numbers with groups of three digits.
std::string Grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, 1, ',');
    return text;
}

Result<DecodedSound> Decode(const std::filesystem::path& path, RandomBytes& bytes,
                            const SoundCodecs* codecs, FrameSink& sink) {
    if (const auto plain = FindPlainSound(bytes, MapChunks(bytes)))
        return ReadPlainSound(bytes, *plain, sink);
    if (!codecs) return Failed(kNoCodecs);
    return codecs->Decode(path, sink);
}

bool HasTag(const SoundExtras& extras, const std::string& key) {
    return std::ranges::find(extras.tags, key, &SoundTag::key) != extras.tags.end();
}

// What the decoder says of formats whose tags and chapters are not read here.
void AddFromHead(const SoundFileHead& head, SoundExtras& extras) {
    for (const SoundTag& tag : head.tags)
        if (!tag.value.empty() && extras.tags.size() < kMostTags && !HasTag(extras, tag.key))
            extras.tags.push_back({Utf8FromUnknown(tag.key), Utf8FromUnknown(tag.value)});
    if (!extras.markers.empty()) return;
    for (const SoundChapter& chapter : head.chapters)
        if (extras.markers.size() < kMostMarkers)
            extras.markers.push_back(
                {chapter.startFrame, chapter.frames, Utf8FromUnknown(chapter.name)});
}

void RemarkOnEnd(const DecodedSound& decoded, FileRemarks& remarks) {
    if (decoded.condition == SoundCondition::kCutShort)
        remarks.AddMissing(decoded.promisedFrames > decoded.frames
                               ? "Of " + Grouped(decoded.promisedFrames) + " frames " +
                                     Grouped(decoded.frames) + " are there."
                               : "The sound ends early.");
    if (decoded.condition == SoundCondition::kDamaged) remarks.AddMissing("The sound is damaged.");
    if (decoded.silencedSamples > 0)
        remarks.AddMissing(Grouped(decoded.silencedSamples) +
                           " samples that were no numbers became 0.");
}

bool HasMoreThanFloats(const SoundFileDescription& file) {
    return (file.depth == FileDepth::kInteger && file.bits > 24) || file.bits > 32;
}

// One remark behind the words, several below them; without the last one's full stop, as all losses.
std::string NotReadWhole(const std::vector<std::string>& sentences) {
    std::string text = "The file was not read whole:";
    for (const std::string& sentence : sentences)
        text += (sentences.size() == 1 ? " " : "\n- ") + sentence;
    text.pop_back();
    return text;
}

std::vector<std::string> LossesOfImport(const ImportSink& sink, const Sound& sound,
                                        const FileRemarks& remarks) {
    std::vector<std::string> losses;
    const SoundFileDescription& file = sink.Head().description;
    if (sink.TookAllChannels() == AllTaken::kNo)
        losses.push_back("Of the file's " + std::to_string(file.channels) + " channels only " +
                         std::to_string(sound.GetChannels()) + " were taken");
    if (sink.TookAllBits() == AllTaken::kNo)
        losses.push_back("The sound was rounded to " + std::to_string(sound.GetBits()) +
                         " bits when it was imported");
    else if (HasMoreThanFloats(file))
        losses.push_back("Samples of " + std::to_string(file.bits) +
                         " bits were taken as 32-bit floats");
    if (!remarks.missing.empty()) losses.push_back(NotReadWhole(remarks.missing));
    return losses;
}

}  // namespace

Result<SoundFileHead> ProbeImport(const std::filesystem::path& path, const SoundCodecs* codecs,
                                  CodecWatcher& watcher) try {
    BytesOfFile bytes;
    if (bytes.Open(path))
        if (const auto plain = FindPlainSound(bytes, MapChunks(bytes)))
            return SoundFileHead{plain->description, {}, {}};
    if (!codecs) return Failed(kNoCodecs);
    return codecs->Probe(path, watcher);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<ImportedSound> ImportSound(const std::filesystem::path& path, const SoundCodecs* codecs,
                                  const ImportChoice& choice, const TransferHost& host) try {
    BytesOfFile bytes;
    if (!bytes.Open(path)) return Failed(failure::kOpenFile);
    ImportSink sink(choice, host);
    const Result<DecodedSound> decoded = Decode(path, bytes, codecs, sink);
    if (!decoded) return decoded.Ended();
    Result<SoundExtras> extras = ReadExtras(bytes, sink.Head().description.rate);
    if (!extras) return extras.Ended();
    AddFromHead(sink.Head(), *extras);
    RemarkOnEnd(*decoded, extras->remarks);
    Sound sound = sink.TakeSound();
    sound.Markers() = MarkersOf(*extras, sound.GetFrameCount());
    extras->markers.clear();
    std::vector<std::string> losses = LossesOfImport(sink, sound, extras->remarks);
    return ImportedSound{std::move(sound), sink.Head().description, std::move(*extras),
                         std::move(losses)};
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

bool IsDeeperThan16(const SoundFileDescription& description) {
    return description.samples == FrameSamples::kFloat32;
}

std::string DescriptionText(const SoundFileDescription& description) {
    std::string text = description.format;
    if (!description.coding.empty()) text += ", " + description.coding;
    if (description.depth != FileDepth::kNone)
        text += ", " + std::to_string(description.bits) +
                (description.depth == FileDepth::kFloat ? " bit float" : " bit");
    if (description.channels > 2) text += ", " + ChannelsText(description.channels);
    return text + ", " + RateText(description.rate);
}

std::string ImportLine(const SoundFileDescription& description, const SoundExtras& extras) {
    std::string line = DescriptionText(description);
    if (!extras.remarks.all.empty()) line += '.';
    for (const std::string& remark : extras.remarks.all) line += ' ' + remark;
    return line;
}

}  // namespace sonavel
