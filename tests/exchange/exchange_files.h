// Builders of what foreign files hold beside their samples.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exchange/read_extras.h"
#include "support/sound_files.h"

namespace sonavel {

inline FileBytes CuePointBytes(std::uint32_t id, std::uint32_t frame) {
    // The play order position is another number than the sample offset, and must not be taken.
    return ByteBuilder()
        .Little32(id)
        .Little32(77)
        .Text("data")
        .Little32(0)
        .Little32(0)
        .Little32(frame)
        .Bytes();
}

inline FileBytes CueBytes(std::uint32_t count, const FileBytes& points) {
    return RiffChunkBytes("cue ", ByteBuilder().Little32(count).Bytes() + points);
}

inline FileBytes LabelBytes(std::uint32_t id, std::string_view name) {
    return RiffChunkBytes("labl", ByteBuilder().Little32(id).Text(name).Byte(0).Bytes());
}

inline FileBytes RegionTextBytes(std::uint32_t id, std::uint32_t frames) {
    return RiffChunkBytes(
        "ltxt",
        ByteBuilder().Little32(id).Little32(frames).Text("rgn ").Little32(0).Little32(0).Bytes());
}

inline FileBytes ListBytes(std::string_view form, const FileBytes& content) {
    return RiffChunkBytes("LIST", BytesOf(form) + content);
}

inline FileBytes WavWith(const FileBytes& beforeData, const FileBytes& behindData) {
    WavParts parts;
    parts.beforeData = beforeData;
    parts.data = FileBytes(100);
    parts.behindData = behindData;
    return WavBytes(parts);
}

inline SoundExtras ExtrasOf(const FileBytes& bytes, std::uint32_t rate = 8000) {
    BytesInMemory memory(bytes);
    Result<SoundExtras> extras = ReadExtras(memory, rate);
    EXPECT_TRUE(extras) << extras.Reason();
    return extras ? *extras : SoundExtras();
}

inline std::vector<std::string> MarkerTexts(const SoundExtras& extras) {
    std::vector<std::string> texts;
    for (const SoundChapter& marker : extras.markers)
        texts.push_back(std::to_string(marker.startFrame) + "+" + std::to_string(marker.frames) +
                        " " + marker.name);
    return texts;
}

inline std::vector<std::string> TagTexts(const SoundExtras& extras) {
    std::vector<std::string> texts;
    for (const SoundTag& tag : extras.tags) texts.push_back(tag.key + "=" + tag.value);
    return texts;
}

}  // namespace sonavel
