#include "exchange/label_files.h"

#include <new>

#include "exchange/label_readers.h"
#include "platform/failure_texts.h"
#include "platform/small_file.h"

namespace sonavel {
namespace {

constexpr struct {
    std::string_view extension;
    LabelFormat format;
} kExtensions[] = {
    {".txt", LabelFormat::kLabelTrack},
    {".csv", LabelFormat::kTable},
    {".vtt", LabelFormat::kCaptions},
    {".cue", LabelFormat::kCueSheet},
};

constexpr std::string_view kNoFormat =
    "Labels are read and written as .txt, .csv, .vtt and .cue files.";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::optional<LabelFormat> LabelFormatOf(const std::filesystem::path& path) {
    std::string extension = path.extension().string();
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    for (const auto& known : kExtensions)
        if (known.extension == extension) return known.format;
    return std::nullopt;
}

Result<std::vector<SoundChapter>> ReadLabels(LabelFormat format, std::string_view text,
                                             std::uint32_t samplesPerSecond) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    LabelLines lines(text);
    LabelTaker labels(samplesPerSecond);
    switch (format) {
        case LabelFormat::kLabelTrack:
            return ReadLabelTrack(lines, labels);
        case LabelFormat::kTable:
            return ReadLabelTable(text, labels);
        case LabelFormat::kCaptions:
            return ReadCaptions(lines, labels);
        case LabelFormat::kCueSheet:
            return ReadCueSheet(lines, labels);
    }
    return Failed(kNoFormat);
}

Result<std::vector<SoundChapter>> ReadLabelFile(const std::filesystem::path& path,
                                                std::uint32_t samplesPerSecond) try {
    const auto format = LabelFormatOf(path);
    if (!format) return Failed(kNoFormat);
    const auto text = ReadSmallFile(path, kMostLabelBytes);
    if (!text) return Failed("The file could not be read.");
    return ReadLabels(*format, *text, samplesPerSecond);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome WriteLabelFile(const std::filesystem::path& path, const std::vector<SoundChapter>& labels,
                       const LabelledSound& sound) try {
    const auto format = LabelFormatOf(path);
    if (!format) return Failed(kNoFormat);
    const std::string text = WriteLabels(*format, labels, sound);
    return DoneIf(ReplaceFile(path, text), "The file could not be written.");
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
