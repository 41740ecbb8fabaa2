#include "exchange/au_annotation.h"

#include <algorithm>

#include "exchange/chunk_map.h"
#include "exchange/foreign_text.h"
#include "exchange/tag_names.h"

namespace sonavel {
namespace {

constexpr std::string_view kOwnName = "Sonavel";
constexpr std::uint32_t kHeaderBytes = 24;
constexpr std::size_t kMostKeyBytes = 64;

// Where the value of a line "key=value" begins; 0 for any other line.
std::size_t ValueAt(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals > kMostKeyBytes || line.starts_with(' '))  // no "=" is the greatest number
        return 0;
    return CommentOfKey(line.substr(0, equals)) ? equals + 1 : 0;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

}  // namespace

std::string AnnotationOf(const std::vector<SoundTag>& tags) {
    std::string text;
    for (const SoundTag& tag : tags) {
        if (!CommentOfKey(tag.key)) continue;
        text += (text.empty() ? "" : "\n") + tag.key + '=';
        for (const char c : tag.value) text += c == '\n' ? "\n " : std::string(1, c);
    }
    return text.empty() ? std::string(kOwnName) : text;
}

void AddAnnotation(std::string_view text, ExtrasKeeper& keeper) {
    if (text == kOwnName) return;
    if (ValueAt(text.substr(0, text.find('\n'))) == 0)
        return keeper.AddTag("comment", std::string(text));
    std::string key, value;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        const std::size_t valueAt = ValueAt(line);
        if (valueAt == 0) {
            value += '\n';
            value += line.substr(line.starts_with(' ') ? 1 : 0);
            continue;
        }
        if (!key.empty()) keeper.AddTag(key, std::move(value));
        key = KeyOfComment(line.substr(0, valueAt - 1));
        value = line.substr(valueAt);
    }
    keeper.AddTag(key, std::move(value));
}

void ReadAuExtras(RandomBytes& bytes, ExtrasKeeper& keeper) {
    const std::vector<std::uint8_t> head = bytes.Part(0, kHeaderBytes);
    const std::uint32_t dataAt = ChunkFields(head, ByteOrder::kBig).U32(4);
    if (dataAt <= kHeaderBytes) return;
    const std::uint64_t stated = dataAt - kHeaderBytes;
    if (!keeper.HasRoomFor(stated)) return;
    AddAnnotation(Utf8FromUnknown(bytes.Part(kHeaderBytes, stated)), keeper);
}

}  // namespace sonavel
